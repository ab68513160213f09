#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "workbench/codemodel/cobol/reading/expandedprogram.h"

namespace qmrules::test {
namespace {

using namespace workbench::codemodel;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Replace, LastsUpToTheNextOne) {
  const ExpandedProgram program({{"P.cbl",
                                  "A B REPLACE ==A== BY ==1==. A B\n"
                                  "REPLACE ==B== BY ==2==. A B\n"
                                  "REPLACE OFF. A B"}});
  EXPECT_EQ(program.Words(), "A B 1 B A 2 A B");
  EXPECT_THAT(program.Problems(), IsEmpty());
}

TEST(Replace, AppliesToCopiedText) {
  const ExpandedProgram program(
      {{"P.cbl", "REPLACE ==:T:== BY ==PM==. COPY BOOK REPLACING ==:U:== BY ==:T:==. A"}, {"BOOK", ":T:-A :U:-B"}});
  EXPECT_EQ(program.Words(), "PM-A PM-B A");
}

TEST(Replace, InACopybookGoesOnBehindIt) {
  const ExpandedProgram program({{"P.cbl", "COPY BOOK. A"}, {"BOOK", "A REPLACE ==A== BY ==1==. A"}});
  EXPECT_EQ(program.Words(), "A 1 1");
}

TEST(Replace, AlsoAddsToTheEarlierOnes) {
  const ExpandedProgram program({{"P.cbl",
                                  "REPLACE ==A== BY ==1==. A B\n"
                                  "REPLACE ALSO ==B== BY ==2==. A B\n"
                                  "REPLACE ALSO ==A== BY ==3==. A B\n"
                                  "REPLACE LAST OFF. A B REPLACE LAST OFF. A B REPLACE OFF. A B"}});
  EXPECT_EQ(program.Words(), "1 B 1 2 3 2 1 2 1 B A B");
}

TEST(Replace, PartialWordsAndPictures) {
  const ExpandedProgram program({{"P.cbl",
                                  "REPLACE LEADING ==AA== BY ==BB== ==:LEN:== BY ==5==.\n"
                                  "01 AA-X PIC X(:LEN:)."}});
  EXPECT_EQ(program.Words(), "01 BB-X PIC X(5).");
}

TEST(Replace, IsTheStatementOnlyBeforePseudoText) {
  const ExpandedProgram program({{"P.cbl", "MOVE REPLACE TO A."}});
  EXPECT_EQ(program.Words(), "MOVE REPLACE TO A.");
  EXPECT_THAT(program.Problems(), IsEmpty());
}

TEST(Replace, ADefectCostsOnlyItsPair) {
  const ExpandedProgram noPeriod({{"P.cbl", "REPLACE ==A== BY ==1==\nDISPLAY A."}});
  EXPECT_EQ(noPeriod.Words(), "DISPLAY 1.");
  EXPECT_THAT(noPeriod.Problems(), ElementsAre("P.cbl:1:1: gap: REPLACE has no full stop."));
  const ExpandedProgram noBy({{"P.cbl", "REPLACE ==A== BY ==1== ==B== ==2==.\nA B"}});
  EXPECT_EQ(noBy.Words(), "1 2");
  EXPECT_THAT(noBy.Problems(), ElementsAre("P.cbl:1:30: gap: BY is missing between the text to be replaced and the "
                                           "text for it."));
  const ExpandedProgram open({{"P.cbl", "REPLACE ==A== BY ==1.\nA B."}});
  EXPECT_EQ(open.Words(), "1 B.");
  EXPECT_THAT(open.Problems(), ElementsAre("P.cbl:1:18: gap: The pseudo-text is not closed by \"==\"."));
}

TEST(Replace, TheOldestOfTooManyIsGivenUp) {
  std::string text = "REPLACE ==A0== BY ==1==.\n";
  for (int number = 1; number <= 16; ++number) text += "REPLACE ALSO ==A" + std::to_string(number) + "== BY ==1==.\n";
  const ExpandedProgram program({{"P.cbl", text + "A0 A1 A16"}});
  EXPECT_EQ(program.Words(), "A0 1 1");
  EXPECT_THAT(program.Problems(), ElementsAre("P.cbl:17:1: gap: More than 16 REPLACE statements are active; the oldest "
                                              "was given up."));
}

TEST(Replace, KeepsThePlaces) {
  const ExpandedProgram program({{"P.cbl", "REPLACE ==:T:== BY ==PM==.\n 01 :T:-A."}});
  EXPECT_EQ(program.PlaceOf("PM-A"), "P.cbl:2:5 ':T:-A'");
  EXPECT_EQ(program.PlaceOf("01"), "P.cbl:2:2 '01'");
}

}  // namespace
}  // namespace qmrules::test
