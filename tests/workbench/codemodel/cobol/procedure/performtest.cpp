// PERFORM: out of line and inline.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/cobolmodel.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kPerformData = R"(01  A PIC 9(4).
01  B PIC 9(4).
01  T.
    05  E PIC 9 OCCURS 5 TIMES.
)";

CobolModel Performed(std::string_view procedures) {
  auto model = CobolModel::Of(kPerformData, procedures);
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  return model;
}

TEST(Perform, OutOfLineLeadsToItsParagraphs) {
  const auto model = Performed(R"(MAIN-PARA.
    PERFORM $from[[WORK-PARA]] THRU $to[[WORK-EXIT]].
    GOBACK.
WORK-PARA.
    EXIT.
WORK-EXIT.
    EXIT.
)");
  EXPECT_EQ(model.At("from"), "REF WORK-PARA 13");
  EXPECT_EQ(model.At("to"), "REF WORK-EXIT Thru 15");
  const auto node = model.Find(workbench::codemodel::Entity::Perform, "PERFORM");
  EXPECT_EQ(model.Node(model.Node(node).declaration).firstRow, 13U);
}

TEST(Perform, OutOfLineTimes) {
  const auto model = Performed("MAIN-PARA.\n    PERFORM MAIN-PARA $n[[A]] TIMES\n    PERFORM MAIN-PARA 3 TIMES.\n");
  EXPECT_EQ(model.At("n"), "VAR A OUT Times 5");
  EXPECT_EQ(model.Outline(), "PORT ENTRY\nPAR MAIN-PARA\n  PERFORM PERFORM\n  PERFORM PERFORM\nPORT GOBACK implicit\n");
}

TEST(Perform, OutOfLineUntil) {
  EXPECT_EQ(
      Performed("MAIN-PARA.\n    PERFORM MAIN-PARA WITH TEST AFTER UNTIL A > 5 OR B = 1\n    GOBACK.\n").Outline(),
      "PORT ENTRY\nPAR MAIN-PARA\n  PERFORM PERFORM\n    COND A > 5 OR B = 1\n  PORT GOBACK\n");
}

TEST(Perform, VaryingCountsAndAsksForEachCounter) {
  const auto model = Performed(R"(MAIN-PARA.
    PERFORM MAIN-PARA THROUGH MAIN-PARA TEST BEFORE
        VARYING $a[[A]] FROM $from[[1]] BY $by[[B]] UNTIL A > 5
        AFTER $e[[E ($i[[A]])]] FROM B BY -1 UNTIL E (A) = 0.
    GOBACK.
)");
  EXPECT_EQ(model.At("a"), "VAR A INOUT Varying 5");
  EXPECT_EQ(model.At("from"), "CONST 1 From");
  EXPECT_EQ(model.At("by"), "VAR B OUT By 6");
  EXPECT_EQ(model.At("e"), "VAR E INOUT Varying 8");
  EXPECT_EQ(model.At("i"), "VAR A OUT Subscript 5");
  EXPECT_THAT(model.Conditions(), ElementsAre("A > 5", "E(A) = 0"));
}

TEST(Perform, InlineIsABlockWithItsBody) {
  EXPECT_EQ(Performed(R"(MAIN-PARA.
    PERFORM VARYING A FROM 1 BY 1 UNTIL A > 5
        CONTINUE
        IF A = B
            EXIT PERFORM
    END-PERFORM
    GOBACK.
)")
                .Tree(),
            R"(PORT ENTRY
PAR MAIN-PARA
  BLOCK PERFORM
    VAR A INOUT Varying
    CONST 1 From
    CONST 1 By
    COND A > 5
      VAR A OUT Source
      CONST 5 Source
    BLOCK Body
      STAT CONTINUE
      IF If
        COND A = B
          VAR A OUT Source
          VAR B OUT Source
        BLOCK Then
          STAT EXIT PERFORM
  PORT GOBACK
)");
}

TEST(Perform, InlineHasTimesUntilAndNothing) {
  EXPECT_EQ(Performed(R"(MAIN-PARA.
    PERFORM A TIMES CONTINUE END-PERFORM
    PERFORM 5 TIMES CONTINUE END-PERFORM
    PERFORM E (1) TIMES CONTINUE END-PERFORM
    PERFORM E OF T (1) TIMES CONTINUE END-PERFORM
    PERFORM WITH TEST AFTER UNTIL A = 1 CONTINUE END-PERFORM
    PERFORM UNTIL EXIT CONTINUE END-PERFORM
    PERFORM CONTINUE END-PERFORM
    GOBACK.
)")
                .Tree(),
            R"(PORT ENTRY
PAR MAIN-PARA
  BLOCK PERFORM
    VAR A OUT Times
    BLOCK Body
      STAT CONTINUE
  BLOCK PERFORM
    CONST 5 Times
    BLOCK Body
      STAT CONTINUE
  BLOCK PERFORM
    VAR E OUT Times
      CONST 1 Subscript
    BLOCK Body
      STAT CONTINUE
  BLOCK PERFORM
    VAR E OUT Times
      REF T Qualifier
      CONST 1 Subscript
    BLOCK Body
      STAT CONTINUE
  BLOCK PERFORM
    COND A = 1
      VAR A OUT Source
      CONST 1 Source
    BLOCK Body
      STAT CONTINUE
  BLOCK PERFORM
    COND EXIT
    BLOCK Body
      STAT CONTINUE
  BLOCK PERFORM
    BLOCK Body
      STAT CONTINUE
  PORT GOBACK
)");
}

TEST(Perform, OutOfLineLeavesTheEndToTheOneAroundIt) {
  EXPECT_EQ(Performed("MAIN-PARA.\n    PERFORM 5 TIMES PERFORM MAIN-PARA END-PERFORM\n    GOBACK.\n").Outline(),
            "PORT ENTRY\nPAR MAIN-PARA\n  BLOCK PERFORM\n    BLOCK Body\n      PERFORM PERFORM\n  PORT GOBACK\n");
}

TEST(Perform, InlineWithoutItsEndIsAWarning) {
  const auto model =
      CobolModel::Of(kPerformData, "MAIN-PARA.\n    PERFORM UNTIL A = 1\n        CONTINUE.\nLAST-PARA.\n    GOBACK.\n");
  EXPECT_THAT(model.Diagnostics(), ElementsAre("warning 12:24 END-PERFORM is missing before this."));
  EXPECT_THAT(model.Statements(), ElementsAre("11 PERFORM", "12 CONTINUE", "14 GOBACK"));
}

TEST(Perform, TellsWhetherItAsksBehindItsBody) {
  const auto model = Performed(R"(MAIN-PARA.
    $before^PERFORM MAIN-PARA WITH TEST BEFORE UNTIL A > 5
    $after^PERFORM MAIN-PARA TEST AFTER
        VARYING A FROM 1 BY 1 UNTIL A > 5
    $inline^PERFORM WITH TEST AFTER UNTIL A > 5 CONTINUE END-PERFORM
    $plain^PERFORM MAIN-PARA
    GOBACK.
)");
  const auto asksBehind = [&](std::string_view mark) {
    return (model.Node(model.NodeAt(mark)).flags & workbench::codemodel::kTestAfter) != 0;
  };
  EXPECT_FALSE(asksBehind("before"));
  EXPECT_TRUE(asksBehind("after"));
  EXPECT_TRUE(asksBehind("inline"));
  EXPECT_FALSE(asksBehind("plain"));
}

}  // namespace
}  // namespace qmrules::test
