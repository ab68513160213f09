#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/widgets/checkbox.h"
#include "platform/widgets/combobox.h"
#include "platform/widgets/optiongroup.h"
#include "platform/widgets/tabstrip.h"

namespace qmrules::platform::widgets {
namespace {

class ComboBoxTest : public testing::Test {
 protected:
  ComboBoxTest() {
    combo.Add({"Billing", 11, "f11", "yes"});
    combo.Add({"Claims", 12, "f12", {}});
    combo.Add({"Policies", 13, {}, {}});
  }

  ComboBox combo{"cmbFunction"};
  int clicks = 0;
  Subscription click = combo.OnClick.Subscribe([this] { ++clicks; });
};

TEST_F(ComboBoxTest, BeginsWithoutAChoice) {
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_EQ(combo.SelectedItem(), nullptr);
  EXPECT_EQ(combo.Text(), "");
}

TEST_F(ComboBoxTest, AChoiceByTheLogicClicksWhenItIsAnother) {
  combo.SetListIndex(1);
  combo.SetListIndex(1);
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(combo.Text(), "Claims");
  EXPECT_EQ(combo.SelectedItem()->itemData, 12);
  combo.SetListIndex(-1);
  EXPECT_EQ(clicks, 2);
  EXPECT_EQ(combo.Text(), "");
  EXPECT_THROW(combo.SetListIndex(3), std::out_of_range);
  EXPECT_THROW(combo.SetListIndex(-2), std::out_of_range);
}

TEST_F(ComboBoxTest, AChoiceByTheUserAlwaysClicks) {
  EXPECT_TRUE(combo.Choose(0));
  EXPECT_TRUE(combo.Choose(0));
  EXPECT_TRUE(combo.ChooseText("Policies"));
  EXPECT_FALSE(combo.ChooseText("policies"));
  EXPECT_EQ(clicks, 3);
  EXPECT_EQ(combo.ListIndex(), 2);
  combo.SetEnabled(false);
  EXPECT_FALSE(combo.Choose(0));
  EXPECT_EQ(combo.ListIndex(), 2);
}

TEST_F(ComboBoxTest, ItemsAreFoundByKeyTextAndData) {
  EXPECT_EQ(combo.IndexOfKey("F12"), 1);
  EXPECT_EQ(combo.IndexOfText("Policies"), 2);
  EXPECT_EQ(combo.IndexOfText("policies"), -1);
  EXPECT_EQ(combo.IndexOfItemData(11), 0);
  EXPECT_EQ(combo.IndexOfItemData(99), -1);
  EXPECT_EQ(combo.Item(0).tag, "yes");
}

TEST_F(ComboBoxTest, AKeyStandsOnceAndAnEmptyOneOften) {
  EXPECT_FALSE(combo.Add({"Other", 14, "F11", {}}));
  EXPECT_TRUE(combo.Add({"Billing", 14, {}, {}}));
  EXPECT_EQ(combo.Count(), 4);
}

TEST_F(ComboBoxTest, TheChoiceStaysWithItsItem) {
  combo.SetListIndex(2);
  combo.Remove(0);
  EXPECT_EQ(combo.ListIndex(), 1);
  EXPECT_EQ(combo.Text(), "Policies");
  combo.Remove(1);
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_EQ(combo.Text(), "");
  EXPECT_EQ(clicks, 1);
  EXPECT_THROW(combo.Remove(1), std::out_of_range);
}

TEST_F(ComboBoxTest, ClearLeavesNothing) {
  combo.SetListIndex(2);
  combo.Clear();
  EXPECT_EQ(combo.Count(), 0);
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_EQ(combo.Text(), "");
  EXPECT_EQ(clicks, 1);
}

TEST_F(ComboBoxTest, AChoiceOnlyListTakesNoTypedText) {
  EXPECT_FALSE(combo.Enter("Else"));
  combo.SetText("Else");
  EXPECT_EQ(combo.Text(), "");
}

TEST_F(ComboBoxTest, AnEditableListTakesATextOfItsOwnOrOfAnItem) {
  combo.SetEditable(true);
  int told = 0;
  const auto changes = combo.OnTextChanged.Subscribe([&] { ++told; });
  EXPECT_TRUE(combo.Enter("Else"));
  EXPECT_EQ(combo.Text(), "Else");
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_TRUE(combo.Enter("Claims"));
  EXPECT_EQ(combo.ListIndex(), 1);
  EXPECT_EQ(told, 2);
  EXPECT_EQ(clicks, 0);
}

TEST_F(ComboBoxTest, ArrowKeysChooseTheNeighbour) {
  EXPECT_TRUE(combo.PressKey(Key::Down));
  EXPECT_TRUE(combo.PressKey(Key::Down));
  EXPECT_EQ(combo.ListIndex(), 1);
  EXPECT_TRUE(combo.PressKey(Key::Up));
  EXPECT_FALSE(combo.PressKey(Key::Up));
  EXPECT_EQ(combo.ListIndex(), 0);
}

TEST(CheckBox, AClickTurnsTheTickOverAndIsTold) {
  CheckBox box("chkProject");
  int clicks = 0;
  const auto click = box.OnClick.Subscribe([&] { ++clicks; });
  EXPECT_TRUE(box.Click());
  EXPECT_TRUE(box.Checked());
  EXPECT_TRUE(box.PressKey(Key::Space));
  EXPECT_FALSE(box.Checked());
  box.SetChecked(true);
  box.SetChecked(true);
  EXPECT_EQ(clicks, 3);
  box.SetEnabled(false);
  EXPECT_FALSE(box.Click());
  EXPECT_TRUE(box.Checked());
}

class OptionGroupTest : public testing::Test {
 protected:
  OptionGroupTest() {
    options.Add("I&/O", "I/O");
    options.Add("&Input", "Input");
    options.Add("&Output", "Output");
  }

