// DECLARATIVES and the USE statements of their sections.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/cobolmodel.h"

namespace qmrules::test {
namespace {

using testing::IsEmpty;

constexpr std::string_view kFilesAndData = R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. PROBE.
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT F ASSIGN TO 'F'.
           SELECT G ASSIGN TO 'G'.
       DATA DIVISION.
       FILE SECTION.
       FD  F.
       01  F-REC PIC X.
       FD  G.
       01  G-REC PIC X.
       WORKING-STORAGE SECTION.
       01  A PIC X.
       PROCEDURE DIVISION.
)";

TEST(Declaratives, HaveSectionsOfTheirOwn) {
  const CobolModel model(std::string(kFilesAndData) + R"(       DECLARATIVES.
       FIRST-SECTION SECTION.
           USE GLOBAL AFTER STANDARD ERROR PROCEDURE ON $f[[F]] $g[[G]].
       FIRST-PARA.
           MOVE 'A' TO A.
       SECOND-SECTION SECTION 5.
           USE AFTER EXCEPTION PROCEDURE INPUT.
       END DECLARATIVES.
       MAIN-SECTION SECTION.
       MAIN-PARA.
           STOP RUN.
)");
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  EXPECT_EQ(model.At("f"), "REF F File 10");
  EXPECT_EQ(model.At("g"), "REF G File 12");
  EXPECT_EQ(model.Outline(), R"(PORT ENTRY
SECTION FIRST-SECTION
  PAR FIRST-SECTION implicit
    STAT USE
  PAR FIRST-PARA
    STAT MOVE
SECTION SECOND-SECTION
  PAR SECOND-SECTION implicit
    STAT USE
SECTION MAIN-SECTION
  PAR MAIN-PARA
    PORT STOP RUN
)");
}

TEST(Declaratives, DebugProceduresAndFilesAndData) {
  const CobolModel model(std::string(kFilesAndData) + R"(       DECLARATIVES.
       FIRST-SECTION SECTION.
           USE FOR DEBUGGING ON $para[[MAIN-PARA]] ALL REFERENCES OF $data[[A]] $file[[F]].
       SECOND-SECTION SECTION.
           USE FOR DEBUGGING ON ALL PROCEDURES.
       END DECLARATIVES.
       MAIN-SECTION SECTION.
       MAIN-PARA.
           STOP RUN.
)");
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  EXPECT_EQ(model.At("para"), "REF MAIN-PARA Other 24");
  EXPECT_EQ(model.At("data"), "VAR A OUT Other 15");
  EXPECT_EQ(model.At("file"), "VAR F OUT Other 10");
}

TEST(Declaratives, AreNoWayToTheEndOfTheText) {
  const CobolModel model(std::string(kFilesAndData) + R"(       DECLARATIVES.
       FIRST-SECTION SECTION.
           USE AFTER ERROR PROCEDURE ON F.
       FIRST-PARA.
           CONTINUE.
       END DECLARATIVES.
       MAIN-SECTION SECTION.
       MAIN-PARA.
           CONTINUE.
)");
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  EXPECT_THAT(model.Outline(), testing::EndsWith("  PAR MAIN-PARA\n    STAT CONTINUE\nPORT GOBACK implicit\n"));
}

TEST(Declaratives, NameTheModesThatTheyAreFor) {
  const CobolModel model(std::string(kFilesAndData) + R"(       DECLARATIVES.
       FIRST-SECTION SECTION.
           USE AFTER ERROR PROCEDURE ON $in[[INPUT]] $out[[OUTPUT]] $extend[[EXTEND]] $both[[I-O]].
       END DECLARATIVES.
       MAIN-PARA.
           STOP RUN.
)");
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  EXPECT_EQ(model.At("in"), "REF INPUT Input");
  EXPECT_EQ(model.At("out"), "REF OUTPUT Output");
  EXPECT_EQ(model.At("extend"), "REF EXTEND Output");
  EXPECT_EQ(model.At("both"), "REF I-O Both");
}

}  // namespace
}  // namespace qmrules::test
