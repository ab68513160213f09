#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qmrules::platform {

// A moment in whole seconds of UTC. Coarser than any clock on purpose: "equal" and "in the same second" are the
// comparisons that the import and the validity sweep rest on.
struct Timestamp {
  std::int64_t seconds = 0;  // since 1970-01-01 00:00:00 UTC
  friend bool operator==(const Timestamp&, const Timestamp&) = default;
  friend auto operator<=>(const Timestamp& a, const Timestamp& b) { return a.seconds <=> b.seconds; }
};

// "YYYY-MM-DD HH:MM:SS", in UTC. Years 0000 to 9999; a moment outside throws Error.
std::string FormatTimestamp(Timestamp time);

// Takes "YYYY-MM-DD", "YYYY-MM-DD HH:MM" and "YYYY-MM-DD HH:MM:SS", with a blank or "T" between and an optional "Z"
// at the end. Nothing for any other text and for a date that no calendar has.
std::optional<Timestamp> ParseTimestamp(std::string_view text);

}  // namespace qmrules::platform
