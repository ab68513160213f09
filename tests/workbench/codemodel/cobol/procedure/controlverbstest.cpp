// IF, GO TO, ALTER, CONTINUE, NEXT SENTENCE, EXIT, STOP, GOBACK.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/cobolmodel.h"

namespace qmrules::test {
namespace {

using testing::IsEmpty;

constexpr std::string_view kTwoNumbers = "01  A PIC 9(4).\n01  B PIC 9(4).\n";

CobolModel Controlled(std::string_view procedures) {
  auto model = CobolModel::Of(kTwoNumbers, procedures);
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  return model;
}

TEST(IfStatement, HasItsConditionAndItsBranches) {
  EXPECT_EQ(Controlled(R"(MAIN-PARA.
    IF A = 1 THEN
        CONTINUE
    ELSE
        GO TO MAIN-PARA
    END-IF
    GOBACK.
)")
                .Tree(),
            R"(PORT ENTRY
PAR MAIN-PARA
  IF If
    COND A = 1
      VAR A OUT Source
      CONST 1 Source
    BLOCK Then
      STAT CONTINUE
    BLOCK Else
      GOTO GO TO
        REF MAIN-PARA
  PORT GOBACK
)");
}

TEST(IfStatement, AnElseBelongsToTheInnermostIf) {
  EXPECT_EQ(Controlled(R"(MAIN-PARA.
    IF A = 1
        IF B = 1
            CONTINUE
        ELSE
            NEXT SENTENCE
    ELSE
        GOBACK.
    STOP RUN.
)")
                .Outline(),
            R"(PORT ENTRY
PAR MAIN-PARA
  IF If
    COND A = 1
    BLOCK Then
      IF If
        COND B = 1
        BLOCK Then
          STAT CONTINUE
        BLOCK Else
          STAT NEXT SENTENCE
    BLOCK Else
      PORT GOBACK
  PORT STOP RUN
)");
}

TEST(IfStatement, APhraseOfAStatementInABranchIsNotOfTheIf) {
  EXPECT_EQ(Controlled(R"(MAIN-PARA.
    IF A = 1
        ADD 1 TO B ON SIZE ERROR MOVE 0 TO B
            NOT ON SIZE ERROR CONTINUE
        END-ADD
    ELSE
        GOBACK.
    GOBACK.
)")
                .Outline(),
            R"(PORT ENTRY
PAR MAIN-PARA
  IF If
    COND A = 1
    BLOCK Then
      STAT ADD
      IF If size error
        COND ON SIZE ERROR
        BLOCK Then
          STAT MOVE
        BLOCK Else
          STAT CONTINUE
    BLOCK Else
      PORT GOBACK
  PORT GOBACK
)");
}

TEST(GoTo, LeadsToAParagraph) {
  const auto model = Controlled("MAIN-PARA.\n    GO TO $to[[Next-Para]].\nNEXT-PARA.\n    GO MAIN-PARA.\n");
  EXPECT_EQ(model.At("to"), "REF NEXT-PARA 10");
  const auto node = model.Find(workbench::codemodel::Entity::Goto, "GO TO");
  EXPECT_EQ(model.Node(model.Node(node).declaration).firstRow, 10U);
}

TEST(GoTo, DependingOnHasAllItsParagraphsAndReadsTheVariable) {
  const auto model = Controlled(
      "MAIN-PARA.\n    GO TO $one[[MAIN-PARA]] $two[[NEXT-PARA]] DEPENDING ON $on[[A]].\nNEXT-PARA.\n    GOBACK.\n");
  EXPECT_EQ(model.At("one"), "REF MAIN-PARA 8");
  EXPECT_EQ(model.At("two"), "REF NEXT-PARA 10");
  EXPECT_EQ(model.At("on"), "VAR A OUT DependingOn 5");
}

TEST(GoTo, WithoutANameIsGivenOneByAlter) {
  const auto model = Controlled(R"(MAIN-PARA.
    ALTER $what[[JUMP-PARA]] TO PROCEED TO $where[[MAIN-PARA]]
        JUMP-PARA TO JUMP-PARA.
JUMP-PARA.
    GO TO.
)");
  EXPECT_EQ(model.At("what"), "REF JUMP-PARA Target 11");
  EXPECT_EQ(model.At("where"), "REF MAIN-PARA Source 8");
}

TEST(ExitStatement, HasItsForms) {
  EXPECT_EQ(Controlled(R"(MAIN-PARA SECTION.
FIRST-PARA.
    PERFORM UNTIL A = 1
        IF B = 1 EXIT PERFORM END-IF
        EXIT PERFORM CYCLE
    END-PERFORM
    EXIT PARAGRAPH
    EXIT SECTION.
SECOND-PARA.
    EXIT.
THIRD-PARA.
    EXIT PROGRAM.
)")
                .Outline(),
            R"(PORT ENTRY
SECTION MAIN-PARA
  PAR FIRST-PARA
    BLOCK PERFORM
      COND A = 1
      BLOCK Body
        IF If
          COND B = 1
          BLOCK Then
            STAT EXIT PERFORM
        STAT EXIT PERFORM CYCLE
    STAT EXIT PARAGRAPH
    STAT EXIT SECTION
  PAR SECOND-PARA
    STAT EXIT
  PAR THIRD-PARA
    PORT EXIT PROGRAM
)");
}

TEST(StopStatement, OfARunIsAnExitAndWithALiteralIsNone) {
  const auto model = Controlled("MAIN-PARA.\n    STOP 'WAIT'.\n    STOP RUN RETURNING $code[[A]].\n");
  EXPECT_EQ(model.At("code"), "VAR A OUT Returning 5");
  EXPECT_EQ(model.Outline(), "PORT ENTRY\nPAR MAIN-PARA\n  STAT STOP\n  PORT STOP RUN\n");
}

TEST(StopStatement, CanGiveACode) {
  Controlled(
      "MAIN-PARA.\n    IF A = 1 STOP RUN 8.\n    IF A = 2 STOP RUN WITH ERROR STATUS 8.\n    GOBACK GIVING A.\n");
}

}  // namespace
}  // namespace qmrules::test
