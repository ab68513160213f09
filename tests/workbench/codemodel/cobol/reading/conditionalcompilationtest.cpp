#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "workbench/codemodel/cobol/reading/expandedprogram.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct CompilationCase {
  std::string name, text, words;
};

void ExpectWords(const std::vector<CompilationCase>& cases) {
  for (const CompilationCase& each : cases) {
    const ExpandedProgram program({{"P.cbl", each.text}});
    EXPECT_EQ(program.Words(), each.words) << each.name;
    EXPECT_THAT(program.Problems(), IsEmpty()) << each.name;
  }
}

TEST(ConditionalCompilation, IfTakesOneBranch) {
  ExpectWords({
      {"defined", ">>DEFINE X AS 1\n>>IF X DEFINED\nA\n>>ELSE\nB\n>>END-IF\nC", "A C"},
      {"not defined", ">>IF X IS NOT DEFINED\nA\n>>ELSE\nB\n>>END-IF\nC", "A C"},
      {"undefined", ">>IF X DEFINED\nA\n>>ELSE\nB\n>>END-IF\nC", "B C"},
      {"switched off", ">>DEFINE X 1\n>>DEFINE X AS OFF\n>>IF X DEFINED\nA\n>>END-IF\nC", "C"},
      {"lower case and blanks", ">> define x as 1\n>> if x defined\nA\n>> end-if\nC", "A C"},
      {"else if", ">>DEFINE X 2\n>>IF X = 1\nA\n>>ELIF X = 2\nB\n>>ELIF X = 2\nC\n>>ELSE\nD\n>>END-IF", "B"},
      {"nested", ">>IF X DEFINED\n>>IF Y DEFINED\nA\n>>ELSE\nB\n>>END-IF\n>>ELSE\nC\n>>END-IF", "C"},
      {"nested in a taken one", ">>DEFINE X 1\n>>IF X = 1\nA\n>>IF X = 2\nB\n>>ELSE\nC\n>>END-IF\nD\n>>END-IF",
       "A C D"},
      {"a definition left out", ">>IF X DEFINED\n>>DEFINE Y 1\n>>END-IF\n>>IF Y DEFINED\nA\n>>END-IF\nB", "B"},
  });
}

TEST(ConditionalCompilation, ConditionsInAllForms) {
  const auto taken = [](const std::string& condition) {
    const ExpandedProgram program(
        {{"P.cbl", ">>DEFINE N AS 10\n>>DEFINE T AS 'abc'\n>>DEFINE M N\n>>DEFINE B AS B'1'\n>>IF " + condition +
                       "\nYES\n>>ELSE\nNO\n>>END-IF"}});
    EXPECT_THAT(program.Problems(), IsEmpty()) << condition;
    return program.Words() == "YES";
  };
  for (const char* condition : {"N = 10",
                                "N EQUAL TO 10.0",
                                "N IS EQUAL 10",
                                "N <> 9",
                                "N NOT = 9",
                                "N IS NOT LESS THAN 10",
                                "N > 9",
                                "N < 11",
                                "N >= 10",
                                "N <= 10",
                                "N GREATER THAN OR EQUAL TO 10",
                                "N IS LESS THAN OR EQUAL 10",
                                "9 < N",
                                "M = N",
                                "T = 'abc'",
                                "T = \"abc\"",
                                "T > 'abb'",
                                "NOT T = 'x'",
                                "N = 1 OR N = 10",
                                "N = 10 AND T DEFINED",
                                "NOT (N = 1 OR N = 2)",
                                "(N = 10)",
                                "NOT NOT N = 10",
                                "B",
                                "N DEFINED AND X NOT DEFINED",
                                "N = 10 OR X = 1"}) {
    EXPECT_TRUE(taken(condition)) << condition;
  }
  for (const char* condition : {"N = 9", "N NOT = 10", "T = 'ABC'", "N > 10", "N = 10 AND T = 'x'", "NOT N = 10",
                                "NOT B", "X DEFINED OR N = 1", "N = 9 AND X = 1", "N NOT DEFINED"}) {
    EXPECT_FALSE(taken(condition)) << condition;
  }
}

TEST(ConditionalCompilation, EvaluateTakesOneBranch) {
  const std::string branches = "\n>>WHEN 1\nA\n>>WHEN 2 THRU 4\nB\n>>WHEN OTHER\nC\n>>END-EVALUATE\nD";
  ExpectWords({
      {"first", ">>DEFINE X 1\n>>EVALUATE X" + branches, "A D"},
      {"range", ">>DEFINE X 3\n>>EVALUATE X" + branches, "B D"},
      {"other", ">>DEFINE X 5\n>>EVALUATE X" + branches, "C D"},
      {"truth", ">>DEFINE X 5\n>>EVALUATE TRUE\n>>WHEN X = 4\nA\n>>WHEN X = 5\nB\n>>END-EVALUATE\nC", "B C"},
      {"none", ">>DEFINE X 5\n>>EVALUATE X\n>>WHEN 4\nA\n>>END-EVALUATE\nC", "C"},
      {"before the first WHEN", ">>DEFINE X 5\n>>EVALUATE X\nZ\n>>WHEN 5\nA\n>>END-EVALUATE", "A"},
  });
}

TEST(ConditionalCompilation, OlderForms) {
  ExpectWords({
      {"a constant", "$SET CONSTANT X\"ON\"\n$IF X = \"ON\"\nA\n$ELSE\nB\n$END\nC", "A C"},
      {"in parentheses", "$SET CONSTANT X(2) CONSTANT Y(3)\n$IF Y = 3\nA\n$END\nC", "A C"},
      {"by a sign", "$SET CONSTANT X=2\n$IF X = 3\nA\n$ELSE\nB\n$END-IF\nC", "B C"},
      {"defined", "$IF X DEFINED\nA\n$ELSE\nB\n$END\nC", "B C"},
      {"set", "$SET CONSTANT X(2)\n$IF X SET\nA\n$END\nC", "A C"},
      {"another setting", "$SET NOWARNING\nA", "A"},
  });
}

