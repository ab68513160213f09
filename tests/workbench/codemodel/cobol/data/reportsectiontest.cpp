#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/data/headmodel.h"

namespace qmrules::test {
namespace {

using workbench::codemodel::Entity;

TEST(ReportSection, NamesTheDataThatItPrints) {
  const HeadModel model(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. P.
       DATA DIVISION.
       FILE SECTION.
       FD  PRINTOUT REPORT IS R1.
       WORKING-STORAGE SECTION.
       01  REGION PIC X(4).
       01  AMOUNT PIC 9(5)V99.
       01  TAB.
           05  CELL PIC X(3) OCCURS 5.
       REPORT SECTION.
       RD  R1 CONTROLS ARE FINAL REGION
           PAGE LIMIT IS 60 LINES HEADING 1 FIRST DETAIL 5
           LAST DETAIL 50 FOOTING 55.
       01  TYPE IS PAGE HEADING LINE 1.
           05  COLUMN 1 PIC X(5) VALUE 'TITLE'.
           05  COLUMN 20 PIC ZZ9 SOURCE IS PAGE-COUNTER.
       01  DET TYPE DETAIL LINE PLUS 1 NEXT GROUP PLUS 1.
           05  COLUMN 1 PIC X(4) GROUP INDICATE SOURCE REGION.
           05  COLUMN NUMBER IS 10 PIC ZZ9.99 SOURCE AMOUNT.
           05  COLUMN 20 PIC X(3) SOURCE IS CELL (2).
       01  TYPE CONTROL FOOTING REGION LINE NUMBER IS PLUS 2.
           05  TOT COLUMN 10 PIC ZZ9.99 SUM AMOUNT UPON DET
               RESET ON REGION.
)");
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Tree(Entity::File), "REF R1 Other @12\n");
  const auto report = model.Scope().ResolveFile(model.Symbol("R1")).node;
  EXPECT_EQ(model.Node(report).entity, Entity::File);
  EXPECT_EQ(model.Text(model.File("R1").organization), "REPORT");
  std::string section = model.Tree(Entity::Data);
  section = section.substr(section.find("DATASECTION REPORT"));
  EXPECT_EQ(
      section,
      "DATASECTION REPORT\n  FILE R1\n    VAR REGION OUT Key @7\n    DECL \n      DECL \n        CONST 'TITLE' Value\n"
      "      DECL \n        VAR PAGE-COUNTER OUT Source\n    DECL DET\n      DECL \n        VAR REGION OUT Source @7\n"
      "      DECL \n        VAR AMOUNT OUT Source @8\n      DECL \n        VAR CELL OUT Source @10\n"
      "          CONST 2 Subscript\n    DECL \n      VAR REGION OUT Key @7\n      DECL TOT\n"
      "        VAR AMOUNT OUT Source @8\n        REF DET Other @18\n        VAR REGION OUT Key @7\n");
}

TEST(ReportSection, AnUnknownClauseCostsItselfOnly) {
  const HeadModel model(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. P.
       DATA DIVISION.
       REPORT SECTION.
       RD  R1 WIBBLE PAGE LIMIT 60.
       01  D TYPE DETAIL LINE 1 WOBBLE.
           05  COLUMN 1 PIC X SOURCE NOWHERE.
)");
  EXPECT_EQ(model.Diagnostics(),
            "gap 5:15 This is no clause of a report description.\n"
            "gap 6:33 WOBBLE is no clause of a data description.\n"
            "gap 7:38 NOWHERE is not declared.\n");
}

}  // namespace
}  // namespace qmrules::test
