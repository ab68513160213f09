#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/expandedtext.h"

namespace qmrules::test {

// An expanded text put together by hand: files, the inclusions of them, and tokens that are looked up in their texts.
class HandMadeText {
 public:
  // The first one is the program's own, and includes itself as inclusion 0.
  std::uint32_t AddFile(std::string name, std::string text);
  // A COPY: `statement` is looked up in the file of the inclusion `parent`, behind what was found there before.
  std::uint32_t Include(std::uint32_t file, std::uint32_t parent, std::string_view statement);
  // The next token of an inclusion: this word, behind what was found there before. Gives the token's index.
  std::uint32_t Add(std::uint32_t inclusion, std::string_view word, std::uint8_t flags = 0);
  // Each word parted by blanks.
  void AddAll(std::uint32_t inclusion, std::string_view words);
  // The text, ended by a token.
  const workbench::codemodel::ExpandedText& End();

 private:
  std::uint32_t Find(std::uint32_t inclusion, std::string_view text);

  workbench::codemodel::ExpandedText text_;
  std::vector<std::size_t> searchFrom_;  // by inclusion
};

}  // namespace qmrules::test
