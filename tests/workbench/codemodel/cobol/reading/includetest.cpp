#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "workbench/codemodel/cobol/reading/expandedprogram.h"

namespace qmrules::test {
namespace {

using namespace workbench::codemodel;
using testing::ElementsAre;
using testing::IsEmpty;

struct IncludeCase {
  std::string name, text, words;
};

TEST(Include, AnSqlIncludeIsACopy) {
  const std::vector<IncludeCase> cases = {
      {"a name", "A. EXEC SQL INCLUDE BOOK END-EXEC. C.", "A. 01 B. C."},
      {"a literal", "A. EXEC SQL INCLUDE 'BOOK' END-EXEC. C.", "A. 01 B. C."},
      {"lower case", "A. exec sql include book end-exec. C.", "A. 01 B. C."},
      {"without full stop", "A. EXEC SQL INCLUDE BOOK END-EXEC C.", "A. 01 B. C."},
      {"at the start", "EXEC SQL INCLUDE BOOK END-EXEC.", "01 B."},
      {"a full stop that ends a sentence", "IF A EXEC SQL INCLUDE CODE END-EXEC. C.", "IF A MOVE 1 TO B. C."},
      {"another EXEC", "A. EXEC SQL COMMIT END-EXEC. EXEC SQL INCLUDE BOOK END-EXEC.",
       "A. EXEC SQL COMMIT END-EXEC. 01 B."},
  };
  for (const IncludeCase& each : cases) {
    const ExpandedProgram program({{"P.cbl", each.text}, {"BOOK", "01 B."}, {"CODE", "MOVE 1 TO B"}});
    EXPECT_EQ(program.Words(), each.words) << each.name;
    EXPECT_THAT(program.Problems(), IsEmpty()) << each.name;
  }
}

TEST(Include, TheSqlAreasMayBeMissing) {
  const ExpandedProgram program({{"P.cbl",
                                  "A. EXEC SQL INCLUDE SQLCA END-EXEC. EXEC SQL INCLUDE sqlda END-EXEC.\n"
                                  "EXEC SQL INCLUDE SQLXX END-EXEC. B."}});
  EXPECT_EQ(program.Words(), "A. B.");
  EXPECT_THAT(program.Problems(),
              ElementsAre("P.cbl:2:1: gap: Copybook SQLXX was not found. Name the folder that holds "
                          "it with --copybooks."));
  EXPECT_EQ(program.Text().dependencies.size(), 3U);
}

TEST(Include, AnSqlAreaThatIsThereIsRead) {
  const ExpandedProgram program({{"P.cbl", "EXEC SQL INCLUDE SQLCA END-EXEC."}, {"SQLCA.cpy", "01 SQLCA."}});
  EXPECT_EQ(program.Words(), "01 SQLCA.");
}

TEST(Include, ADefectCostsOnlyIt) {
  const ExpandedProgram noName({{"P.cbl", "A. EXEC SQL INCLUDE END-EXEC. B."}});
  EXPECT_EQ(noName.Words(), "A. B.");
  EXPECT_THAT(noName.Problems(), ElementsAre("P.cbl:1:4: gap: EXEC SQL INCLUDE names no text."));
  const ExpandedProgram noEnd({{"P.cbl", "A.\nEXEC SQL INCLUDE BOOK\nMOVE B TO C."}, {"BOOK", "01 B."}});
  EXPECT_EQ(noEnd.Words(), "A. 01 B. MOVE B TO C.");
  EXPECT_THAT(noEnd.Problems(), ElementsAre("P.cbl:2:1: warning: EXEC SQL INCLUDE is not ended by END-EXEC."));
}

TEST(Include, LibrarianStatementsAreACopy) {
  const std::vector<IncludeCase> cases = {
      {"two plus signs", "       A.\n       ++INCLUDE BOOK\n       C.\n", "A. 01 B. C."},
      {"two plus signs in column 1", "       A.\n++INCLUDE BOOK\n       C.\n", "A. 01 B. C."},
      {"a hyphen", "       A.\n-INC BOOK\n       C.\n", "A. 01 B. C."},
      {"with a full stop", "       A.\n       ++INCLUDE BOOK.\n       C.\n", "A. 01 B. C."},
  };
  for (const IncludeCase& each : cases) {
    workbench::codemodel::cobol::LexerOptions fixed;
    fixed.format = workbench::codemodel::cobol::SourceFormat::Fixed;
    const ExpandedProgram program({{"P.cbl", each.text}, {"BOOK", "       01 B.\n"}}, {}, fixed);
    EXPECT_EQ(program.Words(), each.words) << each.name;
    EXPECT_THAT(program.Problems(), IsEmpty()) << each.name;
  }
}

TEST(Include, AnInclusionKnowsItsStatement) {
  const ExpandedProgram program(
      {{"P.cbl", "A.\n EXEC SQL INCLUDE BOOK\n END-EXEC. C.\n++INCLUDE BOOK"}, {"BOOK", "B."}});
  const auto& inclusions = program.Text().inclusions;
  ASSERT_EQ(inclusions.size(), 3U);
  const auto text = [&](const Inclusion& each) {
    return program.Text().files[0]->Text().substr(each.offset, each.end - each.offset);
  };
  EXPECT_EQ(text(inclusions[1]), "EXEC SQL INCLUDE BOOK\n END-EXEC");
  EXPECT_EQ(inclusions[1].row, 2U);
  EXPECT_EQ(inclusions[1].endRow, 3U);
  EXPECT_EQ(text(inclusions[2]), "++INCLUDE BOOK");
  EXPECT_EQ(inclusions[2].row, 4U);
}

}  // namespace
}  // namespace qmrules::test
