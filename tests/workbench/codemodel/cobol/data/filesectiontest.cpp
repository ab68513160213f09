#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/data/headmodel.h"

namespace qmrules::test {
namespace {

using namespace workbench::codemodel;

std::string FileSection(std::string_view lines) {
  return "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. P.\n       DATA DIVISION.\n       FILE SECTION.\n" +
         std::string(lines);
}

TEST(FileSection, AllClausesOfAFileDescriptionAreRead) {
  const HeadModel model(FileSection(R"(       FD  F IS GLOBAL IS EXTERNAL
           BLOCK CONTAINS 1 TO 20 RECORDS
           RECORD IS VARYING IN SIZE FROM 10 TO 20 CHARACTERS
               DEPENDING ON LEN
           LABEL RECORDS ARE STANDARD
           VALUE OF FILE-ID IS NAME1
           DATA RECORDS ARE R S
           LINAGE IS 60 LINES WITH FOOTING AT FOOT
               LINES AT TOP 3 LINES AT BOTTOM BOT
           CODE-SET IS ASCII-CODE
           RECORDING MODE IS V.
       01  R PIC X(10).
       01  S PIC X(20).
       WORKING-STORAGE SECTION.
       01  LEN PIC 99.
       01  FOOT PIC 99.
       01  BOT PIC 99.
       01  NAME1 PIC X(8).
)"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Tree(Entity::File),
            "VAR LEN INOUT DependingOn @19\nVAR NAME1 OUT Other @22\nREF R Record @16\nREF S Record @17\n"
            "CONST 60 Other\nVAR FOOT OUT Other @20\nCONST 3 Other\nVAR BOT OUT Other @21\nDECL R\nDECL S\n");
  EXPECT_EQ(model.File("F").flags, kGlobal | kExternal);
  EXPECT_EQ(model.File("F").firstRecord, model.Item("R").node);
  EXPECT_EQ(model.Item("S").area, model.Item("R").node);
}

TEST(FileSection, ASortFileIsMarked) {
  const HeadModel model(FileSection("       SD  F RECORD CONTAINS 80 CHARACTERS.\n       01  R PIC X(80).\n"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.File("F").isSort, 1);
}

TEST(FileSection, AMissingFullStopCostsNothing) {
  const HeadModel model(FileSection("       FD  F RECORD CONTAINS 80\n       01  R PIC X(80).\n"));
  EXPECT_EQ(model.Diagnostics(), "gap 6:8 The full stop of the file description before this is missing.\n");
  EXPECT_EQ(model.Layout(), "01 R 0+80\n");
}

TEST(FileSection, AnUnknownClauseCostsItselfOnly) {
  const HeadModel model(FileSection("       FD  F WIBBLE WOBBLE DATA RECORD IS R.\n       01  R PIC X(80).\n"));
  EXPECT_EQ(model.Diagnostics(), "gap 5:14 This is no clause of a file description.\n");
  EXPECT_EQ(model.Tree(Entity::File), "REF R Record @6\nDECL R\n");
}

TEST(CommunicationSection, ADescriptionDeclaresThePartsOfItsRecord) {
  const HeadModel model(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. P.
       DATA DIVISION.
       COMMUNICATION SECTION.
       CD  C1 FOR INITIAL INPUT
           SYMBOLIC QUEUE IS Q1
           MESSAGE DATE IS D1
           TEXT LENGTH IS L1
           STATUS KEY IS S1
           MESSAGE COUNT IS M1.
       CD  C2 FOR OUTPUT
           DESTINATION COUNT IS N2
           DESTINATION TABLE OCCURS 2 TIMES INDEXED BY I2
           ERROR KEY IS E2
           SYMBOLIC DESTINATION IS D2.
       01  R2 PIC X(36).
       CD  C3 INPUT A B C D E F G H I J K.
)");
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Layout(),
            "01 - 0+87\n  02 Q1 0+12\n  02 D1 48+6\n  02 L1 74+4\n  02 S1 79+2\n  02 M1 81+6\n"
            "01 - 0+36\n  02 N2 0+4\n  00 I2 0+4\n  02 E2 10+1\n  02 D2 11+12\n01 R2 0+36\n"
            "01 - 0+87\n  02 A 0+12\n  02 B 12+12\n  02 C 24+12\n  02 D 36+12\n  02 E 48+6\n  02 F 54+8\n  02 G 62+12\n"
            "  02 H 74+4\n  02 I 78+1\n  02 J 79+2\n  02 K 81+6\n");
  EXPECT_EQ(model.Item("R2").area, model.File("C2").firstRecord);
  EXPECT_EQ(model.Text(model.File("C1").organization), "COMMUNICATION");
}

}  // namespace
}  // namespace qmrules::test
