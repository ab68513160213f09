#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "workbench/codemodel/sourcefile.h"

namespace qmrules::workbench::codemodel {

// What a run of characters is to the reader of a source, in any of the languages. Names, signs and blanks have no
// class.
enum class TextClass : std::uint8_t {
  Comment,
  Margin,     // beside the text: sequence numbers, indicators, marks of identification
  Directive,  // a line for the compiler
  Heading,    // of a division or section
  Label,      // a paragraph's name where it stands for its statements
  Verb,       // the word that begins a statement or ends its scope
  Reserved,   // another word of the language
  Inclusion,  // COPY with the name of what it brings in, REPLACE
  Embedded,   // words of another language among the text: EXEC SQL … END-EXEC
  Literal,
  Number,
  Picture,
};
inline constexpr std::size_t kTextClasses = static_cast<std::size_t>(TextClass::Picture) + 1;

struct ClassedRun {
  std::uint32_t column = 0;  // from 1
  std::uint32_t length = 0;  // in characters
  TextClass kind = TextClass::Comment;
  friend bool operator==(const ClassedRun&, const ClassedRun&) = default;
};

// The classes of a text by its rows.
class ClassedText {
 public:
  // Rows and the runs of a row are added in their order.
  void Add(std::uint32_t row, ClassedRun run);
  // The runs of a row, by their columns; none for a row behind the last.
  std::span<const ClassedRun> Row(std::uint32_t row) const;

 private:
  std::vector<std::uint32_t> starts_;  // of each row's runs
  std::vector<ClassedRun> runs_;
};

// Tells the classes of a text. May be called on any thread, and on several at the same time.
using TextClassifier = std::function<ClassedText(std::shared_ptr<const SourceFile>)>;

}  // namespace qmrules::workbench::codemodel
