#include "platform/timestamp.h"

#include <fmt/format.h>

#include <chrono>

#include "platform/error.h"

namespace qmrules::platform {

namespace {

constexpr std::int64_t secondsPerDay = 86400;
constexpr std::int64_t firstSecond = -62167219200;  // 0000-01-01 00:00:00
constexpr std::int64_t lastSecond = 253402300799;   // 9999-12-31 23:59:59

// The decimal number of exactly `count` digits at the front of `text`, which is then consumed.
std::optional<int> TakeDigits(std::string_view& text, std::size_t count) {
  if (text.size() < count) return std::nullopt;
  int number = 0;
  for (const char digit : text.substr(0, count)) {
    if (digit < '0' || digit > '9') return std::nullopt;
    number = number * 10 + (digit - '0');
  }
  text.remove_prefix(count);
  return number;
}

bool TakeCharacter(std::string_view& text, std::string_view oneOf) {
  if (text.empty() || oneOf.find(text.front()) == std::string_view::npos) return false;
  text.remove_prefix(1);
  return true;
}

std::optional<std::int64_t> TakeDate(std::string_view& text) {
  const auto year = TakeDigits(text, 4);
  if (!year || !TakeCharacter(text, "-")) return std::nullopt;
  const auto month = TakeDigits(text, 2);
  if (!month || !TakeCharacter(text, "-")) return std::nullopt;
  const auto day = TakeDigits(text, 2);
  if (!day) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(*month)),
                                         std::chrono::day(static_cast<unsigned>(*day))};
  if (!date.ok()) return std::nullopt;
  return std::int64_t{std::chrono::sys_days(date).time_since_epoch().count()} * secondsPerDay;
}

// Seconds since midnight from "HH:MM" or "HH:MM:SS".
std::optional<std::int64_t> TakeTimeOfDay(std::string_view& text) {
  const auto hour = TakeDigits(text, 2);
  if (!hour || *hour > 23 || !TakeCharacter(text, ":")) return std::nullopt;
  const auto minute = TakeDigits(text, 2);
  if (!minute || *minute > 59) return std::nullopt;
  int second = 0;
  if (TakeCharacter(text, ":")) {
    const auto digits = TakeDigits(text, 2);
    if (!digits || *digits > 59) return std::nullopt;
    second = *digits;
  }
  return std::int64_t{*hour} * 3600 + std::int64_t{*minute} * 60 + second;
}

}  // namespace

std::string FormatTimestamp(Timestamp time) {
  // Before any calendar is asked: far outside, its numbers wrap around.
  if (time.seconds < firstSecond || time.seconds > lastSecond) {
    throw Error(fmt::format("The moment {} seconds from 1970 lies outside the years 0000 to 9999.", time.seconds));
  }
  const std::chrono::sys_seconds moment{std::chrono::seconds(time.seconds)};
  const auto days = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day date(days);
  const auto rest = (moment - days).count();
  return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", static_cast<int>(date.year()),
                     static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), rest / 3600,
                     rest / 60 % 60, rest % 60);
}

std::optional<Timestamp> ParseTimestamp(std::string_view text) {
  const auto date = TakeDate(text);
  if (!date) return std::nullopt;
  std::int64_t timeOfDay = 0;
  if (TakeCharacter(text, " T")) {
    const auto time = TakeTimeOfDay(text);
    if (!time) return std::nullopt;
    timeOfDay = *time;
    TakeCharacter(text, "Z");
  }
  if (!text.empty()) return std::nullopt;
  return Timestamp{*date + timeOfDay};
}

}  // namespace qmrules::platform
