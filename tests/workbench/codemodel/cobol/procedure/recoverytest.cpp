// What is wrong costs the statement that it is in, and no other.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/cobolmodel.h"
#include "workbench/codemodel/cobol/procedure/statementparser.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using workbench::codemodel::Entity;

constexpr std::string_view kTwoDigits = "01  A PIC 9.\n01  B PIC 9.\n";

struct RecoveryCase {
  std::string_view name, procedures;
  std::vector<std::string> diagnostics, statements;
};

class Recovery : public testing::TestWithParam<RecoveryCase> {};

TEST_P(Recovery, KeepsTheOtherStatements) {
  const auto model = CobolModel::Of(kTwoDigits, GetParam().procedures);
  EXPECT_EQ(model.Diagnostics(), GetParam().diagnostics);
  EXPECT_EQ(model.Statements(), GetParam().statements);
}

const RecoveryCase kRecoveries[] = {
    {"UnknownVerb",
     "MAIN-PARA.\n    MOVE A TO B\n    MOOVE A TO B\n    GOBACK.\n",
     {"gap 10:12 MOOVE is not declared.", "gap 10:20 TO does not fit into the MOVE statement."},
     {"9 MOVE", "11 GOBACK"}},
    {"UnknownVerbOfASentence",
     "MAIN-PARA.\n    MOVE A TO B.\n    MOOVE A TO B\n    GOBACK.\n",
     {"gap 10:12 MOOVE begins no statement."},
     {"9 MOVE", "10 MOOVE", "11 GOBACK"}},
    {"StrayCharacters",
     "MAIN-PARA.\n    MOVE A TO B ) ? = 5\n    GOBACK.\n",
     {"gap 9:24 ) does not fit into the MOVE statement."},
     {"9 MOVE", "10 GOBACK"}},
    {"EndIfTooMany",
     "MAIN-PARA.\n    IF A = 1 CONTINUE END-IF END-IF\n    GOBACK.\n",
     {"warning 9:37 END-IF belongs to no statement."},
     {"9 IF", "9 CONTINUE", "10 GOBACK"}},
    {"ElseTooMany",
     "MAIN-PARA.\n    IF A = 1 CONTINUE ELSE MOVE A TO B ELSE MOVE B TO A.\n    GOBACK.\n",
     {"gap 9:47 ELSE belongs to no statement."},
     {"9 IF", "9 CONTINUE", "9 MOVE", "9 MOVE", "10 GOBACK"}},
    {"WhenWithoutEvaluate",
     "MAIN-PARA.\n    WHEN 1\n        CONTINUE\n    GOBACK.\n",
     {"gap 9:12 WHEN belongs to no statement."},
     {"10 CONTINUE", "11 GOBACK"}},
    {"PhraseWithoutStatement",
     "MAIN-PARA.\n    CONTINUE\n    ON SIZE ERROR CONTINUE\n    GOBACK.\n",
     {"gap 10:12 ON SIZE ERROR belongs to no statement."},
     {"9 CONTINUE", "10 CONTINUE", "11 GOBACK"}},
    {"FullStopMissingBeforeAParagraph",
     "MAIN-PARA.\n    IF A = 1\n        MOVE A TO B\nNEXT-PARA.\n    GOBACK.\n",
     {"warning 11:8 A full stop is missing before this."},
     {"9 IF", "10 MOVE", "12 GOBACK"}},
    {"FullStopMissingBeforeASectionWithANumber",
     "MAIN-PARA.\n    ADD A 1\n        TO B\n12  SECTION 12.\n    GOBACK.\n",
     {"warning 11:8 A full stop is missing before this."},
     {"9 ADD", "12 GOBACK"}},
    {"FullStopMissingBeforeAParagraphWithANumber",
     "MAIN-PARA.\n    ADD A TO B\n100.\n    IF A =\n5\n    GOBACK.\n",
     {"warning 10:8 A full stop is missing before this."},
     {"9 ADD", "11 IF", "13 GOBACK"}},
    {"FullStopMissingBehindAGoTo",
     "100.\n    GO TO 100\n200 SECTION.\n    GO TO\n200.\n",
     {"warning 10:8 A full stop is missing before this."},
     {"9 GO TO", "11 GO TO"}},
    {"FullStopMissingBehindAHeader",
     "MAIN-PARA\n    MOVE A TO B.\n    GOBACK.\n",
     {"warning 9:12 A full stop is missing before this."},
     {"9 MOVE", "10 GOBACK"}},
    {"EndPerformMissingInABranch",
     "MAIN-PARA.\n    IF A = 1\n        PERFORM UNTIL A = 2\n            MOVE A TO B\n    END-IF\n    GOBACK.\n",
     {"warning 12:12 END-PERFORM is missing before this."},
     {"9 IF", "10 PERFORM", "11 MOVE", "13 GOBACK"}},
    {"WhenGarbled",
     "MAIN-PARA.\n    EVALUATE A\n        WHEN 1 CONTINUE\n        WEN 2 CONTINUE\n    END-EVALUATE\n    GOBACK.\n",
     {"gap 11:16 WEN begins no statement."},
     {"9 EVALUATE", "10 CONTINUE", "11 WEN", "11 CONTINUE", "13 GOBACK"}},
};

