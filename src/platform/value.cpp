#include "platform/value.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>

#include "platform/error.h"
#include "shell/casefold.h"

namespace qmrules::platform {

namespace {

template <class... Visitors>
struct Overloaded : Visitors... {
  using Visitors::operator()...;
};
template <class... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

}  // namespace

std::string Value::Text() const {
  return std::visit(
      Overloaded{[](std::monostate) { return std::string(); },
                 [](bool value) { return std::string(value ? "true" : "false"); },
                 [](std::int64_t value) { return std::to_string(value); },
                 [](double value) { return fmt::format("{}", value); }, [](const std::string& value) { return value; },
                 [](Timestamp value) { return FormatTimestamp(value); }},
      storage_);
}

std::int64_t Value::Integer() const {
  if (const auto* number = std::get_if<std::int64_t>(&storage_)) return *number;
  if (const auto* truth = std::get_if<bool>(&storage_)) return *truth ? 1 : 0;
  if (const auto* real = std::get_if<double>(&storage_)) {
    // Both limits are powers of two and so exact; the comparison is false for what is no number.
    if (*real >= -0x1p63 && *real < 0x1p63 && *real == std::trunc(*real)) return static_cast<std::int64_t>(*real);
  }
  if (IsAbsent()) return 0;
  if (const auto* text = std::get_if<std::string>(&storage_)) {
    if (text->empty()) return 0;
    std::int64_t number = 0;
    const char* end = text->data() + text->size();
    const auto [stop, error] = std::from_chars(text->data(), end, number);
    if (error == std::errc() && stop == end) return number;
  }
  throw Error(fmt::format("\"{}\" is not a whole number.", Text()));
}

bool Value::Boolean() const {
  if (const auto* truth = std::get_if<bool>(&storage_)) return *truth;
  if (const auto* number = std::get_if<std::int64_t>(&storage_)) return *number != 0;
  if (const auto* real = std::get_if<double>(&storage_)) return *real != 0;
  if (IsAbsent()) return false;
  if (const auto* text = std::get_if<std::string>(&storage_)) {
    if (text->empty() || shell::EqualIgnoringCase(*text, "false")) return false;
    if (shell::EqualIgnoringCase(*text, "true")) return true;
  }
  throw Error(fmt::format("\"{}\" is neither true nor false.", Text()));
}

Timestamp Value::Time() const {
  if (const auto* time = std::get_if<Timestamp>(&storage_)) return *time;
  if (const auto* text = std::get_if<std::string>(&storage_)) {
    if (const auto time = ParseTimestamp(*text)) return *time;
  }
  throw Error(fmt::format("\"{}\" is not a date and time such as \"2026-01-31 18:30:00\".", Text()));
}

}  // namespace qmrules::platform
