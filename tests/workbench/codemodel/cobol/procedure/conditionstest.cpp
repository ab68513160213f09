// Conditions of statements: their normalised texts and their operands.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/cobolmodel.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kConditionData = R"(01  A PIC 9(4).
01  B PIC 9(4).
01  c pic 9(4).
01  D PIC X(10).
    88  D-IS-SET VALUE 'A'.
01  T.
    05  E PIC 9 OCCURS 5 TIMES INDEXED BY I.
01  P USAGE POINTER.
)";

struct ConditionCase {
  std::string_view name, written, text;
};

class ConditionText : public testing::TestWithParam<ConditionCase> {};

TEST_P(ConditionText, IsNormalised) {
  const auto model =
      CobolModel::Of(kConditionData, "MAIN-PARA.\n    IF " + std::string(GetParam().written) + "\n        CONTINUE.\n");
  EXPECT_THAT(model.Conditions(), ElementsAre(GetParam().text));
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
}

constexpr ConditionCase kConditions[] = {
    {"Equal", "A = B", "A = B"},
    {"EqualInWords", "A IS EQUAL TO B", "A = B"},
    {"EqualWithoutTo", "A EQUAL B", "A = B"},
    {"Equals", "A EQUALS B", "A = B"},
    {"Unequal", "A UNEQUAL TO B", "A NOT = B"},
    {"NotEqual", "A IS NOT EQUAL TO B", "A NOT = B"},
    {"NotEqualSign", "A NOT = B", "A NOT = B"},
    {"Diamond", "A <> B", "A <> B"},
    {"Greater", "A IS GREATER THAN B", "A > B"},
    {"GreaterShort", "A GREATER B", "A > B"},
    {"Exceeds", "A EXCEEDS B", "A > B"},
    {"NotGreater", "A IS NOT GREATER THAN B", "A NOT > B"},
    {"GreaterOrEqual", "A IS GREATER THAN OR EQUAL TO B", "A >= B"},
    {"GreaterOrEqualSign", "A >= B", "A >= B"},
    {"Less", "A IS LESS THAN B", "A < B"},
    {"NotLess", "A NOT < B", "A NOT < B"},
    {"LessOrEqual", "A LESS THAN OR EQUAL TO B", "A <= B"},
    {"LessOrEqualSign", "A <= B", "A <= B"},
    {"LowerCaseStays", "a = c", "a = c"},
    {"And", "A = 1   AND  B = 2", "A = 1 AND B = 2"},
    {"Or", "A = 1 OR B = 2 AND A > 3", "A = 1 OR B = 2 AND A > 3"},
    {"Not", "NOT A = 1", "NOT A = 1"},
    {"Parentheses", "( A = 1 OR B = 2 ) AND NOT ( A > 3 )", "(A = 1 OR B = 2) AND NOT (A > 3)"},
    {"AbbreviatedObject", "A = 1 OR 2", "A = 1 OR 2"},
    {"AbbreviatedRelation", "A = 1 OR 2 AND NOT > 3", "A = 1 OR 2 AND NOT > 3"},
    {"AbbreviatedWords", "A EQUAL TO 1 OR GREATER THAN 7", "A = 1 OR > 7"},
    {"AbbreviatedNot", "A = 1 AND NOT 2", "A = 1 AND NOT 2"},
    {"Numeric", "D IS NUMERIC", "D NUMERIC"},
    {"NotNumeric", "D IS NOT NUMERIC", "D NOT NUMERIC"},
    {"Alphabetic", "D ALPHABETIC", "D ALPHABETIC"},
    {"AlphabeticLower", "D IS ALPHABETIC-LOWER", "D ALPHABETIC-LOWER"},
    {"AlphabeticUpper", "D IS ALPHABETIC-UPPER", "D ALPHABETIC-UPPER"},
    {"Positive", "A IS POSITIVE", "A POSITIVE"},
    {"Negative", "A - B IS NOT NEGATIVE", "A - B NOT NEGATIVE"},
    {"ZeroSign", "A IS ZERO", "A ZERO"},
    {"ZeroSignTwice", "A POSITIVE OR ZERO", "A POSITIVE OR ZERO"},
    {"ZeroValue", "A = ZERO", "A = ZERO"},
    {"ConditionName", "D-IS-SET", "D-IS-SET"},
    {"NotConditionName", "NOT D-IS-SET AND A = 1", "NOT D-IS-SET AND A = 1"},
    {"Arithmetic", "A + B * ( 2 - A ) > - B ** 2", "A + B * (2 - A) > - B ** 2"},
    {"SignedNumber", "A > -1", "A > -1"},
    {"Subscript", "E ( I ) = E (I + 1)", "E(I) = E(I + 1)"},
    {"ReferenceModification", "D (1 : 2) = 'AB'", "D(1:2) = 'AB'"},
    {"Function", "FUNCTION LENGTH ( D ) > 5", "FUNCTION LENGTH(D) > 5"},
    {"Qualified", "E OF T (1) = 1", "E OF T(1) = 1"},
    {"Pointer", "P = NULL", "P = NULL"},
    {"AddressOf", "ADDRESS OF D = P", "ADDRESS OF D = P"},
    {"LengthOf", "LENGTH OF D > 5", "LENGTH OF D > 5"},
    {"AllLiteral", "D = ALL 'X'", "D = ALL 'X'"},
    {"CicsResponse", "A = DFHRESP(NORMAL)", "A = DFHRESP(NORMAL)"},
    {"OverRows", "A = 1\n       OR\n       B = 2", "A = 1 OR B = 2"},
};

