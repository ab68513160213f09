#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qmrules::shell {

/// One step through UTF-8 text.
///
/// A byte that does not belong to a well-formed sequence (a stray continuation byte, a cut sequence, an overlong form,
/// an encoded surrogate) is a step of its own of length 1, with the value kMalformedByte + the byte. So walking any
/// bytes ends, loses nothing, and no malformed byte compares equal to a character.
struct Utf8Step {
  char32_t value = 0;
  std::size_t length = 0;  ///< bytes taken, 1 to 4
};

inline constexpr char32_t kMalformedByte = 0x110000;

/// The step at byte `position`, which must be less than `text.size()`.
[[nodiscard]] Utf8Step DecodeAt(std::string_view text, std::size_t position);

/// Writes the bytes of a step's value to `out`, which has room for 4, and returns how many they are. A malformed byte
/// comes back as that byte, so decoding and encoding is the identity on any bytes.
[[nodiscard]] std::size_t EncodeTo(char32_t value, char* out);

/// Appends the bytes of a step's value to `out`.
void AppendUtf8(std::string& out, char32_t value);

}  // namespace qmrules::shell
