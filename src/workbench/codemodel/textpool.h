#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/records.h"

namespace qmrules::workbench::codemodel {

// The texts of a model while it grows, each once. Number 0 is the empty text.
class TextPool {
 public:
  TextPool();

  TextId Add(std::string_view text);
  std::string_view Get(TextId text) const { return texts_[text]; }
  // Ends the collecting.
  std::vector<std::string> Take();

 private:
  void Grow();

  std::vector<std::string> texts_;
  std::vector<std::uint32_t> hashes_;  // by text
  std::vector<TextId> slots_;          // 0 for a free one; a power of two
};

}  // namespace qmrules::workbench::codemodel
