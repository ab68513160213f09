// What EXEC SQL, EXEC CICS, XML and JSON do with storage.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/flow/cobol/effectsprogram.h"

namespace qmrules::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

constexpr std::string_view kHost = R"(01  A PIC X(4).
01  B PIC X(6).
01  IND PIC S9(4) COMP.
01  N PIC S9(8) COMP.
01  PGM PIC X(8).
)";

EffectsProgram Embedded(std::string_view statements) {
  return EffectsProgram::Of(kHost, "MAIN-PARA.\n" + std::string(statements));
}

TEST(SqlEffects, ARowThatIsNotFoundLeavesTheVariables) {
  const auto program = Embedded(R"(    $at^EXEC SQL SELECT C INTO :A:IND FROM T
      WHERE K = :B END-EXEC.
    IF SQLCODE = 0 DISPLAY A.
)");
  EXPECT_THAT(program.At("at"),
              ElementsAre("may define A A 0+4 input", "may define IND IND 0+2 input", "use B B 0+6 aside",
                          "may define EXEC SQL SELECT SQLCA 0+136 input", "define EXEC SQL SELECT SQLCA 12+4 input"));
  EXPECT_THAT(program.PointsOn("SQLCA"), Contains("12 EXEC SQL SELECT"));
}

TEST(SqlEffects, DeclarationsDoNothing) {
  const auto program = Embedded(R"(    $at^EXEC SQL DECLARE C1 CURSOR FOR
      SELECT C FROM T WHERE K = :B END-EXEC.
    $open^EXEC SQL OPEN C1 END-EXEC.
)");
  EXPECT_THAT(program.At("at"), IsEmpty());
  EXPECT_THAT(program.At("open"), ElementsAre("use B B 0+6 aside"));
}

TEST(SqlEffects, ProceduresMayChangeTheirArguments) {
  const auto program = Embedded("    $at^EXEC SQL CALL P (:A, :B) END-EXEC.\n");
  EXPECT_THAT(program.At("at"),
              ElementsAre("use A A 0+4", "may define A A 0+4 call", "use B B 0+6", "may define B B 0+6 call"));
}

TEST(SqlEffects, ACommunicationAreaCanBeTheProgramsOwn) {
  const auto program = EffectsProgram::Of("01  SQLCODE PIC S9(9) COMP-5.\n01  A PIC X.\n",
                                          "MAIN-PARA.\n    $at^EXEC SQL FETCH C1 INTO :A END-EXEC.\n");
  EXPECT_THAT(program.At("at"), ElementsAre("may define A A 0+1 input", "define EXEC SQL FETCH SQLCODE 0+4 input"));
}

TEST(CicsEffects, OptionsBringDataInOrOut) {
  const auto program = Embedded(R"(    $at^EXEC CICS READ FILE('F') INTO(A) RIDFLD(B)
      LENGTH(IND) RESP(N) END-EXEC.
)");
  EXPECT_THAT(program.At("at"), ElementsAre("may define A A 0+4 input", "use B B 0+6 aside", "use IND IND 0+2 aside",
                                            "may define IND IND 0+2 input", "define N N 0+4 input"));
}

TEST(CicsEffects, CommandsSetTheirFields) {
  const auto program = Embedded(R"(    $at^EXEC CICS SYNCPOINT END-EXEC.
    IF EIBRESP = 0 DISPLAY A.
    IF EIBAID = "X" DISPLAY B.
)");
  EXPECT_THAT(program.At("at"), ElementsAre("may define EXEC CICS SYNCPOINT DFHEIBLK 0+85 input",
                                            "define EXEC CICS SYNCPOINT DFHEIBLK 76+4 input"));
}

TEST(CicsEffects, LinkHandsOverTheCommunicationArea) {
  const auto program = Embedded(R"(    $link^EXEC CICS LINK PROGRAM(PGM) COMMAREA(A)
      LENGTH(IND) END-EXEC.
    EXEC CICS XCTL PROGRAM('NEXT') COMMAREA(B) END-EXEC.
)");
  EXPECT_THAT(program.At("link"),
              ElementsAre("use PGM PGM 0+8 aside", "use A A 0+4", "may define A A 0+4 call", "use IND IND 0+2 aside"));
  const auto calls = program.Unit().Calls();
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_TRUE(calls[0].commarea);
  EXPECT_TRUE(calls[0].returns);
  EXPECT_FALSE(calls[1].returns);
  ASSERT_EQ(calls[0].arguments.size(), 1U);
  EXPECT_TRUE(calls[0].arguments[0].canChange);
  EXPECT_EQ(calls[0].arguments[0].place.area, program.ItemNamed("A"));
}

TEST(CicsEffects, TheCommunicationAreaIsTheParameter) {
  const EffectsProgram program(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. CALLED.
       DATA DIVISION.
       LINKAGE SECTION.
       01  DFHCOMMAREA.
           05  C1 PIC X(4).
           05  C2 PIC X(6).
       PROCEDURE DIVISION.
       MAIN-PARA.
           MOVE C1 TO C2.
           EXEC CICS RETURN END-EXEC.
)");
  ASSERT_EQ(program.Unit().Parameters().size(), 1U);
  EXPECT_EQ(program.Unit().Parameters()[0].place.first.end, 10U);
  EXPECT_THAT(program.AtEntry("DFHCOMMAREA"), ElementsAre("define DFHCOMMAREA DFHCOMMAREA 0+10 parameter"));
}

TEST(MarkupEffects, DocumentsAreComputedFromTheirItems) {
  const auto program = Embedded(R"(    $json^JSON GENERATE B FROM A COUNT IN N.
    $parse^JSON PARSE B INTO A.
)");
  EXPECT_THAT(program.At("json"),
              ElementsAre("may define B B 0+6 computation", "use A A 0+4", "may define N N 0+4 computation"));
  EXPECT_THAT(program.At("parse"), ElementsAre("use B B 0+6", "may define A A 0+4 computation"));
}

TEST(UnknownStatements, MayReadAndChangeWhatTheyName) {
  const auto program = Embedded("    $at^MOVE A B.\n    DISPLAY A.\n");
  EXPECT_THAT(program.GapsAt("at"), ElementsAre("unknown statement MOVE"));
  EXPECT_THAT(program.At("at"), Contains("may define A A 0+4 unknown"));
}

}  // namespace
}  // namespace qmrules::test
