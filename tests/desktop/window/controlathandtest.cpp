// The control in the real window, over a real workspace, worked with by mouse and keyboard.

#include <QApplication>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTest>

#include "desktop/views/qttree.h"
#include "desktop/views/viewtest.h"
#include "desktop/window/mainwindow.h"
#include "desktop/window/modalanswer.h"
#include "desktop/window/workspacedesk.h"
#include "desktop/window/workspacefixture.h"

namespace qmrules::desktop {
namespace {

using platform::widgets::TreeNode;
using test::ModalAnswer;

class ControlAtHandTest : public test::WorkspaceFixture {
 protected:
  ControlAtHandTest() {
    window_.resize(1200, 800);
    window_.show();
    window_.OpenWorkspace(QString::fromStdString(Root()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return Control().IsShown(); }));
    Activate(window_);
    window_.Desk()->FocusControl();
  }

  shell::QMRules& Control() { return *window_.Desk()->Session().Control(); }
  browser::ControlWidgets& Widgets() { return Control().Widgets(); }
  QWidget& View(const char* name) { return *window_.findChild<QWidget*>(name); }
  QtTree& Tree() { return dynamic_cast<QtTree&>(View("tvObjects")); }
  TreeNode& Node(const char* key) { return *Widgets().tvObjects.Find(key); }
  std::string Stored(const char* key, const char* attribute) {
    return window_.Desk()->Session().Host().Repository().object(key)->Attrs(attribute).Text();
  }

  void ClickRow(const char* key) { QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, RowOf(Tree(), Node(key))); }
  void ClickSign(const char* key) {
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, SignOf(Tree(), Node(key)));
  }
  void ClickCheckBox(const char* key) {
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, CheckBoxOf(Tree(), Node(key)));
  }
  void OpenAll() {
    ClickSign("f1");
    ClickSign("f1s1");
  }
  // Types over what is in the field, which stays the one with the keyboard.
  static void TypeOver(QWidget& field, const char* text) {
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, text);
  }
  // Presses OK in the message box that comes up, and keeps its text.
  ModalAnswer AnswerTo(QString& text) {
    return ModalAnswer([&text](QWidget& box) {
      text = dynamic_cast<QMessageBox&>(box).text();
      QTest::keyClick(&box, Qt::Key_Return);
    });
  }

  platform::MemorySettings settings_;
  Appearance appearance_;
  Translations translations_;
  MainWindow window_{{.services = Services(),
                      .settings = settings_,
                      .appearance = appearance_,
                      .translations = translations_,
                      .language = shell::Language::English}};
};

TEST_F(ControlAtHandTest, TheSignsOpenAFunctionAndARuleSetWhoseRulesAreRead) {
  EXPECT_EQ(Widgets().tvObjects.Find("f1r1"), nullptr);
  OpenAll();
  EXPECT_EQ(Tree().model()->rowCount(Tree().Items().IndexOf(&Node("f1s1"))), 2);
  EXPECT_EQ(Tree().Items().IndexOf(&Node("f1r1")).data().toString(), "Fee");
  EXPECT_EQ(Widgets().txtObjName.Text(), "Late fees") << "what opens is shown";
}

TEST_F(ControlAtHandTest, ACheckBoxChecksWhatIsBelowAndKeysCheckAllAndNone) {
  OpenAll();
  const auto isShownChecked = [&](const char* key) {
    return Tree().Items().IndexOf(&Node(key)).data(Qt::CheckStateRole).toInt() == Qt::Checked;
  };
  ClickCheckBox("f1s1");
  EXPECT_TRUE(isShownChecked("f1r1"));
  EXPECT_TRUE(isShownChecked("f1r2"));
  EXPECT_FALSE(isShownChecked("f1"));
  QTest::keyClick(&Tree(), Qt::Key_A, Qt::ControlModifier);
  EXPECT_TRUE(isShownChecked("f1"));
  EXPECT_TRUE(isShownChecked("f2"));
  QTest::keyClick(&Tree(), Qt::Key_U, Qt::ControlModifier);
  for (const char* const key : {"f1", "f1s1", "f1r1", "f1r2", "f2"}) EXPECT_FALSE(isShownChecked(key)) << key;
}

