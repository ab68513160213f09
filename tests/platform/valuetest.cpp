#include "platform/value.h"
#include "support/errortext.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace qmrules::platform {
namespace {

using test::ErrorText;

constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();
constexpr Timestamp moment{1769884200};  // 2026-01-31 18:30:00

TEST(Value, DefaultIsAbsentAndAnEmptyTextIsNot) {
  EXPECT_TRUE(Value().IsAbsent());
  EXPECT_FALSE(Value("").IsAbsent());
  EXPECT_NE(Value(), Value(""));
}

TEST(Value, TextShowsEachKind) {
  EXPECT_EQ(Value().Text(), "");
  EXPECT_EQ(Value(true).Text(), "true");
  EXPECT_EQ(Value(false).Text(), "false");
  EXPECT_EQ(Value(-7).Text(), "-7");
  EXPECT_EQ(Value(lowest).Text(), "-9223372036854775808");
  EXPECT_EQ(Value(2.5).Text(), "2.5");
  EXPECT_EQ(Value(std::string_view("a\nb")).Text(), "a\nb");
  EXPECT_EQ(Value(moment).Text(), "2026-01-31 18:30:00");
}

TEST(Value, IntegerTakesNumbersBooleansAndNothing) {
  EXPECT_EQ(Value().Integer(), 0);
  EXPECT_EQ(Value("").Integer(), 0);
  EXPECT_EQ(Value(true).Integer(), 1);
  EXPECT_EQ(Value(false).Integer(), 0);
  EXPECT_EQ(Value(highest).Integer(), highest);
}

TEST(Value, IntegerTakesDecimalTextsOfTheWholeRange) {
  EXPECT_EQ(Value("-12").Integer(), -12);
  EXPECT_EQ(Value("007").Integer(), 7);
  EXPECT_EQ(Value("9223372036854775807").Integer(), highest);
  EXPECT_EQ(Value("-9223372036854775808").Integer(), lowest);
}

TEST(Value, IntegerRefusesOtherTexts) {
  for (const std::string text : {"x", "1x", " 1", "1 ", "1.0", "+1", "0x1", "9223372036854775808"}) {
    EXPECT_EQ(ErrorText([&] { (void)Value(text).Integer(); }), "\"" + text + "\" is not a whole number.");
  }
}

TEST(Value, IntegerTakesARealWithoutFraction) {
  EXPECT_EQ(Value(-3.0).Integer(), -3);
  EXPECT_EQ(Value(-0x1p63).Integer(), lowest);
}

TEST(Value, IntegerRefusesOtherReals) {
  EXPECT_EQ(ErrorText([] { (void)Value(2.5).Integer(); }), "\"2.5\" is not a whole number.");
  EXPECT_EQ(ErrorText([] { (void)Value(0x1p63).Integer(); }), "\"9.223372036854776e+18\" is not a whole number.");
  EXPECT_EQ(ErrorText([] { (void)Value(std::nan("")).Integer(); }), "\"nan\" is not a whole number.");
}

TEST(Value, IntegerRefusesAMoment) {
  EXPECT_EQ(ErrorText([] { (void)Value(moment).Integer(); }), "\"2026-01-31 18:30:00\" is not a whole number.");
}

TEST(Value, BooleanTakesNumbersTextsAndNothing) {
  for (const Value& value : {Value(true), Value(1), Value(-1), Value(0.5), Value("true"), Value("TRUE")}) {
    EXPECT_TRUE(value.Boolean()) << value.Text();
  }
  for (const Value& value : {Value(), Value(false), Value(0), Value(0.0), Value(""), Value("False")}) {
    EXPECT_FALSE(value.Boolean()) << value.Text();
  }
}

TEST(Value, BooleanRefusesOtherTextsAndMoments) {
  EXPECT_EQ(ErrorText([] { (void)Value("yes").Boolean(); }), "\"yes\" is neither true nor false.");
  EXPECT_EQ(ErrorText([] { (void)Value("1").Boolean(); }), "\"1\" is neither true nor false.");
  EXPECT_EQ(ErrorText([] { (void)Value(moment).Boolean(); }), "\"2026-01-31 18:30:00\" is neither true nor false.");
}

TEST(Value, TimeTakesMomentsAndTheirTexts) {
  EXPECT_EQ(Value(moment).Time(), moment);
  EXPECT_EQ(Value("2026-01-31 18:30:00").Time(), moment);
}

TEST(Value, TimeRefusesEverythingElse) {
  EXPECT_EQ(ErrorText([] { (void)Value().Time(); }), "\"\" is not a date and time such as \"2026-01-31 18:30:00\".");
  EXPECT_EQ(ErrorText([] { (void)Value(5).Time(); }), "\"5\" is not a date and time such as \"2026-01-31 18:30:00\".");
  EXPECT_EQ(ErrorText([] { (void)Value("soon").Time(); }),
            "\"soon\" is not a date and time such as \"2026-01-31 18:30:00\".");
}

TEST(Value, ValuesOfDifferentKindsDiffer) {
  EXPECT_NE(Value(1), Value(true));
  EXPECT_NE(Value(1), Value("1"));
  EXPECT_NE(Value(1), Value(1.0));
  EXPECT_EQ(Value("a"), Value(std::string("a")));
}

}  // namespace
}  // namespace qmrules::platform