INSTANTIATE_TEST_SUITE_P(Of, ConditionText, testing::ValuesIn(kConditions),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(Conditions, OperandsAreRead) {
  const auto model = CobolModel::Of(kConditionData, R"(MAIN-PARA.
    IF $a[[A]] > $one[[1]] AND $flag[[D-IS-SET]] OR $e[[E ($i[[I]])]] = $length[[LENGTH OF D]]
        CONTINUE.
)");
  EXPECT_EQ(model.At("a"), "VAR A OUT Source 5");
  EXPECT_EQ(model.At("one"), "CONST 1 Source");
  EXPECT_EQ(model.At("flag"), "VAR D-IS-SET OUT Source 9");
  EXPECT_EQ(model.At("e"), "VAR E OUT Source 11");
  EXPECT_EQ(model.At("i"), "VAR I OUT Subscript 11");
  EXPECT_EQ(model.At("length"), "VAR D LengthOf 8");
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
}

TEST(Conditions, NamesOfClassesAndSwitchesAreReferences) {
  const CobolModel model(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. PROBE.
       ENVIRONMENT DIVISION.
       CONFIGURATION SECTION.
       SPECIAL-NAMES.
           UPSI-0 IS SWITCH-0 ON STATUS IS SWITCH-IS-ON
           CLASS HEX-DIGITS IS '0' THRU '9' 'A' THRU 'F'.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  D PIC X.
       PROCEDURE DIVISION.
       MAIN-PARA.
           IF D IS NOT $class[[HEX-DIGITS]] AND $switch[[SWITCH-IS-ON]]
               GOBACK.
)");
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  EXPECT_THAT(model.Conditions(), ElementsAre("D NOT HEX-DIGITS AND SWITCH-IS-ON"));
  EXPECT_THAT(model.At("class"), testing::StartsWith("REF HEX-DIGITS"));
  EXPECT_NE(model.At("switch"), "nothing");
}

struct FaultCase {
  std::string_view name, written, diagnostic;
};

class ConditionFault : public testing::TestWithParam<FaultCase> {};

TEST_P(ConditionFault, CostsTheConditionOnly) {
  const auto model = CobolModel::Of(kConditionData, "MAIN-PARA.\n    IF " + std::string(GetParam().written) +
                                                        "\n        MOVE A TO B.\n    MOVE B TO A.\n");
  EXPECT_THAT(model.Diagnostics(), ElementsAre(GetParam().diagnostic));
  EXPECT_THAT(model.Statements(), ElementsAre("15 IF", "16 MOVE", "17 MOVE"));
  EXPECT_NE(model.Node(model.Find(workbench::codemodel::Entity::If, "IF")).flags & workbench::codemodel::kGap, 0);
}

constexpr FaultCase kConditionFaults[] = {
    {"Missing", "", "gap 16:16 A condition is missing."},
    {"OperandMissing", "A =", "gap 16:16 An operand is missing in the condition."},
    {"ParenthesisMissing", "(A = 1 AND B = 2", "gap 16:16 A closing parenthesis is missing."},
    {"ParenthesisTooMany", "A = 1)", "gap 15:20 ) does not fit into the condition."},
    {"RelationUnknown", "A GRATER B", "gap 15:17 GRATER does not fit into the condition."},
    {"NameUnknown", "A = WRONG", "gap 15:19 WRONG is not declared."},
};

INSTANTIATE_TEST_SUITE_P(Of, ConditionFault, testing::ValuesIn(kConditionFaults),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace qmrules::test
