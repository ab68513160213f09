#pragma once

#include <cstddef>

namespace qmrules::validation {

// Asks the system to keep the memory in large pages, if it is of a size that is worth it: what is read in no order, as
// a large index is, then costs fewer look-ups of addresses. To be asked before the memory is first written. Where the
// system has no such pages nothing happens.
void PreferLargePages(const void* begin, std::size_t bytes);

}  // namespace qmrules::validation
