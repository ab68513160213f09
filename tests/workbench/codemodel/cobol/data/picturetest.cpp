#include "workbench/codemodel/cobol/data/picture.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace qmrules::workbench::codemodel::cobol {
namespace {

using enum PictureFacts::Category;

struct Expected {
  const char* text;
  PictureFacts::Category category;
  std::uint32_t characters;
  std::uint16_t digits = 0;
  std::int16_t scale = 0;
  bool isSigned = false;
};
void PrintTo(const Expected& expected, std::ostream* stream) {
  *stream << expected.text;
}

class PictureForms : public testing::TestWithParam<Expected> {};

TEST_P(PictureForms, TellCategoryAndSize) {
  const Expected& expected = GetParam();
  const auto picture = ParsePicture(expected.text);
  ASSERT_TRUE(picture.has_value());
  EXPECT_EQ(picture->category, expected.category);
  EXPECT_EQ(picture->characters, expected.characters);
  EXPECT_EQ(picture->digits, expected.digits);
  EXPECT_EQ(picture->scale, expected.scale);
  EXPECT_EQ(picture->isSigned, expected.isSigned);
}

INSTANTIATE_TEST_SUITE_P(
    All, PictureForms,
    testing::Values(
        Expected{"X", Alphanumeric, 1}, Expected{"X(10)", Alphanumeric, 10}, Expected{"XX(3)9", Alphanumeric, 5},
        Expected{"x(2)", Alphanumeric, 2}, Expected{"A(5)", Alphabetic, 5}, Expected{"A(3)9", Alphanumeric, 4},
        Expected{"A(3)BA", AlphanumericEdited, 5}, Expected{"X(2)/X0", AlphanumericEdited, 5},
        Expected{"9(5)", Numeric, 5, 5}, Expected{"S9(5)V99", Numeric, 7, 7, 2, true},
        Expected{"SV9(3)", Numeric, 3, 3, 3, true}, Expected{"9V", Numeric, 1, 1}, Expected{"VPP9", Numeric, 1, 3, 3},
        Expected{"PP99", Numeric, 2, 4, 4}, Expected{"S99PPP", Numeric, 2, 5, -3, true},
        Expected{"99PV", Numeric, 2, 3, -1}, Expected{"ZZ,ZZ9.99", NumericEdited, 9, 7, 2},
        Expected{"$$$,$$9.99CR", NumericEdited, 12, 7, 2, true}, Expected{"***9", NumericEdited, 4, 4},
        Expected{"-(5)9", NumericEdited, 6, 5, 0, true}, Expected{"+++,++9.99", NumericEdited, 10, 7, 2, true},
        Expected{"99/99/9(4)", NumericEdited, 10, 8}, Expected{"Z(5)DB", NumericEdited, 7, 5, 0, true},
        Expected{"9,9,", NumericEdited, 4, 2}, Expected{"B99", NumericEdited, 3, 2}, Expected{"N(4)", National, 4},
        Expected{"NBN", NationalEdited, 3}, Expected{"G(3)", Dbcs, 3}, Expected{"GBG", Dbcs, 3},
        Expected{"+9.99E+99", FloatingPoint, 9, 0, 0, true}, Expected{"1(8)", Boolean, 8}));

class NoPictures : public testing::TestWithParam<const char*> {};

TEST_P(NoPictures, AreRefused) {
  EXPECT_FALSE(ParsePicture(GetParam()).has_value());
}

INSTANTIATE_TEST_SUITE_P(All, NoPictures,
                         testing::Values("", "S", "V", "X(", "X()", "X(0)", "X)", "X(A)", "9S", "SS9", "9V9V9", "9.9V9",
                                         "Z*9", "XV9", "SX", "PPX", "Q(3)", "CR99", "99CRCR", "P9P", "SZ9"));

TEST(Picture, TakesAnotherCurrencySymbol) {
  EXPECT_EQ(ParsePicture("FF9.99", 'F')->category, PictureFacts::Category::NumericEdited);
  EXPECT_FALSE(ParsePicture("FF9.99").has_value());
}

TEST(Picture, CountsDecimalDigitsBehindTheCommaWhenItIsTheDecimalPoint) {
  const auto picture = ParsePicture("Z.ZZ9,99", '$', true);
  ASSERT_TRUE(picture.has_value());
  EXPECT_EQ(picture->characters, 8U);
  EXPECT_EQ(picture->scale, 2);
}

TEST(Picture, CountsUpToItsLimit) {
  EXPECT_EQ(ParsePicture("X(99999999999999999999)")->characters, 1U << 31);
  EXPECT_EQ(ParsePicture("X(2147483648)X(2147483648)")->characters, 1U << 31);
  EXPECT_EQ(ParsePicture("9(70000)")->digits, 32767);
}

}  // namespace
}  // namespace qmrules::workbench::codemodel::cobol