TEST_F(ControlAtHandTest, ANameIsWrittenByTabAndOneOfBlanksIsRefused) {
  ClickRow("f1");
  QWidget& name = View("txtObjName");
  QTest::mouseClick(&name, Qt::LeftButton);
  TypeOver(name, "Invoicing");
  QTest::keyClick(&name, Qt::Key_Tab);
  EXPECT_EQ(Stored("BUSINESSFUNC#1", "Name"), "Invoicing");
  EXPECT_EQ(Tree().Items().IndexOf(&Node("f1")).data().toString(), "Invoicing");
  EXPECT_FALSE(name.hasFocus());

  QTest::mouseClick(&name, Qt::LeftButton);
  TypeOver(name, "  ");
  QString told;
  const ModalAnswer answer = AnswerTo(told);
  QTest::keyClick(&name, Qt::Key_Tab);
  EXPECT_TRUE(answer.Done());
  EXPECT_EQ(told, "Name cannot be empty.");
  window_.activateWindow();  // as a window manager does
  EXPECT_TRUE(QTest::qWaitFor([&] { return name.hasFocus(); }));
  EXPECT_TRUE(Widgets().txtObjName.HasFocus());
  EXPECT_EQ(Stored("BUSINESSFUNC#1", "Name"), "Invoicing");
  TypeOver(name, "Billing");
}

TEST_F(ControlAtHandTest, ADescriptionIsWrittenWhenAnotherNodeIsClicked) {
  OpenAll();
  ClickRow("f1r1");
  auto& description = dynamic_cast<QPlainTextEdit&>(View("rtbDescription"));
  QTest::mouseClick(description.viewport(), Qt::LeftButton);
  TypeOver(description, "Adds the fee.");
  EXPECT_EQ(Stored("RULE#1", "Description"), "");
  ClickRow("f1r2");
  EXPECT_EQ(Stored("RULE#1", "Description"), "Adds the fee.");
  EXPECT_EQ(Widgets().txtObjName.Text(), "Grace period");
  EXPECT_EQ(Widgets().rtbDescription.Text(), "");
}

TEST_F(ControlAtHandTest, ThePopupComesUpByKeyAndByMouseAndRunsItsCommand) {
  OpenAll();
  ClickRow("f1r2");
  const auto choose = [](const char* item) {
    auto* const popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(popup, nullptr);
    EXPECT_FALSE(popup->findChild<QAction*>("mnuMoveDown")->isEnabled() &&
                 popup->findChild<QAction*>("mnuMoveUp")->isEnabled());
    popup->setActiveAction(popup->findChild<QAction*>(item));
    QTest::keyClick(popup, Qt::Key_Return);
  };
  Later([&] { choose("mnuMoveUp"); });
  QTest::keyClick(&Tree(), Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_EQ(Node("f1s1").FirstChild()->Text(), "Grace period");
  EXPECT_EQ(Stored("RULE#2", "SeqNo"), "1");
  Later([&] { choose("mnuMoveDown"); });
  QTest::mouseClick(Tree().viewport(), Qt::RightButton, {}, RowOf(Tree(), Node("f1r2")));
  EXPECT_EQ(Node("f1s1").FirstChild()->Text(), "Fee");
  EXPECT_EQ(Stored("RULE#2", "SeqNo"), "2");
}

TEST_F(ControlAtHandTest, AControlThatIsNotEnabledIsGreyAndKeepsItsState) {
  OpenAll();
  ClickRow("f1r1");
  Control().Enabled(false);
  EXPECT_FALSE(Tree().isEnabled());
  EXPECT_FALSE(View("txtObjName").isEnabled());
  ClickRow("f1r2");
  EXPECT_EQ(Widgets().txtObjName.Text(), "Fee");
  Control().Enabled(true);
  EXPECT_TRUE(Tree().isEnabled());
  ClickRow("f1r2");
  EXPECT_EQ(Widgets().txtObjName.Text(), "Grace period");
}

}  // namespace
}  // namespace qmrules::desktop
