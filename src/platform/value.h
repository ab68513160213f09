#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "platform/timestamp.h"

namespace qmrules::platform {

// One attribute value on its way between the logic and a store: nothing, a boolean, an integer, a real number, a text
// or a moment. Conversions are explicit and fail loudly.
class Value {
 public:
  using Storage = std::variant<std::monostate, bool, std::int64_t, double, std::string, Timestamp>;

  Value() = default;
  // Implicit, so that a call that puts an attribute takes its value as it is. NOLINTBEGIN(google-explicit-constructor)
  Value(bool value) : storage_(value) {}
  Value(int value) : storage_(static_cast<std::int64_t>(value)) {}
  Value(std::int64_t value) : storage_(value) {}
  Value(double value) : storage_(value) {}
  Value(std::string value) : storage_(std::move(value)) {}
  Value(std::string_view value) : storage_(std::string(value)) {}
  Value(const char* value) : storage_(std::string(value)) {}
  Value(Timestamp value) : storage_(value) {}
  // NOLINTEND(google-explicit-constructor)

  // True for an absent value; an empty text is not absent.
  bool IsAbsent() const { return std::holds_alternative<std::monostate>(storage_); }

  // As shown to a reader: "" for an absent value, "true" and "false", decimal digits, FormatTimestamp.
  std::string Text() const;

  // The number; an absent value and an empty text give 0, a boolean gives 0 or 1. Throws Error for a text or a real
  // number that is not an integer of 64 bits and for a moment.
  std::int64_t Integer() const;

  // True for true, for a number other than 0 and for the text "true" in any case; false for absent, empty and "false".
  // Throws Error for any other text and for a moment.
  bool Boolean() const;

  // The moment; a text is taken through ParseTimestamp. Throws Error for anything else.
  Timestamp Time() const;

  const Storage& Get() const { return storage_; }
  friend bool operator==(const Value&, const Value&) = default;

 private:
  Storage storage_;
};

}  // namespace qmrules::platform
