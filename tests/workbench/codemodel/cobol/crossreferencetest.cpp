#include "workbench/codemodel/crossreference.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "support/memorysources.h"
#include "workbench/codemodel/cobol/cobolfrontend.h"

namespace qmrules::workbench::codemodel {
namespace {

constexpr const char* kProgram = R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. RATES.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  POLICY.
           05  PARTS.
               10  AMOUNT  PIC 9(5).
       01  TOTALS.
           05  AMOUNT  PIC 9(7).
       PROCEDURE DIVISION.
       FIRST-PART SECTION.
           MOVE 1 TO AMOUNT OF POLICY.
           MOVE 2 TO AMOUNT OF TOTALS.
           MOVE 3 TO AMOUNT.
           MOVE 4 TO NOWHERE.
           PERFORM LAST-PART.
       LAST-PART.
           STOP RUN.
)";

class CrossReferenceTest : public testing::Test {
 protected:
  CrossReferenceTest() {
    test::MemorySources sources{{"rates.cbl", kProgram}};
    cobol::CobolFrontEnd frontEnd(sources, {});
    auto programs = frontEnd.Translate("rates.cbl", [] { return false; });
    model_ = ModelImage::FromBytes(SerializeModel(programs.at(0).model), "rates");
  }
  // Rows of the declarations, then of the occurrences: "7 9: 12 13".
  std::string Rows(std::string_view name) const {
    const auto found = FindCrossReference(*model_, name);
    std::string text;
    for (const NodeId node : found.declarations) text += fmt::format("{} ", model_->Nodes()[node].firstRow);
    text += ":";
    for (const NodeId node : found.occurrences) text += fmt::format(" {}", model_->Nodes()[node].firstRow);
    return text;
  }

  std::shared_ptr<const ModelImage> model_;
};

TEST_F(CrossReferenceTest, ANameStandsForAllThatHasIt) {
  EXPECT_EQ(Rows("amount"), "7 9 : 12 13 14");
}

TEST_F(CrossReferenceTest, QualifiersChoose) {
  EXPECT_EQ(Rows("AMOUNT OF TOTALS"), "9 : 13");
  EXPECT_EQ(Rows("AMOUNT  in policy"), "7 : 12");
  EXPECT_EQ(Rows("AMOUNT OF PARTS IN POLICY"), "7 : 12");
  EXPECT_EQ(Rows("AMOUNT OF POLICY IN PARTS"), ":");
}

TEST_F(CrossReferenceTest, SectionsAndParagraphsAreNamesToo) {
  EXPECT_EQ(Rows("LAST-PART"), "17 : 16");
  EXPECT_EQ(Rows("LAST-PART OF FIRST-PART"), "17 : 16");
  EXPECT_EQ(Rows("FIRST-PART"), "11 :");
}

TEST_F(CrossReferenceTest, ANameThatIsDeclaredNowhereHasItsOccurrences) {
  EXPECT_EQ(Rows("NOWHERE"), ": 15");
  EXPECT_EQ(Rows("NEVER"), ":");
  EXPECT_EQ(Rows("  "), ":");
}

TEST_F(CrossReferenceTest, SimilarNamesComeClosestFirst) {
  EXPECT_EQ(FindSimilarNames(*model_, "TOTLAS", 3), std::vector<std::string>{"TOTALS"});
  EXPECT_EQ(FindSimilarNames(*model_, "FAST-PART", 3), (std::vector<std::string>{"LAST-PART", "FIRST-PART"}));
  EXPECT_EQ(FindSimilarNames(*model_, "FAST-PART", 1), std::vector<std::string>{"LAST-PART"});
  EXPECT_TRUE(FindSimilarNames(*model_, "XYZ", 3).empty());
  EXPECT_TRUE(FindSimilarNames(*model_, "", 3).empty());
}

}  // namespace
}  // namespace qmrules::workbench::codemodel
