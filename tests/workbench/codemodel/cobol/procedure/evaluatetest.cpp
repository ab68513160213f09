// EVALUATE: what its WHENs ask, and whose branch is whose.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/cobolmodel.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kEvaluateData = R"(01  KIND PIC X.
01  A PIC 9(4).
01  B PIC 9(4).
01  C PIC X.
    88  C-IS-SET VALUE 'A'.
)";

struct WhenCase {
  std::string_view name, subjects, objects, text;
};

class WhenText : public testing::TestWithParam<WhenCase> {};

TEST_P(WhenText, TellsTheConditionInFull) {
  const auto model = CobolModel::Of(kEvaluateData, "MAIN-PARA.\n    EVALUATE " + std::string(GetParam().subjects) +
                                                       "\n        WHEN " + std::string(GetParam().objects) +
                                                       "\n            CONTINUE\n    END-EVALUATE.\n");
  EXPECT_THAT(model.Conditions(), ElementsAre(GetParam().text));
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
}

constexpr WhenCase kWhenCases[] = {
    {"Value", "KIND", "'A'", "KIND = 'A'"},
    {"NotValue", "KIND", "NOT 'A'", "KIND NOT = 'A'"},
    {"Range", "A", "1 THRU 5", "A >= 1 AND A <= 5"},
    {"NotRange", "A", "NOT 1 THROUGH 5", "NOT (A >= 1 AND A <= 5)"},
    {"SignedRange", "A", "-1 THRU B + 1", "A >= -1 AND A <= B + 1"},
    {"Expression", "A + B", "B * 2", "A + B = B * 2"},
    {"Relation", "A", "> 5", "A > 5"},
    {"NotRelation", "A", "NOT > 5", "A NOT > 5"},
    {"True", "TRUE", "A = 1 AND B = 2", "A = 1 AND B = 2"},
    {"TrueName", "TRUE", "C-IS-SET", "C-IS-SET"},
    {"TrueNot", "TRUE", "NOT C-IS-SET", "NOT C-IS-SET"},
    {"False", "FALSE", "A = 1", "NOT A = 1"},
    {"FalseCompound", "FALSE", "A = 1 OR B = 2", "NOT (A = 1 OR B = 2)"},
    {"Condition", "A > B", "TRUE", "A > B"},
    {"NotCondition", "A > B", "FALSE", "NOT (A > B)"},
    {"Any", "A", "ANY", "ANY"},
    {"Also", "KIND ALSO A", "'A' ALSO 5", "KIND = 'A' AND A = 5"},
    {"AlsoAny", "KIND ALSO A", "ANY ALSO 5", "A = 5"},
    {"AlsoTrue", "KIND ALSO TRUE", "'A' ALSO A = 1 OR B = 1", "KIND = 'A' AND (A = 1 OR B = 1)"},
    {"Group", "KIND", "'A' WHEN 'B' WHEN 'C' THRU 'E'", "KIND = 'A' OR KIND = 'B' OR KIND >= 'C' AND KIND <= 'E'"},
    {"GroupOfAlso", "KIND ALSO A", "'A' ALSO 1 WHEN 'B' ALSO ANY", "KIND = 'A' AND A = 1 OR KIND = 'B'"},
    {"Literal", "5", "A", "5 = A"},
};

INSTANTIATE_TEST_SUITE_P(Of, WhenText, testing::ValuesIn(kWhenCases),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(Evaluate, HasAConditionAndABlockForEachGroup) {
  const auto model = CobolModel::Of(kEvaluateData, R"(MAIN-PARA.
    EVALUATE KIND ALSO TRUE
        WHEN 'A' ALSO B = 1
        WHEN 'B' ALSO ANY
            CONTINUE
        WHEN OTHER
            GOBACK
    END-EVALUATE
    STOP RUN.
)");
  EXPECT_EQ(model.Tree(), R"(PORT ENTRY
PAR MAIN-PARA
  IF Evaluate
    VAR KIND OUT Subject
    COND KIND = 'A' AND B = 1 OR KIND = 'B'
      VAR KIND OUT Subject implicit
      CONST 'A' Source
      VAR B OUT Source
      CONST 1 Source
      VAR KIND OUT Subject implicit
      CONST 'B' Source
    BLOCK Then
      STAT CONTINUE
    BLOCK Else
      PORT GOBACK
  PORT STOP RUN
)");
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
}

TEST(Evaluate, NestsAndEndsWithTheSentence) {
  const auto model = CobolModel::Of(kEvaluateData, R"(MAIN-PARA.
    EVALUATE TRUE
        WHEN A = 1
            EVALUATE B
                WHEN 1 CONTINUE
                WHEN 2 CONTINUE
            END-EVALUATE
        WHEN A = 2
            CONTINUE.
    STOP RUN.
)");
  EXPECT_EQ(model.Outline(), R"(PORT ENTRY
PAR MAIN-PARA
  IF Evaluate
    COND A = 1
    BLOCK Then
      IF Evaluate
        COND B = 1
        BLOCK Then
          STAT CONTINUE
        COND B = 2
        BLOCK Then
          STAT CONTINUE
    COND A = 2
    BLOCK Then
      STAT CONTINUE
  PORT STOP RUN
)");
}

TEST(Evaluate, MoreObjectsThanSubjectsAreAGap) {
  const auto model = CobolModel::Of(kEvaluateData, R"(MAIN-PARA.
    EVALUATE A
        WHEN 1 ALSO B = 2
            CONTINUE
    END-EVALUATE.
)");
  EXPECT_THAT(model.Diagnostics(), ElementsAre("gap 13:28 This WHEN has more objects than the EVALUATE has subjects."));
}

}  // namespace
}  // namespace qmrules::test
