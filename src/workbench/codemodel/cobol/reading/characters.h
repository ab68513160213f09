#pragma once

#include <array>
#include <cstdint>
#include <cstring>

namespace qmrules::workbench::codemodel::cobol {

// What a byte of COBOL text can begin.
enum class CharacterClass : std::uint8_t {
  Blank,
  Letter,  // of a word: letters, "_", "#", "@", all bytes above ASCII
  Digit,
  Hyphen,
  Dollar,
  Quote,
  Period,
  Comma,
  Semicolon,
  Open,
  Close,
  Colon,
  Plus,
  Star,
  Slash,
  Less,
  Greater,
  Equal,
  Ampersand,
  Sign,     // any other visible character
  Control,  // any other byte
};

namespace detail {

constexpr std::array<CharacterClass, 256> MakeCharacterClasses() {
  using enum CharacterClass;
  std::array<CharacterClass, 256> classes{};
  for (std::size_t code = 0; code < 256; ++code) {
    classes[code] = code >= 128 ? Letter : code > ' ' && code < 127 ? Sign : Control;
  }
  for (std::size_t code = 'A'; code <= 'Z'; ++code) classes[code] = classes[code - 'A' + 'a'] = Letter;
  for (std::size_t code = '0'; code <= '9'; ++code) classes[code] = Digit;
  classes['_'] = classes['#'] = classes['@'] = Letter;
  // The end-of-file mark of old systems stands for nothing.
  classes[' '] = classes['\t'] = classes['\f'] = classes['\v'] = classes['\r'] = classes['\n'] = classes[0x1A] = Blank;
  classes['-'] = Hyphen;
  classes['$'] = Dollar;
  classes['\''] = classes['"'] = Quote;
  classes['.'] = Period;
  classes[','] = Comma;
  classes[';'] = Semicolon;
  classes['('] = Open;
  classes[')'] = Close;
  classes[':'] = Colon;
  classes['+'] = Plus;
  classes['*'] = Star;
  classes['/'] = Slash;
  classes['<'] = Less;
  classes['>'] = Greater;
  classes['='] = Equal;
  classes['&'] = Ampersand;
  return classes;
}

inline constexpr std::array<CharacterClass, 256> kCharacterClasses = MakeCharacterClasses();

}  // namespace detail

inline CharacterClass ClassOf(char byte) {
  return detail::kCharacterClasses[static_cast<unsigned char>(byte)];
}
inline bool IsBlank(char byte) {
  return ClassOf(byte) == CharacterClass::Blank;
}
inline bool IsDigit(char byte) {
  return byte >= '0' && byte <= '9';
}
// Letter, Digit, Hyphen, Dollar.
inline bool IsWordCharacter(char byte) {
  const auto kind = static_cast<unsigned>(ClassOf(byte));
  return kind >= static_cast<unsigned>(CharacterClass::Letter) && kind <= static_cast<unsigned>(CharacterClass::Dollar);
}
inline char UpperOf(char byte) {
  return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
}
// A to Z in either case.
inline bool IsLetter(char byte) {
  return UpperOf(byte) >= 'A' && UpperOf(byte) <= 'Z';
}

// The first byte from `at` on that is no blank, or `end`.
inline const char* SkipBlanks(const char* at, const char* end) {
  constexpr std::uint64_t eightBlanks = 0x2020202020202020;
  while (end - at >= 8) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, at, sizeof bytes);
    if (bytes != eightBlanks) break;
    at += 8;
  }
  while (at != end && IsBlank(*at)) ++at;
  return at;
}

inline const char* SkipWord(const char* at, const char* end) {
  while (at != end && IsWordCharacter(*at)) ++at;
  return at;
}

inline const char* SkipDigits(const char* at, const char* end) {
  while (at != end && IsDigit(*at)) ++at;
  return at;
}

// `end` without the blanks before it.
inline const char* TrimBlanks(const char* at, const char* end) {
  while (end != at && IsBlank(end[-1])) --end;
  return end;
}

}  // namespace qmrules::workbench::codemodel::cobol
