#include "workbench/codemodel/cobol/reading/sourceformat.h"

#include <gtest/gtest.h>

#include <string>

namespace qmrules::workbench::codemodel::cobol {
namespace {

// A line of fixed form with something in the identification area.
std::string Marked(std::string_view code, std::string_view mark) {
  std::string line = "       " + std::string(code);
  line.resize(72, ' ');
  return line + std::string(mark) + '\n';
}

TEST(SourceFormat, FormatsHaveNamesInAnyCase) {
  for (const auto format : {SourceFormat::Fixed, SourceFormat::WideFixed, SourceFormat::Free}) {
    EXPECT_EQ(SourceFormatNamed(NameOf(format)), format);
  }
  EXPECT_EQ(SourceFormatNamed("WIDE"), SourceFormat::WideFixed);
  EXPECT_EQ(SourceFormatNamed("Free"), SourceFormat::Free);
  EXPECT_EQ(SourceFormatNamed("freeform"), std::nullopt);
  EXPECT_EQ(SourceFormatNamed(""), std::nullopt);
}

TEST(DetectFormat, ATextWithIndicatorsOnlyIsFixed) {
  EXPECT_EQ(
      DetectFormat("000100 IDENTIFICATION DIVISION.\n      * c\n      D X\n      /\n      - 'x'\n\tA\n  CBL LIB\n"),
      SourceFormat::Fixed);
  EXPECT_EQ(DetectFormat(""), SourceFormat::Fixed);
  EXPECT_EQ(DetectFormat("\n\n   \n"), SourceFormat::Fixed);
}

TEST(DetectFormat, CodeInColumnSevenIsFree) {
  EXPECT_EQ(DetectFormat("IDENTIFICATION DIVISION.\nPROGRAM-ID. X.\n        MOVE A TO B.\n"), SourceFormat::Free);
  EXPECT_EQ(DetectFormat("    DISPLAY 'X'\r    STOP RUN\r"), SourceFormat::Free);
}

TEST(DetectFormat, AWordWithDInColumnSevenIsFree) {
  EXPECT_EQ(DetectFormat("PERFORDO-IT\n"), SourceFormat::Free);
  EXPECT_EQ(DetectFormat("000100D    DISPLAY X\n"), SourceFormat::Fixed);
}

TEST(DetectFormat, OneStrayLineInFiftyLeavesAFixedText) {
  std::string text;
  for (int line = 0; line < 49; ++line) text += "       MOVE A TO B.\n";
  EXPECT_EQ(DetectFormat(text + "STRAYLINE\n"), SourceFormat::Fixed);
  EXPECT_EQ(DetectFormat(text + "STRAYLINE\nSTRAYLINE\n"), SourceFormat::Free);
}

TEST(DetectFormat, ADirectiveBeforeTheCodeDecides) {
  EXPECT_EQ(DetectFormat("       >>source format is free\n       A.\n"), SourceFormat::Free);
  EXPECT_EQ(DetectFormat("      * c\n000100$SET SOURCEFORMAT\"FREE\"\n       A.\n"), SourceFormat::Free);
  EXPECT_EQ(DetectFormat("      $SET SOURCEFORMAT\"FIXED\"\nSTRAYLINE\n"), SourceFormat::Fixed);
  EXPECT_EQ(DetectFormat(">>SOURCE VARIABLE\nSTRAYLINE\n"), SourceFormat::WideFixed);
  EXPECT_EQ(DetectFormat("      $SET ANS85\n       A.\n"), SourceFormat::Fixed);
}

TEST(DetectFormat, ADirectiveBehindCodeEndsTheLooking) {
  EXPECT_EQ(DetectFormat("       A.\n>>SOURCE FREE\nB.\nC.\n"), SourceFormat::Fixed);
}

TEST(DetectFormat, OnlySourceAndSetDirectivesTellTheFormat) {
  EXPECT_EQ(FormatOfDirective(">>IF SOURCE-FREE = 1"), std::nullopt);
  EXPECT_EQ(FormatOfDirective("++INCLUDE SOURCEFREE"), std::nullopt);
  EXPECT_EQ(FormatOfDirective(">>  SOURCE FREE"), SourceFormat::Free);
  EXPECT_EQ(FormatOfDirective("$set sourceformat(fixed)"), SourceFormat::Fixed);
}

TEST(DetectFormat, MarksInTheIdentificationAreaLeaveATextFixed) {
  std::string text;
  for (int line = 0; line < 5; ++line) text += Marked("MOVE A TO B.", "NC1014.2");
  // The code goes up to the last column.
  text += Marked("DISPLAY 'THIS LITERAL ENDS WITH THE LAST COLUMN OF ITS LINE, SO IT IS'", "NC1014.2");
  EXPECT_EQ(DetectFormat(text), SourceFormat::Fixed);
}

TEST(DetectFormat, ATextWhoseStatementsGoOnPastColumn72IsWide) {
  const std::string statement =
      "           MOVE CUSTOMER-NAME-OF-THE-POLICY-HOLDER TO CUSTOMER-NAME-ON-THE-REPORT-LINE.\n";
  EXPECT_EQ(DetectFormat("       A.\n" + statement), SourceFormat::WideFixed);
  EXPECT_EQ(DetectFormat(Marked("A", "X'") + Marked("B", "CHG1") + Marked("C", "D.")), SourceFormat::WideFixed);
}

TEST(DetectFormat, CommentsPastColumn72LeaveATextFixed) {
  EXPECT_EQ(DetectFormat("      *" + std::string(90, 'x') + "\n       A.\n"), SourceFormat::Fixed);
}

TEST(DetectFormat, FileAndTextAreDetectedAlike) {
  for (const std::string text : {"IDENTIFICATION DIVISION.\n", "       A.\r\n       B.\r\n", ""}) {
    EXPECT_EQ(DetectFormat(SourceFile("A.cbl", text)), DetectFormat(text));
  }
}

}  // namespace
}  // namespace qmrules::workbench::codemodel::cobol
