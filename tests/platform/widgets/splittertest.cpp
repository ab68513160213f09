#include "platform/widgets/splitter.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace qmrules::platform::widgets {
namespace {

using Names = std::vector<std::string>;

class SplitterTest : public testing::Test {
 protected:
  SplitterTest() {
    splitter.Reset("All");
    splitter.Split("All", {"Objects", "Properties", SplitDirection::SideBySide, 333});
    splitter.Split("Properties", {"Descriptions", "Others", SplitDirection::Stacked, 500});
  }

  Splitter splitter{"spSplitter"};
};

TEST_F(SplitterTest, PanesComeFirstBeforeSecond) {
  EXPECT_EQ(splitter.Panes(), (Names{"Objects", "Descriptions", "Others"}));
}

TEST_F(SplitterTest, TheLayoutTextGivesTheLayoutBack) {
  const std::string text = splitter.LayoutText();
  EXPECT_EQ(text, "All(h333 Objects,Properties(v500 Descriptions,Others))");
  Splitter other("spOther");
  EXPECT_TRUE(other.SetLayoutText(text));
  EXPECT_EQ(other.LayoutText(), text);
  EXPECT_EQ(other.Root().second->direction, SplitDirection::Stacked);
  EXPECT_EQ(other.Share("All"), 333);
}

TEST_F(SplitterTest, AMalformedLayoutTextIsRefusedAndKeepsTheLayout) {
  const std::string before = splitter.LayoutText();
  int told = 0;
  const auto changes = splitter.OnChanged.Subscribe([&] { ++told; });
  for (const char* text : {"",
                           "(",
                           "All(",
                           "All()",
                           "All(h500)",
                           "All(h500 A)",
                           "All(h500 A,B",
                           "All(h500 A,B))",
                           "All(x500 A,B)",
                           "All(500 A,B)",
                           "All(h A,B)",
                           "All(h0 A,B)",
                           "All(h1000 A,B)",
                           "All(h-5 A,B)",
                           "All(h99999999999 A,B)",
                           "All(h500A,B)",
                           "All(h500 A;B)",
                           "All(h500 A,A)",
                           "All(h500 A,All)",
                           "All(h500 A,B) ",
                           " All",
                           "A-B"}) {
    EXPECT_FALSE(splitter.SetLayoutText(text)) << text;
  }
  EXPECT_EQ(splitter.LayoutText(), before);
  EXPECT_EQ(told, 0);
}

TEST_F(SplitterTest, AnEndlesslyDeepLayoutTextIsRefused) {
  std::string text;
  for (int depth = 0; depth < 100000; ++depth) text += "P" + std::to_string(depth) + "(h500 ";
  EXPECT_FALSE(splitter.SetLayoutText(text));
}

TEST_F(SplitterTest, ALayoutWithOtherThanTheRequiredPanesIsRefused) {
  splitter.SetRequiredPanes({"Objects", "Descriptions", "Others"});
  EXPECT_FALSE(splitter.SetLayoutText("All(h500 Objects,Others)"));
  EXPECT_FALSE(splitter.SetLayoutText("All(h500 Objects,Right(v500 Descriptions,Other))"));
  EXPECT_FALSE(splitter.SetLayoutText("All(h500 Objects,Right(v500 Descriptions,Low(h500 Others,More)))"));
  EXPECT_TRUE(splitter.SetLayoutText("All(v500 Others,Low(h400 Objects,Descriptions))"));
  EXPECT_EQ(splitter.Panes(), (Names{"Others", "Objects", "Descriptions"}));
}

TEST_F(SplitterTest, OnlyUndividedPanesAreDivided) {
  EXPECT_THROW(splitter.Split("Properties", {"A", "B"}), std::invalid_argument);
  EXPECT_THROW(splitter.Split("Gone", {"A", "B"}), std::invalid_argument);
  EXPECT_THROW(splitter.Split("Others", {"A", "Objects"}), std::invalid_argument);
  EXPECT_THROW(splitter.Split("Others", {"A", "A"}), std::invalid_argument);
  EXPECT_THROW(splitter.Split("Others", {"A", "B,C"}), std::invalid_argument);
  EXPECT_THROW(splitter.Split("Others", {"A", "B", SplitDirection::Stacked, 1000}), std::invalid_argument);
  EXPECT_THROW(splitter.Reset(""), std::invalid_argument);
  EXPECT_EQ(splitter.Panes(), (Names{"Objects", "Descriptions", "Others"}));
}

TEST_F(SplitterTest, DraggingABarChangesTheShareWithinItsLimits) {
  EXPECT_TRUE(splitter.Drag("Properties", 620));
  EXPECT_EQ(splitter.Share("Properties"), 620);
  splitter.Drag("All", -40);
  EXPECT_EQ(splitter.Share("All"), 1);
  splitter.Drag("All", 4000);
  EXPECT_EQ(splitter.Share("All"), 999);
  EXPECT_THROW(splitter.Drag("Objects", 500), std::out_of_range);
  splitter.SetEnabled(false);
  EXPECT_FALSE(splitter.Drag("Properties", 100));
  EXPECT_EQ(splitter.Share("Properties"), 620);
}

TEST_F(SplitterTest, ResetGoesBackToOnePane) {
  splitter.Reset("Whole");
  EXPECT_EQ(splitter.LayoutText(), "Whole");
  EXPECT_THROW(splitter.Share("Whole"), std::out_of_range);
}

TEST_F(SplitterTest, TheLayoutIsSwitchedOnApart) {
  EXPECT_FALSE(splitter.On());
  splitter.SetOn(true);
  EXPECT_TRUE(splitter.On());
}

}  // namespace
}  // namespace qmrules::platform::widgets
