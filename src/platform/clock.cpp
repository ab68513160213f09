#include "platform/clock.h"

#include <chrono>

namespace qmrules::platform {

Timestamp SystemClock::Now() const {
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  return Timestamp{now.time_since_epoch().count()};
}

}  // namespace qmrules::platform
