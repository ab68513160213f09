#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/memorysources.h"

namespace qmrules::test {

// A place of a data item, as our model or a compiled program has it.
struct ItemPlace {
  std::string item;  // "C OF B OF A (1)"
  std::uint64_t offset = 0, size = 0;

  bool operator==(const ItemPlace&) const = default;
};

// A program with the data of another one that prints where each item lies, and what we expect it to print.
struct LayoutProbe {
  std::string name;  // of its file, for messages
  std::string text;  // free form
  std::vector<ItemPlace> expected;
  std::vector<std::string> diagnostics;  // of the first program's probe, for all of the file: "12:8 text"
};

// One probe for each program of the file.
std::vector<LayoutProbe> ProbesOf(MemorySources& sources, std::string_view file);
// What the lines that a probe prints tell.
std::vector<ItemPlace> PrintedPlaces(const LayoutProbe& probe, std::string_view output);

}  // namespace qmrules::test
