#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/error.h"
#include "workbench/codemodel/cobol/reading/expandedprogram.h"
#include "workbench/codemodel/cobol/reading/words.h"

namespace qmrules::test {
namespace {

using namespace workbench::codemodel;
using namespace workbench::codemodel::cobol;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Copy, ACopybookTakesThePlaceOfTheStatement) {
  const ExpandedProgram program({{"P.cbl", "01 A.\nCOPY BOOK.\n01 Z.\n"}, {"BOOK.cpy", "05 B PIC X.\n05 C PIC 9.\n"}});
  EXPECT_EQ(program.Words(), "01 A. 05 B PIC X. 05 C PIC 9. 01 Z.");
  EXPECT_THAT(program.Problems(), IsEmpty());
}

TEST(Copy, StandsAnywhereInASentence) {
  const ExpandedProgram program({{"P.cbl", "MOVE COPY FROM-X. TO B. 05 D COPY PIC-X. VALUE 1. copy Last. STOP RUN."},
                                 {"FROM-X", "A"},
                                 {"PIC-X", "PIC\nX(4)"},
                                 {"LAST", "DISPLAY C"}});
  EXPECT_EQ(program.Words(), "MOVE A TO B. 05 D PIC X(4) VALUE 1. DISPLAY C STOP RUN.");
}

TEST(Copy, IsFollowedWithinACopybook) {
  const ExpandedProgram program({{"P.cbl", "1 COPY A. 5"}, {"A", "2 COPY B. 4"}, {"B", "3"}});
  EXPECT_EQ(program.Words(), "1 2 3 4 5");
  EXPECT_THAT(program.Problems(), IsEmpty());
}

TEST(Copy, NamesItsTextInManyWays) {
  const MemorySources sources{{"BOOK", "1"}, {"dir/BOOK", "2"}, {"LIB/BOOK", "3"}, {"A#1", "4"}, {"7", "5"}};
  const std::vector<std::pair<std::string, std::string>> forms = {
      {"COPY BOOK.", "1"},
      {"COPY book.", "1"},
      {"COPY 'BOOK'.", "1"},
      {"COPY \"dir/BOOK\".", "2"},
      {"COPY BOOK OF LIB.", "3"},
      {"COPY BOOK IN \"lib\".", "3"},
      {"COPY BOOK SUPPRESS.", "1"},
      {"COPY BOOK IN LIB SUPPRESS PRINTING.", "3"},
      {"COPY BOOK SUPPRESS REPLACING 1 BY 9.", "9"},
      {"COPY A#1.", "4"},
      {"COPY 7.", "5"},
      {"COPY\nBOOK\n.", "1"},
  };
  for (const auto& [statement, words] : forms) {
    MemorySources all = sources;
    all.Put("P.cbl", statement);
    const ExpandedProgram program(all);
    EXPECT_EQ(program.Words(), words) << statement;
    EXPECT_THAT(program.Problems(), IsEmpty()) << statement;
  }
}

TEST(Copy, InALiteralACommentOrAnExecBlockIsNone) {
  const ExpandedProgram program({{"P.cbl",
                                  "DISPLAY 'COPY BOOK.' *> COPY BOOK.\n"
                                  "EXEC SQL COPY BOOK END-EXEC.\n"}});
  EXPECT_EQ(program.Words(), "DISPLAY 'COPY BOOK.' EXEC SQL COPY BOOK END-EXEC.");
  EXPECT_THAT(program.Problems(), IsEmpty());
}

TEST(Copy, EveryTokenKeepsItsPlace) {
  const ExpandedProgram program({{"P.cbl", "A\n  COPY BOOK. B"}, {"BOOK", "\n\n   C COPY DEEP."}, {"DEEP", "D 'x'"}});
  EXPECT_EQ(program.PlaceOf("A"), "P.cbl:1:1 'A'");
  EXPECT_EQ(program.PlaceOf("C"), "BOOK:3:4 'C'");
  EXPECT_EQ(program.PlaceOf("D"), "DEEP:1:1 'D'");
  EXPECT_EQ(program.PlaceOf("'x'"), "DEEP:1:3 ''x''");
  EXPECT_EQ(program.PlaceOf("B"), "P.cbl:2:14 'B'");
  EXPECT_TRUE(program.Find("C").Has(kFirstOnRow));
  EXPECT_EQ(program.Text().tokens.back().kind, TokenKind::End);
}

TEST(Copy, AnInclusionKnowsItsStatement) {
  const ExpandedProgram program({{"P.cbl", "A\n  COPY BOOK\n  .\nCOPY BOOK."}, {"BOOK", "COPY DEEP."}, {"DEEP", "D"}});
  const auto& inclusions = program.Text().inclusions;
  ASSERT_EQ(inclusions.size(), 5U);
  EXPECT_EQ(program.Text().files.size(), 3U);
  EXPECT_EQ(program.Text().files[inclusions[1].file]->Name(), "BOOK");
  EXPECT_EQ(inclusions[1].parent, 0U);
  EXPECT_EQ(inclusions[1].depth, 1U);
  EXPECT_EQ(inclusions[1].row, 2U);
  EXPECT_EQ(inclusions[1].endRow, 3U);
  EXPECT_EQ(program.Text().files[0]->Text().substr(inclusions[1].offset, inclusions[1].end - inclusions[1].offset),
            "COPY BOOK\n  .");
  EXPECT_EQ(inclusions[2].parent, 1U);
  EXPECT_EQ(inclusions[2].depth, 2U);
  EXPECT_EQ(inclusions[3].file, inclusions[1].file);
  EXPECT_EQ(inclusions[4].parent, 3U);
}

TEST(Copy, CommentRowsAndHashesAreThoseOfTheFiles) {
  MemorySources sources{{"P.cbl", "*> one\nCOPY BOOK.\n*> three\n"}, {"BOOK", "A\n*> two\n"}};
  const ExpandedProgram program(sources);
  ASSERT_EQ(program.Text().commentRows.size(), 2U);
  EXPECT_THAT(*program.Text().commentRows[0], ElementsAre(1, 3));
  EXPECT_THAT(*program.Text().commentRows[1], ElementsAre(2));
  ASSERT_EQ(program.Text().hashes.size(), 2U);
  EXPECT_EQ(program.Text().hashes[1][0], sources.Read("BOOK").hash[0]);
}

TEST(Copy, EachTextIsADependencyOnceFoundOrNot) {
  const ExpandedProgram program({{"P.cbl", "COPY A. COPY NONE. COPY A. COPY A IN LIB. COPY NONE."}, {"A", ""}});
  std::vector<std::string> dependencies;
  for (const auto& each : program.Text().dependencies) {
    dependencies.push_back(each.name + "|" + each.library + "|" + each.file);
  }
  EXPECT_THAT(dependencies, ElementsAre("A||A", "NONE||", "A|LIB|"));
}

TEST(Copy, AMissingCopybookCostsOnlyItself) {
  const ExpandedProgram program({{"P.cbl", "A\n  COPY NONE. B COPY NONE IN LIB.\nC"}});
  EXPECT_EQ(program.Words(), "A B C");
  EXPECT_THAT(
      program.Problems(),
      ElementsAre("P.cbl:2:3: gap: Copybook NONE was not found. Name the folder that holds it with --copybooks.",
                  "P.cbl:2:16: gap: Copybook NONE in LIB was not found. Name the folder that holds it with "
                  "--copybooks."));
}

TEST(Copy, AMutilatedStatementEndsSensibly) {
  struct Defect {
    std::string name, text, words, problem;
  };
  const std::vector<Defect> defects = {
      {"no name", "A COPY. B", "A B", "P.cbl:1:3: gap: COPY names no copybook."},
      {"at the end of the file", "A COPY", "A", "P.cbl:1:3: gap: COPY names no copybook."},
      {"no name before REPLACING", "A COPY REPLACING X BY Y. B", "A B", "P.cbl:1:3: gap: COPY names no copybook."},
      {"no full stop", "A COPY BOOK\nB", "A X. B", "P.cbl:1:3: warning: The full stop behind COPY BOOK is missing."},
      {"no full stop behind REPLACING", "A COPY BOOK REPLACING X BY Y\nDISPLAY B.", "A Y. DISPLAY B.",
       "P.cbl:1:3: warning: The full stop behind COPY BOOK is missing."},
      {"no REPLACING", "A COPY BOOK ==X== BY ==Y==. B", "A Y. B",
       "P.cbl:1:13: gap: REPLACING is missing before the text to be replaced."},
      {"no BY", "A COPY BOOK REPLACING ==X== ==Y==.\nB.", "A Y. B.",
       "P.cbl:1:29: gap: BY is missing between the text to be replaced and the text for it."},
      {"no BY between words", "A COPY BOOK REPLACING X Y.\nB.", "A X. B.",
       "P.cbl:1:25: gap: BY is missing between the text to be replaced and the text for it."},
      {"nothing behind BY", "A COPY BOOK REPLACING ==X== BY.\nB.", "A X. B.",
       "P.cbl:1:31: gap: REPLACING lacks a text."},
      {"nothing behind REPLACING", "A COPY BOOK REPLACING.\nB.", "A X. B.", "P.cbl:1:22: gap: REPLACING lacks a text."},
      {"nothing to be replaced", "A COPY BOOK REPLACING ==== BY ==Y==. B", "A X. B",
       "P.cbl:1:23: gap: The text to be replaced is empty."},
      {"first delimiter missing", "A COPY BOOK REPLACING X== BY ==Y==. B", "A Y. B",
       "P.cbl:1:24: gap: A \"==\" is missing before this one."},
      {"second delimiter missing", "A COPY BOOK REPLACING ==X BY ==Y==. B", "A Y. B",
       "P.cbl:1:30: gap: The pseudo-text is not closed by \"==\"."},
      {"third delimiter missing", "A COPY BOOK REPLACING ==X== BY Y==. B", "A Y. B",
       "P.cbl:1:33: gap: A \"==\" is missing before this one."},
      {"fourth delimiter missing", "A COPY BOOK REPLACING ==X== BY ==Y.\nB.", "A Y. B.",
       "P.cbl:1:32: gap: The pseudo-text is not closed by \"==\"."},
      {"fourth delimiter missing before another COPY",
       "COPY BOOK REPLACING ==X== BY ==Y.\nB.\nCOPY BOOK REPLACING ==X== BY ==Z==.", "Y. B. Z.",
       "P.cbl:1:30: gap: The pseudo-text is not closed by \"==\"."},
      {"one delimiter alone", "A COPY BOOK REPLACING ==X BY Y.\nB. C.", "A X. B. C.",
       "P.cbl:1:23: gap: The pseudo-text is not closed by \"==\"."},
  };
  for (const Defect& defect : defects) {
    const ExpandedProgram program({{"P.cbl", defect.text}, {"BOOK", "X."}});
    EXPECT_EQ(program.Words(), defect.words) << defect.name;
    EXPECT_THAT(program.Problems(), ElementsAre(defect.problem)) << defect.name;
  }
}

TEST(Copy, EachFileIsReadInItsOwnFormat) {
  const std::string fixedProgram =
      "000100 IDENTIFICATION DIVISION.                                         PROG0001\n"
      "000200     COPY FREE.                                                   PROG0001\n"
      "000300     COPY ANY.                                                    PROG0001\n";
  const std::string longLine = "           MOVE A TO" + std::string(60, ' ') + "BEHIND.\n";
  const ExpandedProgram program({{"P.cbl", fixedProgram}, {"FREE", "MOVE BB\nTO C.\nADD 1 TO D.\n"}, {"ANY", longLine}},
                                {}, LexerOptions{});
  EXPECT_EQ(program.Words(), "IDENTIFICATION DIVISION. MOVE BB TO C. ADD 1 TO D. MOVE A TO");
}

TEST(Copy, ACopybookThatTellsNoFormatIsReadInTheProgramsOne) {
  const std::string longLine = "           MOVE A TO" + std::string(60, ' ') + "BEHIND.\n";
  const ExpandedProgram program({{"P.cbl", "IF A = B\nCOPY ANY.\nSTOP RUN.\n"}, {"ANY", longLine}}, {}, LexerOptions{});
  EXPECT_EQ(program.Words(), "IF A = B MOVE A TO BEHIND. STOP RUN.");
}

TEST(Copy, ACopybookIsReadOnceForManyPrograms) {
  MemorySources sources{{"P.cbl", "COPY BOOK. COPY BOOK."}, {"Q.cbl", "COPY BOOK."}, {"BOOK", "A"}};
  SymbolTable symbols(CobolWordList());
  ProgramReader reader(sources, symbols, ExpandedProgram::FreeForm());
  Diagnostics diagnostics;
  reader.Read("P.cbl", diagnostics);
  EXPECT_EQ(reader.Read("Q.cbl", diagnostics).tokens.size(), 2U);
  EXPECT_EQ(sources.Reads(), 3);
}

TEST(Copy, ACopybookCanBringDecimalPointIsComma) {
  const ExpandedProgram program(
      {{"P.cbl", "SPECIAL-NAMES. COPY NAMES. MOVE 1,5 TO A."}, {"NAMES", "DECIMAL-POINT IS COMMA."}});
  EXPECT_TRUE(program.Text().decimalComma);
  EXPECT_EQ(program.Find("1,5").kind, TokenKind::Number);
}

TEST(Copy, AProgramWithoutAnyIsItsOwnText) {
  const ExpandedProgram program({{"P.cbl", "*> note\nMOVE 'A' TO B."}});
  EXPECT_EQ(program.Words(), "MOVE 'A' TO B.");
  EXPECT_EQ(program.Text().inclusions.size(), 1U);
  EXPECT_EQ(program.Text().hashes.size(), 1U);
  EXPECT_THAT(*program.Text().commentRows[0], ElementsAre(1));
  EXPECT_THAT(program.Text().dependencies, IsEmpty());
}

TEST(Copy, AProgramThatIsNotThereIsAnError) {
  EXPECT_THROW(ExpandedProgram(MemorySources{}), platform::Error);
}

}  // namespace
}  // namespace qmrules::test
