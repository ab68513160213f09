// Sections and paragraphs: where they begin, what their names mean, what is said above them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/cobolmodel.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using workbench::codemodel::Entity;

constexpr std::string_view kDivisionData = "01  A PIC 9.\n01  B PIC 9.\n";

TEST(ProcedureDivision, StatementsBeforeTheFirstHeaderAreInAParagraphOfTheProgramsName) {
  const auto model = CobolModel::Of(kDivisionData, "    MOVE A TO B.\n    GOBACK.\n");
  EXPECT_EQ(model.Outline(), "PORT ENTRY\nPAR PROBE implicit\n  STAT MOVE\n  PORT GOBACK\n");
}

TEST(ProcedureDivision, StatementsOfASectionBeforeItsFirstParagraphAreInOneOfTheSectionsName) {
  const auto model = CobolModel::Of(kDivisionData, R"(MAIN-PART SECTION 12.
    MOVE A TO B.
NEXT-PARA.
    GOBACK.
)");
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  EXPECT_EQ(
      model.Outline(),
      "PORT ENTRY\nSECTION MAIN-PART\n  PAR MAIN-PART implicit\n    STAT MOVE\n  PAR NEXT-PARA\n    PORT GOBACK\n");
}

TEST(ProcedureDivision, NumbersAndWordsOfTheLanguageNameParagraphs) {
  const auto model = CobolModel::Of(kDivisionData, R"(100.
    PERFORM $number[[200]] THRU CONTROL-PARA.
    PERFORM $word[[TABLE]].
    GO TO 100.
200.
    EXIT.
CONTROL-PARA.
    EXIT.
TABLE.
    EXIT.
)");
  EXPECT_EQ(model.At("number"), "REF 200 12");
  EXPECT_THAT(model.Outline(), testing::HasSubstr("PAR TABLE\n  STAT EXIT\n"));
}

TEST(ProcedureDivision, ANameMeansTheParagraphOfItsOwnSectionFirst) {
  const auto model = CobolModel::Of(kDivisionData, R"(ONE SECTION.
TWICE.
    PERFORM $own[[TWICE]]
    PERFORM $other[[TWICE OF TWO]]
    PERFORM $in[[TWICE IN ONE]]
    PERFORM $only[[LAST-PARA]]
    PERFORM $section[[TWO]]
    GOBACK.
TWO SECTION.
TWICE.
    PERFORM $second[[TWICE]].
LAST-PARA.
    EXIT.
)");
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  EXPECT_EQ(model.At("own"), "REF TWICE 9");
  EXPECT_EQ(model.At("other"), "REF TWICE 17");
  EXPECT_EQ(model.At("in"), "REF TWICE 9");
  EXPECT_EQ(model.At("only"), "REF LAST-PARA 19");
  EXPECT_EQ(model.At("section"), "REF TWO 16");
  EXPECT_EQ(model.At("second"), "REF TWICE 17");
}

TEST(ProcedureDivision, NamesThatMeanNothingOrSeveralParagraphsAreGaps) {
  const auto model = CobolModel::Of(kDivisionData, R"(MAIN-PARA.
    PERFORM MISSING-PARA
    PERFORM TWICE
    PERFORM TWICE OF THREE.
ONE SECTION.
TWICE.
    EXIT.
TWO SECTION.
TWICE.
    EXIT.
)");
  EXPECT_THAT(model.Diagnostics(), ElementsAre("gap 9:20 Paragraph MISSING-PARA is not in this program.",
                                               "gap 10:20 Paragraph TWICE is ambiguous; qualify it.",
                                               "gap 11:20 Paragraph TWICE OF THREE is not in this program."));
  EXPECT_NE(model.Node(model.Find(Entity::Perform, "PERFORM")).flags & workbench::codemodel::kGap, 0);
}

TEST(ProcedureDivision, TheCommentAboveAHeaderIsItsDescription) {
  const CobolModel model(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. PROBE.
       PROCEDURE DIVISION.
      * Not right above.

      ******************************************************************
      *  Reads the master file.                                        *
      *    - until its end                                             *
      ******************************************************************
       MAIN-PARA.
           EXIT.
      * The last one.
       LAST-PARA.
           EXIT.
       BARE-PARA.
           EXIT.
)");
  const auto description = [&](std::string_view name) {
    return model.Text(model.Node(model.Find(Entity::Par, name)).detail);
  };
  EXPECT_EQ(description("MAIN-PARA"), "Reads the master file.\nuntil its end");
  EXPECT_EQ(description("LAST-PARA"), "The last one.");
  EXPECT_EQ(description("BARE-PARA"), "");
}

