#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/error.h"
#include "workbench/repository/filter.h"

namespace qmrules::workbench::repository {
namespace {

std::string Rewritten(std::string_view filter) {
  return ToText(*ParseFilter(filter));
}

TEST(FilterText, WritesTheShortestGrouping) {
  EXPECT_EQ(Rewritten("((A=1)&((B=2)))|(C=3)"), "A=1&B=2|C=3");
  EXPECT_EQ(Rewritten("~((A=1|B=2)&~(C=3))"), "~((A=1|B=2)&~C=3)");
}

TEST(FilterText, KeepsTheGroupsThatMakeTheShape) {
  EXPECT_EQ(Rewritten("(A=1&B=2)&C=3"), "(A=1&B=2)&C=3");
  EXPECT_EQ(Rewritten("A=1|(B=2|C=3)"), "A=1|(B=2|C=3)");
}

TEST(FilterText, WritesEveryOperator) {
  for (const char* filter : {"A=1", "A<>1", "A<1", "A<=1", "A>1", "A>=1", "A like 1", "A in (1,b)", "ID in (1,2)"}) {
    EXPECT_EQ(Rewritten(filter), filter);
  }
}

TEST(FilterText, EscapesWhatIsNoData) {
  EXPECT_EQ(Rewritten("A=f(a&b)~,\\\\"), "A=f\\(a\\&b\\)\\~\\,\\\\");
}

TEST(FilterText, EscapesABeginningThatTheOperatorWouldTake) {
  EXPECT_EQ(Rewritten("A<\\=1"), "A<\\=1");
  EXPECT_EQ(Rewritten("A>\\=1"), "A>\\=1");
  EXPECT_EQ(Rewritten("A<\\>1"), "A<\\>1");
  EXPECT_EQ(Rewritten("A like \\ x"), "A like \\ x");
  EXPECT_EQ(Rewritten("A== x"), "A== x");
}

TEST(FilterText, ColumnsDoNotCountInComparing) {
  EXPECT_TRUE(*ParseFilter("  A=1&B in x,y") == *ParseFilter("A=1&B in (x,y)"));
}

TEST(FilterText, DifferentTreesAreUnequal) {
  const std::vector<std::string> filters = {"A=1",       "A=2",         "B=1",    "A<1",      "~A=1",         "A=1&B=1",
                                            "A=1|B=1",   "A=1&B=1&C=1", "A in 1", "A in 2",   "A in 1,1",     "ID in 1",
                                            "ID in 1,2", "ID in 2,1",   "a=1",    "A like 1", "(A=1&B=1)&C=1"};
  for (std::size_t i = 0; i < filters.size(); ++i) {
    for (std::size_t j = 0; j < filters.size(); ++j) {
      EXPECT_EQ(*ParseFilter(filters[i]) == *ParseFilter(filters[j]), i == j) << filters[i] << " and " << filters[j];
    }
  }
}

// Makes trees of every shape that the language can say, with values rich in what is syntax elsewhere.
class TreeMaker {
 public:
  explicit TreeMaker(std::uint32_t seed) : random_(seed) {}

  FilterExpression Make(int depth) {
    switch (depth == 0 ? 0 : Below(5)) {
      case 0:
      case 1:
        return {MakeComparison()};
      case 2:
        return {FilterNot{std::make_unique<FilterExpression>(Make(depth - 1))}};
      case 3:
        return {FilterAnd{MakeChildren(depth - 1)}};
      default:
        return {FilterOr{MakeChildren(depth - 1)}};
    }
  }

  std::string MakeText(std::string_view alphabet, int longest) {
    std::string text;
    for (int i = Below(longest + 1); i > 0; --i) text += alphabet[random_() % alphabet.size()];
    return text;
  }

 private:
  int Below(int bound) { return static_cast<int>(random_() % static_cast<std::uint32_t>(bound)); }

  std::vector<FilterExpression> MakeChildren(int depth) {
    std::vector<FilterExpression> children;
    for (int i = 2 + Below(3); i > 0; --i) children.push_back(Make(depth));
    return children;
  }

  Comparison MakeComparison() {
    static constexpr std::string_view kData = "ab &|~()<>=,\\\n\xC3\xA9";
    Comparison comparison;
    comparison.name = Below(4) == 0 ? "ID" : "Name";
    comparison.op = static_cast<FilterOperator>(Below(8));
    if (comparison.op != FilterOperator::In) {
      comparison.value = MakeText(kData, 6);
    } else if (comparison.name == "ID") {
      for (std::int64_t i = 1 + Below(4); i > 0; --i) comparison.ids.push_back(i * 7);
    } else {
      // A list of nothing but one empty text has no form in the language.
      comparison.items.push_back({"x" + MakeText(kData, 5), 0});
      for (int i = Below(4); i > 0; --i) comparison.items.push_back({MakeText(kData, 5), 0});
    }
    return comparison;
  }

  std::mt19937 random_;
};

TEST(FilterText, EveryTreeComesBackFromItsText) {
  TreeMaker maker(20240917);
  for (int i = 0; i < 20000; ++i) {
    const FilterExpression tree = maker.Make(i % 6);
    const std::string text = ToText(tree);
    const auto read = ParseFilter(text);
    ASSERT_NE(read, nullptr) << text;
    ASSERT_TRUE(*read == tree) << text;
  }
}

TEST(FilterText, EveryTextThatIsReadComesBackEqual) {
  TreeMaker maker(8128);
  int count = 0;
  for (int i = 0; i < 200000; ++i) {
    const std::string text = maker.MakeText("A=A=1&|~()\\, <>", 14);
    std::unique_ptr<FilterExpression> tree;
    try {
      tree = ParseFilter(text);
    } catch (const platform::Error& error) {
      ASSERT_TRUE(std::string_view(error.what()).starts_with("filter \"" + text + "\" column ")) << error.what();
      continue;
    }
    if (!tree) continue;
    ++count;
    ASSERT_TRUE(*ParseFilter(ToText(*tree)) == *tree) << text;
  }
  EXPECT_GT(count, 1000);
}

}  // namespace
}  // namespace qmrules::workbench::repository
