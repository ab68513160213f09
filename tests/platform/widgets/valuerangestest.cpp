#include <gtest/gtest.h>

#include "platform/widgets/scrollbar.h"
#include "platform/widgets/updown.h"

namespace qmrules::platform::widgets {
namespace {

TEST(ScrollBar, ValuesAreCutToTheRange) {
  ScrollBar bar("vScroll");
  int told = 0;
  const auto changes = bar.OnValueChanged.Subscribe([&] { ++told; });
  bar.SetRange(0, 10);
  bar.SetValue(25);
  EXPECT_EQ(bar.Value(), 10);
  bar.SetRange(0, 4);
  EXPECT_EQ(bar.Value(), 4);
  EXPECT_EQ(told, 2);
  bar.SetRange(3, 1);
  EXPECT_EQ(bar.Max(), 3);
  EXPECT_EQ(bar.Value(), 3);
}

TEST(ScrollBar, StepsAndPagesMoveByTheirSizes) {
  ScrollBar bar("vScroll");
  bar.SetRange(0, 100);
  bar.SetSmallChange(2);
  bar.SetLargeChange(30);
  EXPECT_TRUE(bar.Page(1));
  EXPECT_TRUE(bar.Step(-3));
  EXPECT_EQ(bar.Value(), 24);
  EXPECT_TRUE(bar.ScrollTo(90));
  EXPECT_EQ(bar.Value(), 90);
  bar.SetVisible(false);
  EXPECT_FALSE(bar.Step(1));
  EXPECT_EQ(bar.Value(), 90);
}

TEST(UpDown, CountsTheNumberInItsField) {
  TextBox field("txtLen");
  UpDown arrows("udLen");
  arrows.SetBuddy(&field);
  arrows.SetRange(1, 255);
  field.SetText("254");
  EXPECT_TRUE(arrows.Up());
  EXPECT_EQ(field.Text(), "255");
  EXPECT_FALSE(arrows.Up());
  EXPECT_TRUE(arrows.Down());
  EXPECT_EQ(field.Text(), "254");
  EXPECT_EQ(arrows.Value(), 254);
}

TEST(UpDown, ATextThatIsNoNumberCountsFromTheLeast) {
  TextBox field("txtLen");
  UpDown arrows("udLen");
  arrows.SetBuddy(&field);
  arrows.SetRange(1, 255);
  field.SetText("wide");
  EXPECT_EQ(arrows.Value(), 1);
  EXPECT_TRUE(arrows.Up());
  EXPECT_EQ(field.Text(), "2");
  field.SetText("9999");
  EXPECT_EQ(arrows.Value(), 255);
}

TEST(UpDown, DoesNothingWithoutAUsableField) {
  UpDown arrows("udLen");
  EXPECT_FALSE(arrows.Up());
  TextBox field("txtLen");
  arrows.SetBuddy(&field);
  field.SetText("7");
  field.SetEnabled(false);
  EXPECT_FALSE(arrows.Up());
  EXPECT_EQ(field.Text(), "7");
}

}  // namespace
}  // namespace qmrules::platform::widgets
