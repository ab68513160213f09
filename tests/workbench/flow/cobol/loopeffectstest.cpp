// What loops and searches do with their counters, what conditions read, and what is there when the program starts.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/flow/cobol/effectsprogram.h"

namespace qmrules::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kCounters = R"(01  I PIC 9(2).
01  J PIC 9(2).
01  N PIC 9(2).
01  T.
    05  E PIC X OCCURS 4 INDEXED BY IX IY.
01  K.
    05  L PIC 9 OCCURS 4 INDEXED BY KX.
)";

EffectsProgram Loops(std::string_view statements) {
  return EffectsProgram::Of(kCounters, "MAIN-PARA.\n" + std::string(statements));
}

TEST(LoopEffects, ACounterBeginsAndGoesOnAtPointsOfItsOwn) {
  const auto program = Loops(R"(    $at^PERFORM VARYING I FROM 1 BY 1 UNTIL I > N
      AFTER J FROM I BY N + 1 UNTIL J > 9
        DISPLAY I
    END-PERFORM.
)");
  EXPECT_THAT(program.At("at"), IsEmpty());
  EXPECT_THAT(program.AtPoint("14 begin I"), ElementsAre("define I I 0+2 constant move"));
  EXPECT_THAT(program.AtPoint("14 step I"), ElementsAre("use I I 0+2", "define I I 0+2 computation"));
  EXPECT_THAT(program.AtPoint("15 begin J"), ElementsAre("use I I 0+2", "define J J 0+2 move"));
  EXPECT_THAT(program.AtPoint("15 step J"), ElementsAre("use N N 0+2", "use J J 0+2", "define J J 0+2 computation"));
  EXPECT_THAT(program.AtPoint("14 I > N"), ElementsAre("use I I 0+2 aside", "use N N 0+2 aside"));
  EXPECT_THAT(program.PointsOn("J"), ElementsAre("15 begin J", "15 J > 9", "15 step J"));
}

TEST(LoopEffects, TimesAreReadOnce) {
  const auto program = Loops("    $at^PERFORM N TIMES DISPLAY I END-PERFORM.\n");
  EXPECT_THAT(program.At("at"), ElementsAre("use N N 0+2 aside"));
}

TEST(LoopEffects, SearchCountsItsIndexUp) {
  const auto program = Loops(R"(    $at^SEARCH E
      AT END DISPLAY "NONE"
      WHEN E (IX) = "A" DISPLAY IX
    END-SEARCH.
)");
  EXPECT_THAT(program.At("at"), ElementsAre("use IX IX 0+4", "may define IX IX 0+4 computation"));
  EXPECT_THAT(program.PointsOn("IX"), Contains("14 SEARCH"));
}

TEST(LoopEffects, SearchVaryingSomethingElseCountsBoth) {
  const auto program = Loops(R"(    $other^SEARCH E VARYING KX WHEN E (IX) = "A" DISPLAY IX.
    $own^SEARCH E VARYING IY WHEN E (IY) = "A" DISPLAY IY.
)");
  EXPECT_THAT(program.At("other"), ElementsAre("use KX KX 0+4", "may define KX KX 0+4 computation",
                                               "use SEARCH IX 0+4 #1", "may define SEARCH IX 0+4 computation #1"));
  EXPECT_THAT(program.At("own"), ElementsAre("use IY IY 0+4", "may define IY IY 0+4 computation"));
  EXPECT_THAT(program.PointsOn("IX"), Contains("14 SEARCH"));
}

TEST(ConditionEffects, ReadEveryOperand) {
  const auto program = Loops("    IF I + 1 > N AND E (J) = \"A\" DISPLAY I.\n");
  EXPECT_THAT(program.AtPoint("14 I + 1 > N AND E(J) = \"A\""),
              ElementsAre("use I I 0+2 aside", "use N N 0+2 aside", "use E T 0+1 4x1 aside", "use J J 0+2 aside"));
}

TEST(EntryEffects, ItemsWithAValueStandApart) {
  const auto program = EffectsProgram::Of(R"(01  G.
    05  A PIC X(3) VALUE "ABC".
    05  B PIC X(2).
    05  C REDEFINES B PIC 9(2) VALUE 5.
    05  T OCCURS 3.
        10  T1 PIC X VALUE "*".
        10  T2 PIC 9.
    05  D PIC X.
01  H VALUE SPACES.
    05  H1 PIC X(3).
)",
                                          "MAIN-PARA.\n    GOBACK.\n");
  EXPECT_THAT(program.AtEntry("G"), ElementsAre("define A G 0+3 initial value", "define T G 5+6 initial value",
                                                "define G G 3+2 initial value", "define G G 11+1 initial value"));
  EXPECT_THAT(program.AtEntry("H"), ElementsAre("define H H 0+3 initial value"));
  EXPECT_THAT(program.AtPoint("entry"), Contains("define H H 0+3 initial value"));
}

TEST(EntryEffects, IndexesHaveAreasOfTheirOwn) {
  EXPECT_THAT(Loops("    GOBACK.\n").AtEntry("IX"), ElementsAre("define IX IX 0+4 initial value"));
}

TEST(UnitPoints, TheEndOfTheTextDoesNothing) {
  const auto program = Loops("    DISPLAY I.\n");
  const auto points = program.Flow().Flow().Points();
  int ends = 0;
  for (workbench::flow::PointId point = 0; point < points.size(); ++point) {
    if (points[point].kind != workbench::flow::PointKind::Leave) continue;
    ++ends;
    const auto effects = program.Unit().EffectsAt(point);
    EXPECT_THAT(effects.all, IsEmpty());
    EXPECT_THAT(effects.gaps, IsEmpty());
  }
  EXPECT_EQ(ends, 1);
}

TEST(UnitPoints, OfAnOperandAreThoseOfItsStatement) {
  const auto program = Loops(R"(    ADD $n[[N]] TO I ON SIZE ERROR DISPLAY J.
    IF E ($j[[J]]) = "A" DISPLAY J.
)");
  const auto pointsOf = [&](std::string_view mark) {
    std::vector<std::string> points;
    for (const auto point : program.Unit().PointsOf(program.Flow().NodeAt(mark))) {
      points.push_back(program.Flow().Describe(point));
    }
    return points;
  };
  EXPECT_THAT(pointsOf("n"), ElementsAre("14 ADD", "14 completed"));
  EXPECT_THAT(pointsOf("j"), ElementsAre("15 E(J) = \"A\""));
}

}  // namespace
}  // namespace qmrules::test
