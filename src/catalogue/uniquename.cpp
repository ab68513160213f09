#include "catalogue/uniquename.h"

#include <fmt/format.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdint>

namespace qmrules::catalogue {

namespace {

constexpr std::int64_t kDayOfTheEpoch = 25569;  // 1970-01-01, counted in days from 1899-12-30

// The days with exactly 12 decimals. Worked out in whole numbers: a double would lose what lies below a microsecond,
// and its printing would heed the locale.
std::string PresentDays() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const auto days = std::chrono::floor<std::chrono::days>(now);
  const std::int64_t nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(now - days).count();
  const std::int64_t decimals = nanoseconds * 5 / 432;  // times 10^12, divided by the nanoseconds of a day
  return fmt::format("{}.{:012}", kDayOfTheEpoch + days.count(), decimals);
}

// The process number is asked for at each call, since a fork inherits everything else.
std::uint64_t NextCounter() {
  static std::atomic<std::uint32_t> counter{0};
  const std::uint32_t calls = counter.fetch_add(1, std::memory_order_relaxed) + 1;
  return (std::uint64_t{static_cast<std::uint32_t>(getpid())} << 32U) | calls;
}

}  // namespace

std::string UniqueName() {
  return fmt::format("n{}.{}", PresentDays(), NextCounter());
}

}  // namespace qmrules::catalogue
