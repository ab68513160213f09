#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/data/headmodel.h"

namespace qmrules::test {
namespace {

using workbench::codemodel::Entity;

TEST(Identification, TellsTheProgramAndWhatKindItIs) {
  const HeadModel model("       IDENTIFICATION DIVISION.\n       PROGRAM-ID. My-Prog IS COMMON INITIAL PROGRAM.\n");
  EXPECT_EQ(model.Head().spelled, "My-Prog");
  EXPECT_EQ(model.Head().name, model.Symbol("MY-PROG"));
  EXPECT_TRUE(model.Head().common);
  EXPECT_TRUE(model.Head().initial);
  EXPECT_FALSE(model.Head().recursive);
  EXPECT_FALSE(model.Head().isFunction);
  EXPECT_EQ(model.Node(model.Head().identification).entity, Entity::Identification);
}

TEST(Identification, TakesALiteralForAName) {
  const HeadModel model("       ID DIVISION.\n       PROGRAM-ID. 'PROG1' RECURSIVE.\n");
  EXPECT_EQ(model.Head().spelled, "PROG1");
  EXPECT_TRUE(model.Head().recursive);
}

TEST(Identification, OfAFunction) {
  const HeadModel model("       IDENTIFICATION DIVISION.\n       FUNCTION-ID. F.\n       DATA DIVISION.\n");
  EXPECT_TRUE(model.Head().isFunction);
  EXPECT_EQ(model.Head().spelled, "F");
}

TEST(Identification, TheCommentsInItAreTheProgramsDescription) {
  const HeadModel model(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. P.
       AUTHOR. SOMEBODY WITH A NAME.
      ****************************************
      * DAILY BILLING.                       *
      *--------------------------------------*
      *   SECOND LINE                        *
      ****************************************
       DATA DIVISION.
      * NOT THIS
       WORKING-STORAGE SECTION.
)");
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Text(model.Node(model.Head().identification).detail), "DAILY BILLING.\nSECOND LINE");
}

TEST(Identification, IsThereWithoutAHeader) {
  const HeadModel model("       DATA DIVISION.\n       WORKING-STORAGE SECTION.\n       01  A PIC X.\n");
  EXPECT_EQ(model.Head().identification, 1U);
  EXPECT_EQ(model.Head().spelled, "");
  EXPECT_EQ(model.Layout(), "01 A 0+1\n");
}

TEST(Identification, AMissingNameIsAGap) {
  const HeadModel model("       IDENTIFICATION DIVISION.\n       PROGRAM-ID.\n       DATA DIVISION.\n");
  EXPECT_EQ(model.Diagnostics(), "gap 3:8 The name of the program is missing here.\n");
}

TEST(Identification, AGarbledProgramIdStillTellsTheName) {
  const HeadModel model("       IDENTIFICATION DIVISION.\n       PROGRAMM-ID. P.\n       DATA DIVISION.\n");
  EXPECT_EQ(model.Diagnostics(), "gap 2:8 PROGRAM-ID is missing here.\n");
  EXPECT_EQ(model.Head().spelled, "P");
}

TEST(Identification, StopsAtTheNextProgram) {
  const HeadModel model(
      "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. P.\n       END PROGRAM P.\n"
      "       IDENTIFICATION DIVISION.\n");
  EXPECT_EQ(model.StoppedAt(), "END");
}

}  // namespace
}  // namespace qmrules::test
