#pragma once

#include <algorithm>
#include <cstdint>

#include "workbench/codemodel/records.h"

namespace qmrules::workbench::codemodel::cobol {

// The bytes of a data item within its storage area: from `begin` up to `end`, exclusive.
struct ByteRange {
  NodeId area = 0;
  std::uint64_t begin = 0, end = 0;
};

// Of all occurrences that the item has in the first occurrence of what is around it.
inline ByteRange BytesOf(const DeclRecord& item) {
  return {item.area, item.offset, item.offset + item.size * std::max<std::uint32_t>(item.occurs, 1)};
}

// True when a change of one can be seen in the other.
inline bool Overlap(const ByteRange& one, const ByteRange& other) {
  return one.area != 0 && one.area == other.area && one.begin < other.end && other.begin < one.end;
}
inline bool Overlap(const DeclRecord& one, const DeclRecord& other) {
  return Overlap(BytesOf(one), BytesOf(other));
}

}  // namespace qmrules::workbench::codemodel::cobol
