// What calls of other programs, entries and exits do with storage, and what is handed over.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/flow/cobol/effectsprogram.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using workbench::flow::Argument;
using workbench::flow::ProgramCall;

EffectsProgram Caller(std::string_view statements) {
  return EffectsProgram(std::string(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. CALLER.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A PIC X(4) VALUE "AAAA".
       01  B PIC X(6).
       01  PGM PIC X(8).
       01  SHARED PIC X(3) EXTERNAL.
       LINKAGE SECTION.
       01  P1 PIC X(2).
       01  P2 PIC X(5).
       01  P2-HALF REDEFINES P2 PIC X(3).
       01  LOST PIC X.
       PROCEDURE DIVISION USING P1 P2.
       MAIN-PARA.
)") + std::string(statements));
}

std::string ShownArgument(const EffectsProgram& program, const Argument& argument) {
  if (argument.operand == 0) return "omitted";
  const auto& model = program.Flow().Model();
  std::string text(model.Text(model.Nodes()[argument.operand].name));
  if (argument.place.area != 0) text += " " + std::to_string(argument.place.first.end - argument.place.first.begin);
  return text + (argument.canChange ? " changes" : "");
}

std::vector<std::string> Shown(const EffectsProgram& program, const std::vector<Argument>& arguments) {
  std::vector<std::string> shown;
  for (const Argument& argument : arguments) shown.push_back(ShownArgument(program, argument));
  return shown;
}

TEST(CallEffects, WhatIsHandedOverByReferenceMayBeChanged) {
  const auto program = Caller(R"(           $at^CALL "X" USING A BY CONTENT B P1.
)");
  EXPECT_THAT(program.At("at"), ElementsAre("use A A 0+4", "may define A A 0+4 call", "use B B 0+6", "use P1 P1 0+2",
                                            "use CALL SHARED 0+3 aside", "may define CALL SHARED 0+3 call"));
}

TEST(CallEffects, WhatIsReturnedIsDefined) {
  const auto program = Caller(R"(           $at^CALL PGM RETURNING A.
           $asked^CALL PGM RETURNING B
             ON EXCEPTION CONTINUE
           END-CALL.
)");
  EXPECT_THAT(program.At("at"), ElementsAre("use PGM PGM 0+8 aside", "define A A 0+4 call", "use CALL SHARED 0+3 aside",
                                            "may define CALL SHARED 0+3 call"));
  EXPECT_THAT(program.AtPoint("17 completed"), ElementsAre("define B B 0+6 call"));
}

TEST(CallEffects, TheReturnCodeMayBeSet) {
  const auto program = Caller(R"(           $at^CALL "X".
           DISPLAY RETURN-CODE.
)");
  EXPECT_THAT(program.At("at"), ElementsAre("use CALL SHARED 0+3 aside", "may define CALL SHARED 0+3 call",
                                            "may define CALL RETURN-CODE 0+2 call"));
  EXPECT_THAT(program.PointsOn("RETURN-CODE"), ElementsAre("16 CALL", "17 DISPLAY"));
  EXPECT_THAT(program.PointsOn("SHARED"), ElementsAre("16 CALL"));
}

TEST(CallEffects, AnAddressThatIsHandedOverIsAGap) {
  const auto program = Caller(R"(           $at^CALL "X" USING ADDRESS OF A.
)");
  EXPECT_THAT(program.GapsAt("at"), ElementsAre("address taken A"));
}

TEST(CallEffects, CallsTellTheirArguments) {
  const auto program = Caller(R"(           CALL "X" USING A B (2:3) BY CONTENT 5 P2.
           CALL PGM USING OMITTED BY REFERENCE A.
           CANCEL "X".
)");
  const std::vector<ProgramCall> calls = program.Unit().Calls();
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_THAT(Shown(program, calls[0].arguments), ElementsAre("A 4 changes", "B 3 changes", "5", "P2 5"));
  EXPECT_THAT(Shown(program, calls[1].arguments), ElementsAre("omitted", "A 4 changes"));
  const auto& nodes = program.Flow().Model().Nodes();
  EXPECT_EQ(program.Flow().Model().Text(nodes[calls[1].program].name), "PGM");
  EXPECT_TRUE(calls[0].returns);
  EXPECT_FALSE(calls[0].commarea);
}

TEST(Parameters, AreWhatTheProgramTakesInByPosition) {
  const auto program = Caller("           GOBACK.\n");
  EXPECT_THAT(Shown(program, program.Unit().Parameters()), ElementsAre("P1 2 changes", "P2 5 changes"));
  EXPECT_THAT(program.AtEntry("P2"), ElementsAre("define P2 P2 0+5 parameter"));
  EXPECT_THAT(program.AtEntry("LOST"), ElementsAre("define LOST LOST 0+1 unknown"));
  EXPECT_THAT(program.AtEntry("SHARED"), ElementsAre("define SHARED SHARED 0+3 unknown"));
  EXPECT_THAT(program.AtEntry("A"), ElementsAre("define A A 0+4 initial value"));
}

TEST(Parameters, OfAnotherEntryComeInThere) {
  const auto program = Caller(R"(           GOBACK.
           $at^ENTRY "SECOND" USING LOST.
           GOBACK.
)");
  EXPECT_THAT(program.At("at"), ElementsAre("may define LOST LOST 0+1 parameter"));
  EXPECT_THAT(program.AtEntry("LOST"), ElementsAre("define LOST LOST 0+1 parameter"));
}

TEST(Exits, ReadOnlyWhatTheyName) {
  const auto program = Caller(R"(           MOVE "X" TO P1.
           $at^GOBACK.
           $code^STOP RUN A.
)");
  EXPECT_THAT(program.At("at"), IsEmpty());
  EXPECT_THAT(program.At("code"), ElementsAre("use A A 0+4 aside"));
}

TEST(NestedPrograms, CanChangeWhatIsGlobal) {
  constexpr std::string_view kText = R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. OUTER.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  G PIC X(4) GLOBAL.
       01  OWN PIC X(4).
       PROCEDURE DIVISION.
       MAIN-PARA.
           $call^CALL "INNER".
           GOBACK.
       IDENTIFICATION DIVISION.
       PROGRAM-ID. INNER.
       PROCEDURE DIVISION.
       INNER-PARA.
           $move^MOVE "A" TO G.
           EXIT PROGRAM.
       END PROGRAM INNER.
       END PROGRAM OUTER.
)";
  const EffectsProgram outer(kText);
  EXPECT_THAT(outer.At("call"), ElementsAre("use CALL G 0+4 aside", "may define CALL G 0+4 call"));
  EXPECT_THAT(outer.PointsOn("G"), ElementsAre("9 CALL"));
  EXPECT_THAT(outer.AtEntry("G"), ElementsAre("define G G 0+4 initial value"));
  const EffectsProgram inner(kText, 1);
  EXPECT_THAT(inner.At("move"), ElementsAre("define G G 0+4 constant move"));
  EXPECT_THAT(inner.AtEntry("G"), ElementsAre("define G G 0+4 unknown"));
  EXPECT_THAT(inner.PointsOn("G"), ElementsAre("15 MOVE"));
}

}  // namespace
}  // namespace qmrules::test
