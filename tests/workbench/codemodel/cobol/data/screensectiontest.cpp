#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/data/headmodel.h"

namespace qmrules::test {
namespace {

using workbench::codemodel::Entity;

TEST(ScreenSection, TellsWhichDataAreShownAndTaken) {
  const HeadModel model(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. P.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A PIC X(5).
       01  B PIC X(5).
       01  C PIC X(5).
       01  COLOUR PIC 9.
       SCREEN SECTION.
       01  S1 BLANK SCREEN BACKGROUND-COLOR IS 1
              FOREGROUND-COLOR COLOUR.
           05  LINE 1 COL 1 VALUE 'NAME'.
           05  FLD1 LINE NUMBER IS PLUS 1 COLUMN 10 PIC X(5)
               FROM A TO B HIGHLIGHT UNDERLINE.
           05  LINE 3 PIC X(5) USING C AUTO SECURE REQUIRED.
           05  PIC Z9 FROM 5 REVERSE-VIDEO BELL BLINK ERASE EOL.
)");
  EXPECT_EQ(model.Diagnostics(), "");
  std::string section = model.Tree(Entity::Data);
  EXPECT_EQ(section.substr(section.find("DATASECTION SCREEN")),
            "DATASECTION SCREEN\n  DECL S1\n    CONST 1 Other\n    VAR COLOUR OUT Other @8\n    DECL \n"
            "      CONST 1 Other\n      CONST 1 Other\n      CONST 'NAME' Value\n    DECL FLD1\n      CONST 1 Other\n"
            "      CONST 10 Other\n      VAR A OUT From @5\n      VAR B IN Target @6\n    DECL \n      CONST 3 Other\n"
            "      VAR C INOUT Both @7\n    DECL \n      CONST 5 From\n");
  EXPECT_EQ(model.Item("FLD1").size, 5U);
}

}  // namespace
}  // namespace qmrules::test
