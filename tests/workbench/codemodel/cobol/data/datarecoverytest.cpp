#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/data/headmodel.h"

namespace qmrules::test {
namespace {

struct Defect {
  const char* name;
  const char* lines;
  const char* diagnostics;
  const char* layout;
};
void PrintTo(const Defect& defect, std::ostream* stream) {
  *stream << defect.name;
}

class DataRecovery : public testing::TestWithParam<Defect> {};

TEST_P(DataRecovery, CostsOneClauseOnly) {
  const HeadModel model(HeadModel::WorkingStorage(GetParam().lines));
  EXPECT_EQ(model.Diagnostics(), GetParam().diagnostics);
  EXPECT_EQ(model.Layout(), GetParam().layout);
}

INSTANTIATE_TEST_SUITE_P(
    All, DataRecovery,
    testing::Values(
        Defect{"MissingFullStop", "01  A PIC X\n01  B PIC X.\n",
               "gap 6:8 The full stop of the data description before this is missing.\n", "01 A 0+1\n01 B 0+1\n"},
        Defect{"MissingFullStopBehindAValue", "01  A.\n    05  B PIC X VALUE 'A'\n    05  C PIC X.\n",
               "gap 7:12 The full stop of the data description before this is missing.\n",
               "01 A 0+2\n  05 B 0+1\n  05 C 1+1\n"},
        Defect{"MissingFullStopBehindOccurs", "01  A.\n    05  B PIC X OCCURS 3\n    05  C PIC X.\n",
               "gap 7:12 The full stop of the data description before this is missing.\n",
               "01 A 0+4\n  05 B 0+1*3\n  05 C 3+1\n"},
        Defect{"GarbledClause", "01  A PICC X(3) VALUE 'A'.\n01  B PIC X.\n",
               "gap 5:14 PICC is no clause of a data description.\n", "01 A 0+1\n01 B 0+1\n"},
        Defect{"UnknownWord", "01  A PIC X(3) WIBBLE COMP-3 VALUE 'A'.\n",
               "gap 5:23 WIBBLE is no clause of a data description.\n", "01 A 0+2\n"},
        Defect{"MissingPicture", "01  A.\n    05  B VALUE 'X'.\n    05  C PIC X.\n", "gap 6:12 B has no PICTURE.\n",
               "01 A 0+2\n  05 B 0+1\n  05 C 1+1\n"},
        Defect{"GarbledPicture", "01  A.\n    05  B PIC Q(3).\n    05  C PIC X.\n", "gap 6:22 Q(3) is no picture.\n",
               "01 A 0+1\n  05 B 0+0\n  05 C 0+1\n"},
        Defect{"MissingLevel", "01  A.\n    05  B PIC X.\n    C PIC X.\n    05  D PIC X.\n",
               "gap 7:12 The level number of this item is missing.\n",
               "01 A 0+3\n  05 B 0+1\n  05 C 1+1\n  05 D 2+1\n"},
        Defect{"GarbledLevel", "01  A.\n    05  B PIC X.\n    O5  C PIC X.\n    05  D PIC X.\n",
               "gap 7:12 The level number of this item is missing.\n",
               "01 A 0+3\n  05 B 0+1\n  05 C 1+1\n  05 D 2+1\n"},
        Defect{"LevelOutOfRange", "01  A.\n    05  B PIC X.\n    55  C PIC X.\n", "gap 7:12 55 is no level number.\n",
               "01 A 0+2\n  05 B 0+1\n  05 C 1+1\n"},
        Defect{"UnknownRedefined", "01  A PIC X.\n01  B REDEFINES C PIC X.\n",
               "gap 6:24 C is no item of the same group before this one.\n", "01 A 0+1\n01 B 0+1\n"},
        Defect{"RedefinesItself", "01  A REDEFINES A PIC X.\n",
               "gap 5:24 A is no item of the same group before this one.\n", "01 A 0+1\n"},
        Defect{"MissingRedefined", "01  A PIC X.\n01  B REDEFINES.\n    05  C PIC X.\n",
               "gap 6:23 The name of the redefined item is missing here.\n", "01 A 0+1\n01 B 0+1\n  05 C 0+1\n"},
        Defect{"MissingOccurrences", "01  A.\n    05  B PIC X OCCURS.\n    05  C PIC X.\n",
               "gap 6:30 The number of occurrences is missing here.\n", "01 A 0+2\n  05 B 0+1\n  05 C 1+1\n"},
        Defect{"UnknownLength", "01  A.\n    05  B PIC X OCCURS 1 TO 3 DEPENDING ON N.\n",
               "gap 6:51 N is not declared.\n", "01 A 0+3\n  05 B 0+1*3\n"},
        Defect{
            "AmbiguousLength",
            "01  A.\n    05  B PIC X OCCURS 1 TO 3 DEPENDING ON N.\n01  C.\n  05  N PIC 9.\n01  D.\n  05  N PIC 9.\n",
            "gap 6:51 N is ambiguous; qualify it.\n",
            "01 A 0+3\n  05 B 0+1*3\n01 C 0+1\n  05 N 0+1\n01 D 0+1\n  05 N 0+1\n"},
        Defect{"UnknownRenamed", "01  A.\n    05  B PIC X.\n    66  C RENAMES D.\n",
               "gap 7:26 D is not declared in this record.\n", "01 A 0+1\n  05 B 0+1\n  66 C 0+0\n"},
        Defect{"GroupWithPicture", "01  A PIC X.\n    05  B PIC X.\n", "gap 5:8 A has a PICTURE and items below it.\n",
               "01 A 0+1\n  05 B 0+1\n"},
        Defect{"MissingValue", "01  A PIC X VALUE.\n01  B PIC X.\n", "gap 5:25 The value is missing here.\n",
               "01 A 0+1\n01 B 0+1\n"},
        Defect{"MissingUsage", "01  A PIC X USAGE IS.\n01  B PIC X.\n", "gap 5:28 The usage is missing here.\n",
               "01 A 0+1\n01 B 0+1\n"},
        Defect{"TextBetween", "01  A PIC X.\n    SOME STRAY WORDS.\n01  B PIC X.\n",
               "gap 6:12 This is no data description.\n", "01 A 0+1\n01 B 0+1\n"}),
    [](const testing::TestParamInfo<Defect>& defect) { return std::string(defect.param.name); });

struct Garbled {
  const char* name;
  const char* text;
  const char* diagnostics;
  const char* layout;
  const char* stoppedAt;
};

void PrintTo(const Garbled& garbled, std::ostream* stream) {
  *stream << garbled.name;
}

class HeaderRecovery : public testing::TestWithParam<Garbled> {};

TEST_P(HeaderRecovery, LosesNoItem) {
  const HeadModel model(GetParam().text);
  EXPECT_EQ(model.Diagnostics(), GetParam().diagnostics);
  EXPECT_EQ(model.Layout(), GetParam().layout);
  EXPECT_EQ(model.StoppedAt(), GetParam().stoppedAt);
}

INSTANTIATE_TEST_SUITE_P(
    All, HeaderRecovery,
    testing::Values(
        Garbled{
            "NoDataDivision",
            "       PROGRAM-ID. P.\n       WORKING-STORAGE SECTION.\n       01  A PIC X.\n       PROCEDURE DIVISION.\n",
            "", "01 A 0+1\n", "PROCEDURE"},
        Garbled{"GarbledDataDivision",
                "       PROGRAM-ID. P.\n       DATTA DIVISION.\n       WORKING-STORAGE SECTION.\n       01  A PIC X.\n"
                "       PROCEDURE DIVISION.\n",
                "", "01 A 0+1\n", "PROCEDURE"},
        Garbled{"GarbledSection",
                "       PROGRAM-ID. P.\n       DATA DIVISION.\n       WORKING SECTION.\n       01  A PIC X.\n"
                "       LINKAGE SECTION.\n       01  B PIC X.\n       PROCEDURE DIVISION.\n",
                "gap 3:8 This is no section of the data division.\n", "01 A 0+1\n01 B 0+1\n", "PROCEDURE"},
        Garbled{"GarbledWordSection",
                "       PROGRAM-ID. P.\n       DATA DIVISION.\n       WORKING-STORAGE SECTOIN.\n       01  A PIC X.\n"
                "       PROCEDURE DIVISION.\n",
                "", "01 A 0+1\n", "PROCEDURE"},
        Garbled{"NoSection",
                "       PROGRAM-ID. P.\n       DATA DIVISION.\n       01  A PIC X.\n       PROCEDURE DIVISION.\n",
                "gap 3:8 The header of a section of the data division is missing before this.\n", "01 A 0+1\n",
                "PROCEDURE"},
        Garbled{"ProcedureWithoutDivision",
                "       PROGRAM-ID. P.\n       DATA DIVISION.\n       WORKING-STORAGE SECTION.\n       01  A PIC X.\n"
                "       PROCEDURE.\n       P1.\n",
                "", "01 A 0+1\n", "PROCEDURE"},
        Garbled{"DivisionWithoutProcedure",
                "       PROGRAM-ID. P.\n       DATA DIVISION.\n       WORKING-STORAGE SECTION.\n       01  A PIC X.\n"
                "       DIVISION.\n       P1.\n",
                "", "01 A 0+1\n", "DIVISION"},
        Garbled{"GarbledProcedure",
                "       PROGRAM-ID. P.\n       DATA DIVISION.\n       WORKING-STORAGE SECTION.\n       01  A PIC X.\n"
                "       PROCEDVRE DIVISION.\n       P1.\n",
                "", "01 A 0+1\n", "PROCEDVRE"},
        Garbled{"NoFullStopBeforeProcedure",
                "       PROGRAM-ID. P.\n       DATA DIVISION.\n       WORKING-STORAGE SECTION.\n       01  A PIC X\n"
                "       PROCEDURE DIVISION.\n",
                "gap 5:8 The full stop of the data description before this is missing.\n", "01 A 0+1\n", "PROCEDURE"}),
    [](const testing::TestParamInfo<Garbled>& garbled) { return std::string(garbled.param.name); });

TEST(DataRecoveryOfMany, ItemsWithoutNamesStayLinear) {
  std::string lines = "01  A.\n";
  for (int item = 0; item < 50'000; ++item) lines += "    05  FILLER PIC X.\n";
  const HeadModel model(HeadModel::WorkingStorage(lines));
  EXPECT_EQ(model.Item("A").size, 50'000U);
}

}  // namespace
}  // namespace qmrules::test