  OptionGroup options{"optType"};
  std::string clicks;
  Subscription click = options.OnClick.Subscribe([this](int index) { clicks += std::to_string(index) + " "; });
};

TEST_F(OptionGroupTest, OneOptionIsChosenAtMost) {
  EXPECT_EQ(options.Value(), -1);
  options.SetValue(0);
  EXPECT_TRUE(options.Choose(2));
  EXPECT_TRUE(options.Choose(2));
  EXPECT_EQ(options.Value(), 2);
  EXPECT_EQ(options.OptionTag(2), "Output");
  options.SetValue(-1);
  EXPECT_EQ(clicks, "0 2 ");
}

TEST_F(OptionGroupTest, UnknownOptionsAreRefused) {
  EXPECT_THROW(options.SetValue(3), std::out_of_range);
  EXPECT_THROW(options.Choose(-1), std::out_of_range);
  EXPECT_THROW(options.Caption(3), std::out_of_range);
}

TEST_F(OptionGroupTest, ADoubleClickChoosesFirst) {
  int doubleClicked = -1;
  const auto doubleClick = options.OnDoubleClick.Subscribe([&](int index) { doubleClicked = index; });
  EXPECT_TRUE(options.DoubleClick(1));
  EXPECT_EQ(options.Value(), 1);
  EXPECT_EQ(doubleClicked, 1);
}

TEST_F(OptionGroupTest, KeysWalkThroughTheOptions) {
  EXPECT_TRUE(options.PressKey(Key::Space));
  EXPECT_EQ(options.Value(), 0);
  options.PressKey(Key::Down);
  options.PressKey(Key::Down);
  EXPECT_FALSE(options.PressKey(Key::Down));
  EXPECT_EQ(options.Value(), 2);
  options.PressKey(Key::Up);
  EXPECT_EQ(options.Value(), 1);
}

TEST_F(OptionGroupTest, ADisabledGroupCannotBeChosenFrom) {
  options.SetEnabled(false);
  EXPECT_FALSE(options.Choose(1));
  EXPECT_EQ(options.Value(), -1);
}

TEST_F(OptionGroupTest, CaptionsCanChange) {
  options.SetCaption(1, "&In");
  EXPECT_EQ(options.Caption(1), "&In");
  EXPECT_EQ(options.Count(), 3);
}

class TabStripTest : public testing::Test {
 protected:
  TabStripTest() {
    tabs.Add("Description", "Description");
    tabs.Add("Business", "Business Description");
  }

  TabStrip tabs{"tsDescrs"};
  int clicks = 0;
  Subscription click = tabs.OnClick.Subscribe([this] { ++clicks; });
};

TEST_F(TabStripTest, TheFirstTabIsInFront) {
  EXPECT_EQ(tabs.Selected(), "Description");
  EXPECT_EQ(TabStrip("tsEmpty").Selected(), "");
}

TEST_F(TabStripTest, AClickBringsATabToTheFront) {
  EXPECT_TRUE(tabs.Choose("business"));
  EXPECT_EQ(tabs.Selected(), "Business");
  EXPECT_TRUE(tabs.Choose("Business"));
  EXPECT_EQ(clicks, 2);
  tabs.SetSelected("Business");
  tabs.SetSelected("Description");
  EXPECT_EQ(clicks, 3);
}

TEST_F(TabStripTest, KeysStandOnceAndUnknownOnesAreRefused) {
  EXPECT_FALSE(tabs.Add("BUSINESS", "Again"));
  EXPECT_THROW(tabs.Choose("Gone"), std::out_of_range);
  EXPECT_THROW(tabs.SetCaption("Gone", "x"), std::out_of_range);
}

TEST_F(TabStripTest, CaptionsFollowTheNode) {
  tabs.SetCaption("Description", "Technical Description");
  EXPECT_EQ(tabs.Tabs()[0].caption, "Technical Description");
}

TEST_F(TabStripTest, ArrowKeysTurnTheTabs) {
  EXPECT_TRUE(tabs.PressKey(Key::Right));
  EXPECT_FALSE(tabs.PressKey(Key::Right));
  EXPECT_EQ(tabs.Selected(), "Business");
  EXPECT_TRUE(tabs.PressKey(Key::Left));
  EXPECT_EQ(clicks, 2);
}

}  // namespace
}  // namespace qmrules::platform::widgets
