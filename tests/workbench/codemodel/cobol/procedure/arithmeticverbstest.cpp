// ADD, SUBTRACT, MULTIPLY, DIVIDE, COMPUTE: operands, how data passes them, and ON SIZE ERROR.

#include <gtest/gtest.h>

#include "support/cobolmodel.h"
#include "workbench/codemodel/cobol/procedure/markedstatements.h"

namespace qmrules::test {
namespace {

constexpr std::string_view kNumbers =
    "       DATA DIVISION.\n"
    "       WORKING-STORAGE SECTION.\n"
    "       01  A PIC 9(4).\n"
    "       01  B PIC 9(4).\n"
    "       01  C PIC 9(4).\n"
    "       01  D PIC 9(4).\n"
    "       01  G1.\n"
    "           05  E PIC 9 OCCURS 5.\n"
    "       01  G2.\n"
    "           05  E2 PIC 9 OCCURS 5.\n";

struct Form {
  std::string_view name, marked;
};

class ArithmeticForm : public testing::TestWithParam<Form> {};

TEST_P(ArithmeticForm, PassesDataAsMarked) {
  ExpectMarked(kNumbers, GetParam().marked);
}

constexpr Form kForms[] = {
    {"AddTo", "ADD $SourceOut[[A]] $Source[[5]] TO $BothInOut[[B]] ROUNDED $BothInOut[[C]]."},
    {"AddGiving", "ADD $SourceOut[[A]] $SourceOut[[B]] GIVING $TargetIn[[C]] $TargetIn[[D]] ROUNDED."},
    {"AddToGiving", "ADD $SourceOut[[A]] TO $SourceOut[[B]] GIVING $TargetIn[[C]]."},
    {"AddToLiteralGiving", "ADD $SourceOut[[A]] TO $Source[[5]] GIVING $TargetIn[[C]] END-ADD."},
    {"AddCorresponding", "ADD CORR $SourceOutCorresponding[[G1]] TO $BothInOutCorresponding[[G2]] ROUNDED."},
    {"AddSubscripted", "ADD $Source[[-1]] TO $BothInOut[[E ($SubscriptOut[[A]])]]."},
    {"AddRoundedMode", "ADD $Source[[1]] TO $BothInOut[[B]] ROUNDED MODE IS TRUNCATION."},
    {"SubtractFrom", "SUBTRACT $SourceOut[[A]] $Source[[1]] FROM $BothInOut[[B]] $BothInOut[[C]]."},
    {"SubtractGiving", "SUBTRACT $SourceOut[[A]] FROM $SourceOut[[B]] GIVING $TargetIn[[C]] ROUNDED END-SUBTRACT."},
    {"SubtractCorresponding",
     "SUBTRACT CORRESPONDING $SourceOutCorresponding[[G1]] FROM $BothInOutCorresponding[[G2]]."},
    {"MultiplyBy", "MULTIPLY $SourceOut[[A]] BY $BothInOut[[B]] ROUNDED $BothInOut[[C]]."},
    {"MultiplyGiving", "MULTIPLY $Source[[2]] BY $SourceOut[[B]] GIVING $TargetIn[[C]] END-MULTIPLY."},
    {"DivideInto", "DIVIDE $SourceOut[[A]] INTO $BothInOut[[B]] ROUNDED."},
    {"DivideIntoGiving",
     "DIVIDE $SourceOut[[A]] INTO $SourceOut[[B]] GIVING $TargetIn[[C]] REMAINDER $RemainderIn[[D]]."},
    {"DivideByGiving",
     "DIVIDE $SourceOut[[A]] BY $Source[[3]] GIVING $TargetIn[[C]] ROUNDED REMAINDER $RemainderIn[[D]] END-DIVIDE."},
    {"Compute",
     "COMPUTE $TargetIn[[A]] = $SourceOut[[B]] + $Source[[2]] * ($SourceOut[[C]] - $Source[[-1]]) ** $Source[[2]]."},
    {"ComputeSeveral", "COMPUTE $TargetIn[[A]] ROUNDED $TargetIn[[B]] EQUAL $SourceOut[[C]] END-COMPUTE."},
    {"ComputeFunction",
     "COMPUTE $TargetIn[[A]] = $Source[[FUNCTION MAX ($ArgumentOut[[B]] $ArgumentOut[[E ($Subscript[[1]])]])]] / - "
     "$SourceOut[[C]]."},
    {"ComputeAllSubscript", "COMPUTE $TargetIn[[A]] = $Source[[FUNCTION SUM ($ArgumentOut[[E (ALL)]])]]."},
    {"ComputeUnary", "COMPUTE $TargetIn[[A]] = - $SourceOut[[B]] + + $SourceOut[[C]]."},
    {"ComputeLengthOf", "COMPUTE $TargetIn[[A]] = $LengthOfNone[[LENGTH OF G1]] * $Source[[2]]."},
};

INSTANTIATE_TEST_SUITE_P(Of, ArithmeticForm, testing::ValuesIn(kForms),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(Arithmetic, ResultsKnowThatTheyAreRounded) {
  const auto marked = ExpectMarked(kNumbers, "ADD $Source[[1]] TO $BothInOut[[A]] $BothInOut[[B]] ROUNDED.");
  const auto vars = marked.Nodes(workbench::codemodel::Entity::Var);
  ASSERT_EQ(vars.size(), 2U);
  EXPECT_EQ(vars[0].flags & workbench::codemodel::kRounded, 0);
  EXPECT_NE(vars[1].flags & workbench::codemodel::kRounded, 0);
}

TEST(Arithmetic, ASizeErrorIsAnIfBehindTheStatement) {
  for (const std::string_view statement :
       {"ADD 1 TO A", "SUBTRACT 1 FROM A", "MULTIPLY 2 BY A", "DIVIDE 2 INTO A", "COMPUTE A = B"}) {
    const std::string verb(statement.substr(0, statement.find(' ')));
    const auto model = CobolModel::Of("01  A PIC 9.\n01  B PIC 9.\n",
                                      "MAIN-PARA.\n    " + std::string(statement) +
                                          " ROUNDED\n        SIZE ERROR GOBACK NOT SIZE ERROR CONTINUE\n    END-" +
                                          verb + "\n    CONTINUE.\n");
    const bool computes = verb == "COMPUTE";
    EXPECT_EQ(model.Diagnostics().size(), computes ? 1U : 0U);
    EXPECT_EQ(model.Outline(), "PORT ENTRY\nPAR MAIN-PARA\n  STAT " + verb +
                                   "\n  IF If size error\n    COND ON SIZE ERROR\n    BLOCK Then\n      PORT GOBACK\n"
                                   "    BLOCK Else\n      STAT CONTINUE\n  STAT CONTINUE\nPORT GOBACK implicit\n");
  }
}

struct ArithmeticFaultCase {
  std::string_view name, statement, diagnostic;
};

class ArithmeticFault : public testing::TestWithParam<ArithmeticFaultCase> {};

TEST_P(ArithmeticFault, CostsTheStatementOnly) {
  const auto model = CobolModel::Of("01  A PIC 9.\n01  B PIC 9.\n",
                                    "MAIN-PARA.\n    " + std::string(GetParam().statement) + "\n    MOVE A TO B.\n");
  ASSERT_EQ(model.Diagnostics().size(), 1U);
  EXPECT_EQ(model.Diagnostics()[0], GetParam().diagnostic);
  EXPECT_EQ(model.Statements().size(), 2U);
}

constexpr ArithmeticFaultCase kArithmeticFaults[] = {
    {"AddWithoutOperand", "ADD", "gap 10:12 An operand is missing."},
    {"AddWithoutTo", "ADD A", "gap 10:12 ADD lacks TO."},
    {"AddWithoutTarget", "ADD A TO", "gap 10:12 The operand to be changed is missing."},
    {"SubtractWithoutFrom", "SUBTRACT 1 A.", "gap 9:24 SUBTRACT lacks FROM."},
    {"MultiplyWithoutBy", "MULTIPLY A.", "gap 9:22 MULTIPLY lacks BY."},
    {"DivideWithoutInto", "DIVIDE A B.", "gap 9:21 DIVIDE lacks INTO or BY."},
    {"DivideByWithoutGiving", "DIVIDE A BY B.", "gap 9:25 DIVIDE lacks GIVING."},
    {"ComputeWithoutResult", "COMPUTE = A.", "gap 9:20 COMPUTE lacks its result."},
    {"ComputeWithoutEqual", "COMPUTE A B + 1.", "gap 9:24 COMPUTE lacks its =."},
    {"ComputeWithoutExpression", "COMPUTE A = .", "gap 9:24 The expression is missing."},
    {"ComputeOperandMissing", "COMPUTE A = B + .", "gap 9:28 An operand is missing in the expression."},
    {"ComputeParenthesisMissing", "COMPUTE A = (B + 1.", "gap 9:30 A closing parenthesis is missing."},
};

INSTANTIATE_TEST_SUITE_P(Of, ArithmeticFault, testing::ValuesIn(kArithmeticFaults),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(ArithmeticStatements, TellWhetherTheyDivideByWhatCanBeZero) {
  const auto model = CobolModel::Of("01  A PIC 9(4).\n01  B PIC 9(4).\n", R"(MAIN-PARA.
    $add^ADD A TO B
    $divide^DIVIDE A INTO B
    $by^DIVIDE 7 BY B GIVING A
    $byZero^DIVIDE B BY 0.0 GIVING A
    $byNumber^DIVIDE B BY 0.50 GIVING A
    $quotient^COMPUTE A = 1 + (2 / B)
    $half^COMPUTE A = 1 + (B / 2)
    $power^COMPUTE A = B ** 2
    $product^COMPUTE A = B * 2 - 1
    GOBACK.
)");
  const auto divides = [&](std::string_view mark) {
    return (model.Node(model.NodeAt(mark)).flags & workbench::codemodel::kDivides) != 0;
  };
  EXPECT_FALSE(divides("add"));
  EXPECT_TRUE(divides("divide"));
  EXPECT_TRUE(divides("by"));
  EXPECT_TRUE(divides("byZero"));
  EXPECT_FALSE(divides("byNumber"));
  EXPECT_TRUE(divides("quotient"));
  EXPECT_FALSE(divides("half"));
  EXPECT_TRUE(divides("power"));
  EXPECT_FALSE(divides("product"));
}

}  // namespace
}  // namespace qmrules::test
