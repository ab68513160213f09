#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/filesystem.h"
#include "platform/repository.h"

// The segment of a rule: the run of source lines of one program that the rule is anchored to.
namespace qmrules::segments {

// The most characters, line feeds included, that a segment's text may have.
inline constexpr std::size_t kLongestSegment = 30000;

// The message for a text that is longer.
inline constexpr int kSegmentTooLong = 645;

// The six values by which a segment reaches its rule. Default-made: no segment.
struct Segment {
  std::string Model;         // source language, an entity name of the code model
  std::string Program;       // the program that holds the lines; "" stands for no segment
  std::string FileName;      // relative to the source folder
  std::int32_t FromRow = 0;  // first and last line, from 1, both inclusive
  std::int32_t ToRow = 0;
  std::string SourceText;  // each line with a line feed behind it

  [[nodiscard]] bool IsCaptured() const { return !Program.empty(); }
  friend bool operator==(const Segment&, const Segment&) = default;
};

// True for a text of more than kLongestSegment characters.
[[nodiscard]] bool IsTooLong(std::string_view sourceText);

// The lines of the file from the first to the last row (from 1, inclusive), each through SafeText and with one line
// feed behind it. Rows behind the end of the file are left out. Throws Error, naming the file, when it cannot be read.
[[nodiscard]] std::string ReadSourceLines(const platform::FileSystem& fileSystem, std::string_view path,
                                          std::int32_t firstRow, std::int32_t lastRow);

// Puts the segment on a rule that is open for change: the six values, then `Valid` = "Valid" and `Validated` = `now`.
// A default-made segment takes the rule's segment away.
void PutSegment(platform::Object& rule, const Segment& segment, platform::Timestamp now);

// Deletes all data elements of the rule. One that cannot be deleted stays, and the others go all the same.
void DeleteRuleIO(platform::Repository& repository, std::int32_t ruleID);

}  // namespace qmrules::segments
