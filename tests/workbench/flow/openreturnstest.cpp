#include "workbench/flow/openreturns.h"

#include <gmock/gmock.h>

#include "workbench/flow/chainprogram.h"

// Programs of which compilers make different things.
namespace qmrules::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using workbench::flow::OpenReturns;

std::vector<std::string> OpenEnds(ChainProgram& program) {
  std::vector<std::string> names;
  for (const auto& gap : OpenReturns(program.Flow().Bodies())) {
    names.emplace_back(program.Program().Model().Text(program.Program().Model().Nodes()[gap.node].name));
  }
  return names;
}

constexpr std::string_view kOneItem = "01 A PIC 9.\n01 X PIC 9.\n";

TEST(OpenReturns, ARangeLeftByGoToWhoseEndAnotherOneComesByIsAGap) {
  ChainProgram program(kOneItem, R"(MAIN-PARA.
    MOVE 1 TO A
    PERFORM STEP-A
    GOBACK.
STEP-B.
    MOVE 2 TO A.
STEP-A.
    IF X = 1 GO TO STEP-C.
    DISPLAY $inside[[A]].
STEP-D.
    DISPLAY $behind[[A]].
STEP-C.
    PERFORM STEP-B THRU STEP-D
    GOBACK.
)");
  EXPECT_THAT(OpenEnds(program), ElementsAre("STEP-A"));
  EXPECT_THAT(program.Gaps("inside"), IsEmpty());
  EXPECT_THAT(
      program.Gaps("behind"),
      ElementsAre("14 A PERFORM that ends here, but was left by GO TO or overlaps another one, may still return "
                  "from here; what A gets then is not known."));
}

TEST(OpenReturns, ARangeThatReachesOutOfTheOneAroundItIsAGap) {
  ChainProgram program(kOneItem, R"(MAIN-PARA.
    PERFORM STEP-A THRU STEP-C
    GOBACK.
STEP-A.
    PERFORM STEP-B THRU STEP-D.
    GO TO STEP-C.
STEP-B.
    MOVE 2 TO A.
STEP-C.
    MOVE 3 TO A.
STEP-D.
    MOVE 4 TO A.
)");
  EXPECT_THAT(OpenEnds(program), ElementsAre("STEP-C"));
}

TEST(OpenReturns, RangesThatOnlyShareParagraphsAreNone) {
  ChainProgram program(kOneItem, R"(MAIN-PARA.
    PERFORM STEP-A THRU STEP-B
    PERFORM STEP-B THRU STEP-C
    PERFORM STEP-A THRU STEP-C
    PERFORM STEP-B
    GOBACK.
STEP-A.
    IF X = 1 GO TO STEP-B.
    MOVE 1 TO A.
STEP-B.
    PERFORM STEP-D.
STEP-C.
    MOVE 3 TO A.
STEP-D.
    IF X = 2 GO TO STEP-E.
    MOVE 4 TO A.
STEP-E.
    STOP RUN.
)");
  EXPECT_THAT(OpenEnds(program), IsEmpty());
}

TEST(OpenReturns, ARangeThatIsPerformedWithinItselfIsNone) {
  ChainProgram program(kOneItem, R"(MAIN-PARA.
    PERFORM STEP-A
    GOBACK.
STEP-A.
    IF X = 1 PERFORM STEP-A.
    MOVE 1 TO A.
)");
  EXPECT_THAT(OpenEnds(program), IsEmpty());
}

}  // namespace
}  // namespace qmrules::test
