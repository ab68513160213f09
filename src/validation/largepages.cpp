#include "validation/largepages.h"

#include <sys/mman.h>

#include <cstdint>

namespace qmrules::validation {

void PreferLargePages(const void* begin, std::size_t bytes) {
  constexpr std::size_t page = std::size_t{2} << 20;
  const std::size_t before = (page - reinterpret_cast<std::uintptr_t>(begin) % page) % page;
  if (bytes < before + page) return;
  // madvise asks for a pointer to what it may change, and with this advice changes nothing.
  auto* const first = const_cast<char*>(static_cast<const char*>(begin)) + before;
  // A wish: what a refusal costs is time.
  static_cast<void>(madvise(first, (bytes - before) / page * page, MADV_HUGEPAGE));
}

}  // namespace qmrules::validation