INSTANTIATE_TEST_SUITE_P(From, Recovery, testing::ValuesIn(kRecoveries),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(RecoveryOfNames, UnknownAndAmbiguousOnesAreGapsOfTheirStatement) {
  const auto model = CobolModel::Of("01  G1.\n    05  A PIC 9.\n    05  C PIC 9.\n01  G2.\n    05  A PIC 9.\n",
                                    "MAIN-PARA.\n    MOVE A TO C\n    MOVE X OF G1 TO C\n    MOVE C TO C.\n");
  EXPECT_THAT(model.Diagnostics(),
              ElementsAre("gap 12:17 A is ambiguous; qualify it.", "gap 13:17 X OF G1 is not declared."));
  std::vector<bool> gaps;
  for (const auto& node : model.Data().nodes) {
    if (node.verb != 0 && node.entity == Entity::Stat) gaps.push_back((node.flags & workbench::codemodel::kGap) != 0);
  }
  EXPECT_THAT(gaps, ElementsAre(true, true, false));
}

TEST(RecoveryOfNesting, WhatIsNestedTooDeeplyStandsSideBySide) {
  constexpr int kDepth = 10'000;
  std::string procedures = "MAIN-PARA.\n";
  for (int depth = 0; depth < kDepth; ++depth) procedures += "    IF A = 1\n    MOVE A TO B\n";
  for (int depth = 0; depth < kDepth; ++depth) procedures += "    ELSE MOVE B TO A END-IF\n";
  const auto model = CobolModel::Of(kTwoDigits, procedures + "    CONTINUE.\n    GOBACK.\n");
  EXPECT_THAT(model.Diagnostics(),
              ElementsAre("gap 1010:12 Statements are nested too deeply here; they stand side by side."));
  EXPECT_EQ(model.Statements().size(), 3U * kDepth + 2);
}

TEST(RecoveryOfNesting, ParenthesesAreTakenHoweverDeepTheyAre) {
  const std::string open(10'000, '('), close(10'000, ')');
  const auto wrap = [](const std::string& text) {
    std::string wrapped;
    for (std::size_t at = 0; at < text.size(); at += 50) wrapped += "    " + text.substr(at, 50) + "\n";
    return wrapped;
  };
  const auto model =
      CobolModel::Of(kTwoDigits, "MAIN-PARA.\n    IF\n" + wrap(open) + "    A = 1\n" + wrap(close) +
                                     "    COMPUTE A =\n" + wrap(open) + "    B\n" + wrap(close) + "    .\n");
  EXPECT_THAT(model.Diagnostics(), testing::IsEmpty());
  EXPECT_EQ(model.Conditions().at(0), open + "A = 1" + close);
}

TEST(RecoveryOfNesting, SubscriptsWithinSubscriptsAreBounded) {
  std::string subscripts;
  for (int depth = 0; depth < 10'000; ++depth) subscripts += "    A (\n";
  const auto model = CobolModel::Of(kTwoDigits, "MAIN-PARA.\n    MOVE\n" + subscripts + "    TO B.\n    GOBACK.\n");
  EXPECT_EQ(model.Diagnostics().at(0), "gap 110:14 Parentheses are nested too deeply here.");
  EXPECT_EQ(model.Statements().back(), "10011 GOBACK");
}

}  // namespace
}  // namespace qmrules::test