struct WayOut {
  std::string_view name, procedures;
  bool fallsThrough;
};

class EndOfText : public testing::TestWithParam<WayOut> {};

TEST_P(EndOfText, IsAnExitWhereItCanBeReached) {
  const auto model = CobolModel::Of(kDivisionData, GetParam().procedures);
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  EXPECT_EQ(model.Outline().ends_with("\nPORT GOBACK implicit\n"), GetParam().fallsThrough) << model.Outline();
}

constexpr WayOut kWaysOut[] = {
    {"LastStatementIsNoExit", "MAIN-PARA.\n    MOVE A TO B.\n", true},
    {"LastStatementIsAnExit", "MAIN-PARA.\n    MOVE A TO B\n    GOBACK.\n", false},
    {"OnlyPerformed", "MAIN-PARA.\n    PERFORM LAST-PARA\n    GOBACK.\nLAST-PARA.\n    EXIT.\n", false},
    {"ReachedByGoTo", "MAIN-PARA.\n    IF A = 1 GO TO LAST-PARA.\n    GOBACK.\nLAST-PARA.\n    EXIT.\n", true},
    {"FallenInto", "MAIN-PARA.\n    MOVE A TO B.\nLAST-PARA.\n    EXIT.\n", true},
    {"GoesBack", "MAIN-PARA.\n    MOVE A TO B.\nLAST-PARA.\n    GO TO MAIN-PARA.\n", false},
    {"GoesBackPerhaps", "MAIN-PARA.\n    GO TO MAIN-PARA DEPENDING ON A.\n", true},
    {"BothBranchesLeave", "MAIN-PARA.\n    IF A = 1 GOBACK ELSE STOP RUN END-IF.\n", false},
    {"OneBranchLeaves", "MAIN-PARA.\n    IF A = 1 GOBACK END-IF.\n", true},
    {"AllWhensLeave", "MAIN-PARA.\n    EVALUATE A WHEN 1 GOBACK WHEN OTHER GOBACK END-EVALUATE.\n", false},
    {"NotAllWhensLeave", "MAIN-PARA.\n    EVALUATE A WHEN 1 GOBACK END-EVALUATE.\n", true},
    {"Nothing", "", true},
};

INSTANTIATE_TEST_SUITE_P(Of, EndOfText, testing::ValuesIn(kWaysOut),
                         [](const auto& each) { return std::string(each.param.name); });

// The verbs of the statements that are marked as the last ones of their sentences, with their rows.
std::vector<std::string> SentenceEnds(const CobolModel& model) {
  std::vector<std::string> ends;
  for (const auto& node : model.Data().nodes) {
    if ((node.flags & workbench::codemodel::kEndsSentence) == 0) continue;
    ends.push_back(std::to_string(node.firstRow) + " " + model.Text(node.name));
  }
  return ends;
}

TEST(ProcedureDivision, TheLastStatementOfASentenceIsMarked) {
  const auto model = CobolModel::Of(kDivisionData, R"(MAIN-PARA.
    MOVE A TO B
    MOVE B TO A.
    IF A = 1
        MOVE 1 TO B
    END-IF
    MOVE 3 TO A.
    IF A = 1
        IF B = 1
            MOVE 2 TO B.
LAST-PARA.
    MOVE 4 TO A. MOVE 5 TO A.
)");
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  EXPECT_THAT(SentenceEnds(model), ElementsAre("10 MOVE", "14 MOVE", "15 IF", "19 MOVE", "19 MOVE"));
}

TEST(ProcedureDivision, APhraseCanBeTheLastOfItsSentence) {
  const auto model =
      CobolModel::Of(kDivisionData, "MAIN-PARA.\n    ADD 1 TO A\n        SIZE ERROR MOVE 1 TO B.\n    GOBACK.\n");
  EXPECT_THAT(SentenceEnds(model), ElementsAre("10 If size error", "11 GOBACK"));
}

TEST(ProcedureDivision, NothingIsMarkedWhereTheFullStopIsMissing) {
  const auto model = CobolModel::Of(kDivisionData, "MAIN-PARA.\n    MOVE 1 TO A\nLAST-PARA.\n    GOBACK.\n");
  EXPECT_THAT(SentenceEnds(model), ElementsAre("11 GOBACK"));
}

}  // namespace
}  // namespace qmrules::test