TEST(ConditionalCompilation, OtherDirectivesArePassedOver) {
  ExpectWords({{"others", "A\n>>PAGE\nB\n>>LISTING OFF\n>>CALLINTERFACE DLL\nC", "A B C"}});
}

TEST(ConditionalCompilation, ACopyInALeftOutBranchIsNone) {
  const ExpandedProgram program({{"P.cbl", ">>IF X DEFINED\nCOPY NONE.\n>>ELSE\nCOPY BOOK.\n>>END-IF\nA"},
                                 {"BOOK", "B\n>>DEFINE Y 1\n>>IF Y = 1\nC\n>>END-IF"}});
  EXPECT_EQ(program.Words(), "B C A");
  EXPECT_THAT(program.Problems(), IsEmpty());
  ASSERT_EQ(program.Text().dependencies.size(), 1U);
  EXPECT_EQ(program.Text().dependencies[0].name, "BOOK");
}

TEST(ConditionalCompilation, ADefinitionInACopybookCountsBehindIt) {
  const ExpandedProgram program({{"P.cbl", "COPY BOOK.\n>>IF X = 1\nA\n>>END-IF\nB"}, {"BOOK", ">>DEFINE X 1\n"}});
  EXPECT_EQ(program.Words(), "A B");
}

TEST(ConditionalCompilation, WhatCannotBeDecidedIsTakenWithAWarning) {
  const std::string warning = "warning: The condition cannot be decided from the sources; the text behind it is taken.";
  const std::vector<CompilationCase> cases = {
      {"unknown constant", ">>IF X = 1\nA\n>>ELSE\nB\n>>END-IF", "A"},
      {"from outside", ">>DEFINE X PARAMETER\n>>IF X DEFINED\nA\n>>END-IF", "A"},
      {"no condition", ">>IF\nA\n>>END-IF", "A"},
      {"expression", ">>DEFINE X 1 + 1\n>>IF X = 2\nA\n>>END-IF", "A"},
      {"unknown subject", ">>EVALUATE X\n>>WHEN 1\nA\n>>WHEN 2\nB\n>>END-EVALUATE", "A"},
      {"too many parentheses", ">>IF " + std::string(5000, '(') + "X DEFINED\nA\n>>END-IF", "A"},
  };
  for (const CompilationCase& each : cases) {
    const ExpandedProgram program({{"P.cbl", each.text}});
    EXPECT_EQ(program.Words(), each.words) << each.name;
    EXPECT_THAT(program.Problems(), ElementsAre(testing::EndsWith(warning))) << each.name;
  }
  const ExpandedProgram program({{"P.cbl", "A\n  >>IF X = 1\nB\n>>END-IF"}});
  EXPECT_THAT(program.Problems(), ElementsAre("P.cbl:2:3: " + warning));
}

TEST(ConditionalCompilation, ADefectIsAWarning) {
  struct Defect {
    std::string name, text, words, problem;
  };
  const std::vector<Defect> defects = {
      {"IF not ended", "A\n>>IF X DEFINED\nB", "A",
       "P.cbl:3:2: warning: The directive IF is not ended by END-IF in its "
       "file."},
      {"EVALUATE not ended", ">>EVALUATE TRUE\nB", "",
       "P.cbl:2:2: warning: The directive EVALUATE is not ended by END-EVALUATE in its file."},
      {"ELSE alone", "A\n>>ELSE\nB", "A B", "P.cbl:2:1: warning: The directive ELSE stands outside IF."},
      {"WHEN alone", "A\n>>WHEN 1\nB", "A B", "P.cbl:2:1: warning: The directive WHEN stands outside EVALUATE."},
      {"END-IF alone", "A\n>>END-IF\nB", "A B", "P.cbl:2:1: warning: The directive END-IF stands outside IF."},
      {"END-EVALUATE alone", "A\n>>END-EVALUATE\nB", "A B",
       "P.cbl:2:1: warning: The directive END-EVALUATE stands outside EVALUATE."},
      {"two ELSE", ">>IF X DEFINED\nA\n>>ELSE\nB\n>>ELSE\nC\n>>END-IF", "B",
       "P.cbl:5:1: warning: The directive follows the one for all other cases; the text behind it is left out."},
      {"DEFINE without a name", ">>DEFINE\nA", "A", "P.cbl:1:1: warning: The directive DEFINE gives no name."},
      {"SET CONSTANT without a name", "$SET CONSTANT\nA", "A",
       "P.cbl:1:1: warning: The directive SET CONSTANT gives no name."},
  };
  for (const Defect& defect : defects) {
    const ExpandedProgram program({{"P.cbl", defect.text}});
    EXPECT_EQ(program.Words(), defect.words) << defect.name;
    EXPECT_THAT(program.Problems(), ElementsAre(defect.problem)) << defect.name;
  }
}

TEST(ConditionalCompilation, ABlockEndsWithItsFile) {
  const ExpandedProgram program(
      {{"P.cbl", "COPY BOOK.\nA\n>>IF X DEFINED\nCOPY BOOK.\n>>END-IF\nB"}, {"BOOK", ">>IF X DEFINED\nC\n"}});
  EXPECT_EQ(program.Words(), "A B");
  EXPECT_THAT(program.Problems(),
              ElementsAre("BOOK:2:3: warning: The directive IF is not ended by END-IF in its file."));
}

}  // namespace
}  // namespace qmrules::test
