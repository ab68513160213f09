// What STRING, UNSTRING and INSPECT do with storage.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/flow/cobol/effectsprogram.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kTexts = R"(01  A PIC X(4).
01  B PIC X(6).
01  T PIC X(20).
01  P PIC 9(2).
01  N PIC 9(3).
01  M PIC 9(3).
)";

EffectsProgram Texts(std::string_view statement) {
  return EffectsProgram::Of(kTexts, "MAIN-PARA.\n    $at^" + std::string(statement) + ".\n");
}

std::vector<std::string> TextEffectsOf(std::string_view statement) {
  return Texts(statement).At("at");
}

TEST(StringEffects, WhatIsPutTogetherFillsTheBeginning) {
  EXPECT_THAT(TextEffectsOf("STRING A \"it\"\"s\" DELIMITED BY SIZE B DELIMITED BY SIZE INTO T"),
              ElementsAre("use A A 0+4", "use B B 0+6", "define T T 0+14 computation"));
  EXPECT_THAT(TextEffectsOf("STRING T B DELIMITED BY SIZE INTO A"),
              ElementsAre("use T T 0+20", "use B B 0+6", "define A A 0+4 computation"));
}

TEST(StringEffects, BehindADelimiterItIsNotKnownHowFar) {
  EXPECT_THAT(TextEffectsOf("STRING A DELIMITED BY B INTO T"),
              ElementsAre("use A A 0+4", "use B B 0+6 aside", "may define T T 0+20 computation"));
}

TEST(StringEffects, APointerIsReadAndMovedOn) {
  EXPECT_THAT(TextEffectsOf("STRING A DELIMITED BY SIZE INTO T POINTER P"),
              ElementsAre("use A A 0+4", "may define T T 0+20 computation", "use P P 0+2 #1",
                          "may define P P 0+2 computation #1"));
  const auto program = Texts("STRING A DELIMITED BY SIZE INTO T POINTER P ON OVERFLOW DISPLAY A");
  EXPECT_THAT(program.AtPoint("13 completed"), ElementsAre("define P P 0+2 computation #1"));
}

TEST(UnstringEffects, OnlyTheFirstTargetIsSure) {
  EXPECT_THAT(
      TextEffectsOf("UNSTRING T DELIMITED BY \",\" OR A INTO B COUNT N M TALLYING P"),
      ElementsAre("use T T 0+20", "use A A 0+4 aside", "define B B 0+6 computation", "may define N N 0+3 computation",
                  "may define M M 0+3 computation", "use P P 0+2 #2", "may define P P 0+2 computation #2"));
}

TEST(UnstringEffects, APointerCanStandBehindTheText) {
  EXPECT_THAT(TextEffectsOf("UNSTRING T INTO B POINTER P"),
              ElementsAre("use T T 0+20", "may define B B 0+6 computation", "use P P 0+2 #1",
                          "may define P P 0+2 computation #1"));
}

TEST(InspectEffects, TallyingAddsToEachCounter) {
  EXPECT_THAT(TextEffectsOf("INSPECT T TALLYING N FOR ALL A M FOR CHARACTERS BEFORE B"),
              ElementsAre("use T T 0+20", "use T T 0+20 #1", "use N N 0+3 #1", "may define N N 0+3 computation #1",
                          "use A A 0+4 aside", "use T T 0+20 #2", "use M M 0+3 #2", "may define M M 0+3 computation #2",
                          "use B B 0+6 aside"));
}

TEST(InspectEffects, ReplacingLeavesTheOthersAsTheyAre) {
  EXPECT_THAT(TextEffectsOf("INSPECT T REPLACING ALL A BY B"),
              ElementsAre("use T T 0+20", "may define T T 0+20 computation", "use A A 0+4 aside", "use B B 0+6"));
  EXPECT_THAT(TextEffectsOf("INSPECT T CONVERTING \"abc\" TO \"ABC\""),
              ElementsAre("use T T 0+20", "may define T T 0+20 computation"));
}

TEST(InspectEffects, ExamineSetsItsTally) {
  EXPECT_THAT(TextEffectsOf("EXAMINE T TALLYING ALL \"A\""),
              ElementsAre("use T T 0+20", "define TALLY TALLY 0+4 computation"));
}

TEST(InspectEffects, TransformChangesInPlace) {
  EXPECT_THAT(TextEffectsOf("TRANSFORM A CHARACTERS FROM B TO T"),
              ElementsAre("use A A 0+4", "may define A A 0+4 computation", "use B B 0+6 aside", "use T T 0+20"));
}

}  // namespace
}  // namespace qmrules::test
