#include <gtest/gtest.h>

#include <string_view>

#include "platform/fetch.h"

namespace qmrules::platform {
namespace {

TEST(FilterValue, PlainTextStays) {
  EXPECT_EQ(FilterValue(""), "");
  EXPECT_EQ(FilterValue("Prämie 日本 = 5 < 6 'x' \"y\""), "Prämie 日本 = 5 < 6 'x' \"y\"");
}

TEST(FilterValue, EachCharacterOfTheSyntaxIsEscaped) {
  EXPECT_EQ(FilterValue("a&b|c~d(e)f,g\\h"), "a\\&b\\|c\\~d\\(e\\)f\\,g\\\\h");
}

TEST(FilterValue, EscapedTextIsEscapedOnceMore) {
  EXPECT_EQ(FilterValue(FilterValue("&")), "\\\\\\&");
}

TEST(FilterValue, NulAndLineEndsStay) {
  const std::string_view text("a\0b\r\n", 5);
  EXPECT_EQ(FilterValue(text), text);
}

}  // namespace
}  // namespace qmrules::platform
