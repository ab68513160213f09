#include "platform/widgets/textbox.h"

#include <gtest/gtest.h>

#include "platform/widgets/richtextbox.h"

namespace qmrules::platform::widgets {
namespace {

TEST(TextBox, TypingPutsTextAtTheCaret) {
  TextBox box("txtName");
  EXPECT_TRUE(box.Type("AC"));
  box.Select(1, 0);
  EXPECT_TRUE(box.Type("B"));
  EXPECT_EQ(box.Text(), "ABC");
  EXPECT_EQ(box.SelStart(), 2U);
  EXPECT_EQ(box.SelLength(), 0U);
}

TEST(TextBox, TypingReplacesTheSelection) {
  TextBox box("txtName");
  box.SetText("one two three");
  box.Select(4, 3);
  EXPECT_EQ(box.SelText(), "two");
  box.Type("2");
  EXPECT_EQ(box.Text(), "one 2 three");
  box.Select(3, 2);
  EXPECT_TRUE(box.Type(""));
  EXPECT_EQ(box.Text(), "one three");
  EXPECT_FALSE(box.Type(""));
}

TEST(TextBox, EveryChangeOfTheTextIsTold) {
  TextBox box("txtName");
  int told = 0;
  const auto changes = box.OnTextChanged.Subscribe([&] { ++told; });
  box.Type("A");
  box.SetText("B");
  box.SetText("B");
  box.ReplaceSelection("C");
  EXPECT_EQ(box.Text(), "CB");
  EXPECT_EQ(told, 3);
}

TEST(TextBox, InputIsCutAtMaxLength) {
  TextBox box("txtName");
  box.SetMaxLength(5);
  EXPECT_TRUE(box.Type("ABCDEFG"));
  EXPECT_EQ(box.Text(), "ABCDE");
  EXPECT_FALSE(box.Type("X"));
  box.Select(1, 2);
  EXPECT_TRUE(box.Type("1234"));
  EXPECT_EQ(box.Text(), "A12DE");
}

TEST(TextBox, MaxLengthCountsCharactersOfTwoForACodePointBeyondTheBasicPlane) {
  TextBox box("txtName");
  box.SetMaxLength(3);
  EXPECT_TRUE(box.Type("𝄞𝄞"));
  EXPECT_EQ(box.Text(), "𝄞");
  EXPECT_EQ(box.SelStart(), 2U);
  EXPECT_TRUE(box.Type("éé"));
  EXPECT_EQ(box.Text(), "𝄞é");
}

TEST(TextBox, ATextSetByTheLogicMayPassMaxLength) {
  TextBox box("txtName");
  box.SetMaxLength(2);
  box.SetText("ABCD");
  EXPECT_EQ(box.Text(), "ABCD");
  EXPECT_FALSE(box.Type("E"));
  EXPECT_TRUE(box.Backspace() || box.DeleteForward());
  EXPECT_EQ(box.Text(), "BCD");
}

TEST(TextBox, ALockedFieldIsNotChangedByTheUser) {
  TextBox box("txtName");
  box.SetText("ABC");
  box.SetLocked(true);
  EXPECT_FALSE(box.Type("X"));
  EXPECT_FALSE(box.Enter("X"));
  EXPECT_FALSE(box.Backspace());
  EXPECT_FALSE(box.DeleteForward());
  EXPECT_EQ(box.Text(), "ABC");
  EXPECT_TRUE(box.PressKey(Key::A, {.ctrl = true}));
  EXPECT_EQ(box.SelText(), "ABC");
  box.SetText("D");
  EXPECT_EQ(box.Text(), "D");
}

TEST(TextBox, AFieldOfOneLineTakesTheInputsFirstLine) {
  TextBox box("txtName");
  EXPECT_TRUE(box.Type("one\r\ntwo"));
  EXPECT_TRUE(box.Type("\tx\ny"));
  EXPECT_EQ(box.Text(), "one\tx");
  EXPECT_FALSE(box.Type("\n"));
}

TEST(TextBox, EnteringAWholeTextReplacesTheOldOne) {
  TextBox box("txtName");
  box.SetText("old");
  int told = 0;
  const auto changes = box.OnTextChanged.Subscribe([&] { ++told; });
  EXPECT_TRUE(box.Enter("new"));
  EXPECT_EQ(box.Text(), "new");
  EXPECT_FALSE(box.Enter("new"));
  EXPECT_TRUE(box.Enter(""));
  EXPECT_EQ(box.Text(), "");
  EXPECT_EQ(told, 2);
}

TEST(TextBox, TheSelectionIsCutToTheText) {
  TextBox box("txtName");
  box.SetText("ABC");
  box.Select(2, 99);
  EXPECT_EQ(box.SelText(), "C");
  box.Select(99, 1);
  EXPECT_EQ(box.SelStart(), 3U);
  EXPECT_EQ(box.SelLength(), 0U);
}

TEST(TextBox, ASelectionNeverSplitsACodePoint) {
  TextBox box("txtName");
  box.SetText("a𝄞b");
  box.Select(2, 2);
  EXPECT_EQ(box.SelStart(), 1U);
  EXPECT_EQ(box.SelText(), "𝄞b");
  box.Select(1, 1);
  EXPECT_EQ(box.SelLength(), 0U);
}

TEST(TextBox, SettingTheTextDropsTheSelection) {
  TextBox box("txtName");
  box.SetText("ABC");
  box.Select(1, 2);
  box.SetText("XYZ");
  EXPECT_EQ(box.SelStart(), 0U);
  EXPECT_EQ(box.SelLength(), 0U);
}

TEST(TextBox, DeletingTakesTheSelectionOrOneCharacter) {
  TextBox box("txtName");
  box.SetText("a𝄞bc");
  box.Select(3, 0);
  EXPECT_TRUE(box.Backspace());
  EXPECT_EQ(box.Text(), "abc");
  EXPECT_EQ(box.SelStart(), 1U);
  box.Select(1, 2);
  EXPECT_TRUE(box.PressKey(Key::Delete));
  EXPECT_EQ(box.Text(), "a");
  EXPECT_FALSE(box.DeleteForward());
  EXPECT_TRUE(box.PressKey(Key::Backspace));
  EXPECT_FALSE(box.Backspace());
  box.SetText("𝄞x");
  EXPECT_TRUE(box.DeleteForward());
  EXPECT_EQ(box.Text(), "x");
}

TEST(TextBox, TheLogicReplacesTheSelectionWhateverTheLimits) {
  TextBox box("txtFind");
  box.SetText("ab");
  box.SetLocked(true);
  box.SetMaxLength(2);
  box.Select(1, 1);
  box.ReplaceSelection("[Name]");
  EXPECT_EQ(box.Text(), "a[Name]");
  EXPECT_EQ(box.SelStart(), 7U);
}

TEST(RichTextBox, LineBreaksOfTheUserAreCrLf) {
  RichTextBox box("rtbValues");
  EXPECT_TRUE(box.Type("one\ntwo"));
  EXPECT_TRUE(box.PressKey(Key::Enter));
  EXPECT_EQ(box.Text(), "one\r\ntwo\r\n");
  EXPECT_TRUE(box.Backspace());
  EXPECT_EQ(box.Text(), "one\r\ntwo");
  box.Select(3, 0);
  EXPECT_TRUE(box.DeleteForward());
  EXPECT_EQ(box.Text(), "onetwo");
}

TEST(RichTextBox, AViewThatHandsTheTextBackUnchangedChangesNothing) {
  RichTextBox box("rtbDescription");
  box.SetText("one\ntwo\r\nthree");
  EXPECT_FALSE(box.Enter("one\ntwo\nthree"));
  EXPECT_EQ(box.Text(), "one\ntwo\r\nthree");
  EXPECT_TRUE(box.Enter("one\ntwo"));
  EXPECT_EQ(box.Text(), "one\r\ntwo");
}

}  // namespace
}  // namespace qmrules::platform::widgets
