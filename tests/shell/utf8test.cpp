#include "shell/utf8.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace qmrules::shell {
namespace {

std::vector<char32_t> Walk(std::string_view text) {
  std::vector<char32_t> values;
  for (std::size_t position = 0; position < text.size();) {
    const Utf8Step step = DecodeAt(text, position);
    values.push_back(step.value);
    position += step.length;
  }
  return values;
}

constexpr char32_t Malformed(unsigned byte) {
  return kMalformedByte + byte;
}

TEST(Utf8, CharactersOfEachLengthAreDecoded) {
  EXPECT_EQ(Walk("aé語😀"), (std::vector<char32_t>{U'a', U'é', U'語', U'😀'}));
}

TEST(Utf8, LimitsOfEachLengthAreDecoded) {
  for (const char32_t value : {0x0U, 0x7FU, 0x80U, 0x7FFU, 0x800U, 0xD7FFU, 0xE000U, 0xFFFFU, 0x10000U, 0x10FFFFU}) {
    std::string text;
    AppendUtf8(text, value);
    EXPECT_EQ(Walk(text), std::vector<char32_t>{value});
  }
}

TEST(Utf8, EachMalformedByteIsAStepOfItsOwn) {
  const struct {
    std::string_view defect;
    std::string_view text;
    std::vector<char32_t> values;
  } cases[] = {
      {"stray continuation",
       "\x80"
       "a",
       {Malformed(0x80), U'a'}},
      {"cut at the end", "a\xE2\x82", {U'a', Malformed(0xE2), Malformed(0x82)}},
      {"cut by a letter",
       "\xE2\x82"
       "a",
       {Malformed(0xE2), Malformed(0x82), U'a'}},
      {"cut by a sequence", "\xC3\xC3\xA9", {Malformed(0xC3), U'é'}},
      {"overlong of two", "\xC0\x80", {Malformed(0xC0), Malformed(0x80)}},
      {"overlong of three", "\xE0\x9F\xBF", {Malformed(0xE0), Malformed(0x9F), Malformed(0xBF)}},
      {"overlong of four", "\xF0\x8F\xBF\xBF", {Malformed(0xF0), Malformed(0x8F), Malformed(0xBF), Malformed(0xBF)}},
      {"surrogate", "\xED\xA0\x80", {Malformed(0xED), Malformed(0xA0), Malformed(0x80)}},
      {"past the last code point",
       "\xF4\x90\x80\x80",
       {Malformed(0xF4), Malformed(0x90), Malformed(0x80), Malformed(0x80)}},
      {"byte that never occurs", "\xFF\xF5", {Malformed(0xFF), Malformed(0xF5)}},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(Walk(row.text), row.values) << row.defect;
  }
}

TEST(Utf8, DecodingAndEncodingGiveBackAnyBytes) {
  std::mt19937 random(20240607);
  // Bytes from the edges of the tables, so that sequences often nearly form.
  constexpr std::string_view kBytes("a\x7F\x80\x8F\x90\x9F\xA0\xBF\xC1\xC2\xDF\xE0\xED\xEF\xF0\xF4\xF5\xFF\0", 19);
  std::uniform_int_distribution<std::size_t> pick(0, kBytes.size() - 1);
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    for (std::size_t length = pick(random); length > 0; --length) {
      text += kBytes[pick(random)];
    }
    std::string again;
    for (const char32_t value : Walk(text)) {
      AppendUtf8(again, value);
    }
    ASSERT_EQ(again, text);
  }
}

}  // namespace
}  // namespace qmrules::shell
