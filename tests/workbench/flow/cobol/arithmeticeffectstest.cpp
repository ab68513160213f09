// What arithmetic does with storage.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/flow/cobol/effectsprogram.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kNumbers = R"(01  A PIC 9(2).
01  B PIC 9(3).
01  C PIC 9(4).
01  D PIC 9(5).
)";

EffectsProgram Arithmetic(std::string_view statement) {
  return EffectsProgram::Of(kNumbers, "MAIN-PARA.\n    $at^" + std::string(statement) + ".\n");
}

std::vector<std::string> ArithmeticEffectsOf(std::string_view statement) {
  return Arithmetic(statement).At("at");
}

TEST(ArithmeticEffects, AddChangesItsTarget) {
  EXPECT_THAT(ArithmeticEffectsOf("ADD A B TO C"),
              ElementsAre("use A A 0+2", "use B B 0+3", "use C C 0+4", "define C C 0+4 computation"));
  EXPECT_THAT(ArithmeticEffectsOf("SUBTRACT 1 FROM C"), ElementsAre("use C C 0+4", "define C C 0+4 computation"));
}

TEST(ArithmeticEffects, GivingLeavesTheOperandsAsTheyAre) {
  EXPECT_THAT(ArithmeticEffectsOf("ADD A TO B GIVING C"),
              ElementsAre("use A A 0+2", "use B B 0+3", "define C C 0+4 computation"));
  EXPECT_THAT(ArithmeticEffectsOf("MULTIPLY A BY B GIVING C D"),
              ElementsAre("use A A 0+2", "use B B 0+3", "define C C 0+4 computation", "define D D 0+5 computation"));
}

TEST(ArithmeticEffects, ResultsDoNotFeedEachOther) {
  EXPECT_THAT(ArithmeticEffectsOf("ADD A TO B C"),
              ElementsAre("use A A 0+2", "use A A 0+2 #1", "use B B 0+3", "define B B 0+3 computation",
                          "use C C 0+4 #1", "define C C 0+4 computation #1"));
}

TEST(ArithmeticEffects, ComputeTellsConstantsAndCopiesApart) {
  EXPECT_THAT(ArithmeticEffectsOf("COMPUTE A = 5"), ElementsAre("define A A 0+2 constant move"));
  EXPECT_THAT(ArithmeticEffectsOf("COMPUTE A = B"), ElementsAre("use B B 0+3", "define A A 0+2 move"));
  EXPECT_THAT(ArithmeticEffectsOf("COMPUTE A = B + 1"), ElementsAre("use B B 0+3", "define A A 0+2 computation"));
}

TEST(ArithmeticEffects, ADivisionCanFailWithoutTelling) {
  EXPECT_THAT(ArithmeticEffectsOf("DIVIDE A INTO B"),
              ElementsAre("use A A 0+2", "use B B 0+3", "may define B B 0+3 computation"));
  EXPECT_THAT(ArithmeticEffectsOf("COMPUTE B = C / A"),
              ElementsAre("use C C 0+4", "use A A 0+2", "may define B B 0+3 computation"));
  EXPECT_THAT(
      ArithmeticEffectsOf("DIVIDE A BY B GIVING C REMAINDER D"),
      ElementsAre("use A A 0+2", "use B B 0+3", "may define C C 0+4 computation", "may define D D 0+5 computation"));
}

TEST(ArithmeticEffects, DivisionByANumberThatIsNotZeroCannotFail) {
  EXPECT_THAT(ArithmeticEffectsOf("DIVIDE A BY 7 GIVING C"), ElementsAre("use A A 0+2", "define C C 0+4 computation"));
  EXPECT_THAT(ArithmeticEffectsOf("COMPUTE B = C / 100"), ElementsAre("use C C 0+4", "define B B 0+3 computation"));
  EXPECT_THAT(ArithmeticEffectsOf("DIVIDE 0 INTO B"), ElementsAre("use B B 0+3", "may define B B 0+3 computation"));
  EXPECT_THAT(ArithmeticEffectsOf("COMPUTE B = C / 0.0"), ElementsAre("use C C 0+4", "may define B B 0+3 computation"));
}

TEST(ArithmeticEffects, WithAPhraseTheOneResultIsThereWhenItFits) {
  const auto program = Arithmetic("ADD A TO B ON SIZE ERROR DISPLAY A");
  EXPECT_THAT(program.At("at"), ElementsAre("use A A 0+2", "use B B 0+3"));
  EXPECT_THAT(program.AtPoint("11 completed"), ElementsAre("define B B 0+3 computation"));
}

TEST(ArithmeticEffects, OfSeveralResultsSomeAreThereWhenOneDoesNotFit) {
  const auto program = Arithmetic("ADD 1 TO A B NOT ON SIZE ERROR DISPLAY A");
  EXPECT_THAT(program.At("at"), ElementsAre("use A A 0+2", "may define A A 0+2 computation", "use B B 0+3 #1",
                                            "may define B B 0+3 computation #1"));
  EXPECT_THAT(program.AtPoint("11 completed"),
              ElementsAre("define A A 0+2 computation", "define B B 0+3 computation #1"));
}

TEST(ArithmeticEffects, CorrespondingItemsAreComputedInPairs) {
  const auto program = EffectsProgram::Of(R"(01  G.
    05  X PIC 9.
    05  Y PIC 9(2).
01  H.
    05  Y PIC 9(3).
    05  X PIC 9(4).
)",
                                          "MAIN-PARA.\n    $at^ADD CORRESPONDING G TO H.\n");
  EXPECT_THAT(program.At("at"), ElementsAre("use X G 0+1", "use X H 3+4", "define X H 3+4 computation",
                                            "use Y G 1+2 #1", "use Y H 0+3 #1", "define Y H 0+3 computation #1"));
}

TEST(ArithmeticEffects, WhatIsNoNumberTakesNoPartInACorrespondingSum) {
  const auto program = EffectsProgram::Of(R"(01  G.
    05  X PIC X.
    05  Y PIC 9(2).
01  H.
    05  X PIC X.
    05  Y PIC 9(3).
)",
                                          "MAIN-PARA.\n    $at^ADD CORRESPONDING G TO H.\n");
  EXPECT_THAT(program.At("at"), ElementsAre("use Y G 1+2", "use Y H 1+3", "define Y H 1+3 computation"));
}

}  // namespace
}  // namespace qmrules::test
