#include <QApplication>
#include <QClipboard>

#include "desktop/views/colors.h"
#include "desktop/views/qtrichtextbox.h"
#include "desktop/views/qttext.h"
#include "desktop/views/qttextbox.h"
#include "desktop/views/textedit.h"
#include "desktop/views/viewtest.h"

namespace qmrules::desktop {
namespace {

using platform::widgets::Color;
using platform::widgets::Key;
using platform::widgets::KeyPress;
using platform::widgets::RichTextBox;
using platform::widgets::TextBox;

TEST(TextEditTest, TheCursorTellsWhichOfEqualLettersIsNew) {
  const TextEdit first = EditBetween("aa", "aaa", 1);
  EXPECT_EQ(first.start, 0);
  EXPECT_EQ(first.inserted, "a");
  const TextEdit last = EditBetween("aa", "aaa", 3);
  EXPECT_EQ(last.start, 2);
  const TextEdit removed = EditBetween("abba", "aba", 2);
  EXPECT_EQ(removed.removed, 1);
  EXPECT_TRUE(removed.inserted.isEmpty());
}

TEST(TextEditTest, ASurrogatePairChangesAsAWhole) {
  const QString before = QString::fromUtf8("\xF0\x9F\x98\x80");  // two characters, as is
  const QString after = QString::fromUtf8("\xF0\x9F\x98\x81");   // the other, with the same first half
  const TextEdit edit = EditBetween(before, after, 2);
  EXPECT_EQ(edit.start, 0);
  EXPECT_EQ(edit.removed, 2);
  EXPECT_EQ(edit.inserted, after);
}

class TextBoxViewTest : public ViewTest {
 protected:
  TextBoxViewTest() {
    Show();
    view.setFocus();
  }
  TextBox& text = container.Add<TextBox>("txtObjName");
  QtTextBox& view = Make<QtTextBox>(text);
};

TEST_F(TextBoxViewTest, WhatIsTypedIsInTheModel) {
  QTest::keyClicks(&view, "Rate 7");
  EXPECT_EQ(text.Text(), "Rate 7");
  QTest::keyClick(&view, Qt::Key_Home);
  QTest::keyClicks(&view, "My ");
  EXPECT_EQ(text.Text(), "My Rate 7");
  EXPECT_EQ(view.cursorPosition(), 3);
  EXPECT_EQ(text.SelStart(), 3U);
  QTest::keyClick(&view, Qt::Key_Backspace);
  QTest::keyClick(&view, Qt::Key_Delete);
  EXPECT_EQ(text.Text(), "Myate 7");
  EXPECT_EQ(view.text(), "Myate 7");
}

TEST_F(TextBoxViewTest, UndoComesBackToTheModel) {
  QTest::keyClicks(&view, "abc");
  view.undo();
  EXPECT_EQ(FromQt(view.text()), text.Text());
  EXPECT_EQ(text.Text(), "");
}

TEST_F(TextBoxViewTest, TheModelsTextIsShownFromItsBeginning) {
  text.SetText("Compute the premium");
  EXPECT_EQ(view.text(), "Compute the premium");
  EXPECT_EQ(view.cursorPosition(), 0);
}

TEST_F(TextBoxViewTest, MoreThanTheMaximumIsDroppedInTheMiddleToo) {
  text.SetMaxLength(4);
  QTest::keyClicks(&view, "abcdef");
  EXPECT_EQ(view.text(), "abcd");
  QTest::keyClick(&view, Qt::Key_Home);
  QTest::keyClicks(&view, "x");
  EXPECT_EQ(view.text(), "abcd");
  EXPECT_EQ(text.Text(), "abcd");
}

TEST_F(TextBoxViewTest, TheMaximumCountsUtf16Characters) {
  text.SetMaxLength(3);
  QApplication::clipboard()->setText(QString::fromUtf8("\xF0\x9F\x98\x80\xF0\x9F\x98\x80"));
  view.paste();
  EXPECT_EQ(text.Text(), "\xF0\x9F\x98\x80");
  EXPECT_EQ(view.text(), QString::fromUtf8("\xF0\x9F\x98\x80"));
}

TEST_F(TextBoxViewTest, APastedTextEndsAtItsFirstLineBreak) {
  QApplication::clipboard()->setText("one\ntwo");
  view.paste();
  EXPECT_EQ(text.Text(), "one");
  EXPECT_EQ(view.text(), "one");
}

TEST_F(TextBoxViewTest, ALockedFieldCanBeReadAndNotChanged) {
  text.SetText("PREMIUM.CBL");
  text.SetLocked(true);
  QTest::keyClicks(&view, "x");
  EXPECT_EQ(text.Text(), "PREMIUM.CBL");
  EXPECT_TRUE(view.isReadOnly());
  QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(text.SelText(), "PREMIUM.CBL");
}

TEST_F(TextBoxViewTest, TheSelectionIsTheSameOnBothSides) {
  text.SetText("premium");
  view.setSelection(1, 3);
  EXPECT_EQ(text.SelText(), "rem");
  text.Select(4, 2);
  EXPECT_EQ(view.selectedText(), "iu");
}

TEST_F(TextBoxViewTest, ObserversAreToldOfKeysAndMayTakeThem) {
  std::vector<Key> keys;
  const auto down = text.OnKeyDown.Subscribe([&](KeyPress& press) {
    keys.push_back(press.key);
    press.handled = press.key == Key::Enter || press.key == Key::A;
  });
  QTest::keyClick(&view, Qt::Key_Return);
  QTest::keyClick(&view, Qt::Key_A);
  QTest::keyClick(&view, Qt::Key_S);
  EXPECT_EQ(keys, (std::vector<Key>{Key::Enter, Key::A, Key::S}));
  EXPECT_EQ(text.Text(), "s");
}

TEST_F(TextBoxViewTest, RedIsReadableInLightAndDark) {
  text.SetForeColor(Color::Red);
  EXPECT_EQ(view.palette().color(QPalette::Text), TextColor(Color::Red, QApplication::palette()));
  const QPalette light = QApplication::palette();
  QPalette dark = light;
  dark.setColor(QPalette::Base, QColor(30, 30, 30));
  dark.setColor(QPalette::Text, Qt::white);
  QApplication::setPalette(dark);
  QCoreApplication::processEvents();
  EXPECT_EQ(view.palette().color(QPalette::Text), TextColor(Color::Red, dark));
  EXPECT_NE(TextColor(Color::Red, dark), TextColor(Color::Red, light));
  QApplication::setPalette(light);
  QCoreApplication::processEvents();
  text.SetForeColor(Color::Normal);
  EXPECT_EQ(view.palette().color(QPalette::Text), light.color(QPalette::Text));
}

TEST_F(TextBoxViewTest, VisibleEnabledAndToolTipAreShown) {
  text.SetToolTipText("The name");
  EXPECT_EQ(view.toolTip(), "The name");
  text.SetVisible(false);
  QCoreApplication::processEvents();
  EXPECT_TRUE(view.isHidden());
  text.SetVisible(true);
  EXPECT_FALSE(view.isHidden());
  text.SetEnabled(false);
  EXPECT_FALSE(view.isHidden());
  EXPECT_FALSE(view.isEnabled());
}

TEST_F(TextBoxViewTest, AFieldThatIsHiddenAndShownInOneStepKeepsTheFocus) {
  text.SetVisible(false);
  text.SetVisible(true);
  QCoreApplication::processEvents();
  EXPECT_TRUE(view.hasFocus());
  EXPECT_TRUE(text.HasFocus());
}

class RichTextViewTest : public ViewTest {
 protected:
  RichTextViewTest() {
    Show();
    view.setFocus();
  }
  RichTextBox& text = container.Add<RichTextBox>("rtbDescription");
  QtRichTextBox& view = Make<QtRichTextBox>(text);
};

TEST_F(RichTextViewTest, EnterMakesAFullLineBreak) {
  QTest::keyClicks(&view, "one");
  QTest::keyClick(&view, Qt::Key_Return);
  QTest::keyClicks(&view, "two");
  EXPECT_EQ(text.Text(), "one\r\ntwo");
  QTest::keyClick(&view, Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(text.Text(), "one\r\ntwo\r\n");
}

TEST_F(RichTextViewTest, LineBreaksOfTheLogicStayAsTheyAre) {
  text.SetText("one\ntwo\r\nthree");
  EXPECT_EQ(view.toPlainText(), "one\ntwo\nthree");
  view.moveCursor(QTextCursor::End);
  QTest::keyClicks(&view, "!");
  EXPECT_EQ(text.Text(), "one\ntwo\r\nthree!");
  view.moveCursor(QTextCursor::Start);
  view.moveCursor(QTextCursor::Down);
  QTest::keyClicks(&view, ">");
  EXPECT_EQ(text.Text(), "one\n>two\r\nthree!");
}

TEST_F(RichTextViewTest, DeletingALineBreakTakesBothItsCharacters) {
  text.SetText("a\r\nb");
  view.moveCursor(QTextCursor::End);
  QTest::keyClick(&view, Qt::Key_Left);
  QTest::keyClick(&view, Qt::Key_Backspace);
  EXPECT_EQ(text.Text(), "ab");
  EXPECT_EQ(view.toPlainText(), "ab");
}

TEST_F(RichTextViewTest, ANoBreakSpaceIsKept) {
  text.SetText(
      "a\xC2\xA0"
      "b");
  view.moveCursor(QTextCursor::End);
  QTest::keyClicks(&view, "c");
  EXPECT_EQ(text.Text(),
            "a\xC2\xA0"
            "bc");
}

TEST_F(RichTextViewTest, PastedMarkupIsPlainText) {
  QApplication::clipboard()->setText("<b>bold</b>");
  view.paste();
  EXPECT_EQ(text.Text(), "<b>bold</b>");
}

TEST_F(RichTextViewTest, UndoAndSelectAllWorkAsUsual) {
  QTest::keyClicks(&view, "abc");
  QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(text.SelText(), "abc");
  QTest::keyClicks(&view, "x");
  EXPECT_EQ(text.Text(), "x");
  QTest::keyClick(&view, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(FromQt(view.toPlainText()), text.Text());
  EXPECT_EQ(text.Text(), "abc");
}

TEST_F(RichTextViewTest, TabLeavesTheField) {
  TextBox& next = container.Add<TextBox>("txtNext");
  Make<QtTextBox>(next);
  focus.SetTabOrder();
  QCoreApplication::processEvents();
  QTest::keyClick(&view, Qt::Key_Tab);
  EXPECT_TRUE(next.HasFocus());
  EXPECT_EQ(text.Text(), "");
}

TEST_F(RichTextViewTest, ALockedFieldKeepsItsText) {
  text.SetText("fixed");
  text.SetLocked(true);
  QTest::keyClicks(&view, "x");
  EXPECT_EQ(text.Text(), "fixed");
  EXPECT_EQ(view.toPlainText(), "fixed");
}

}  // namespace
}  // namespace qmrules::desktop
