// The results of the command Validate in the window, from the question to a rule in the tree.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDockWidget>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "desktop/results/resultspane.h"
#include "desktop/window/mainwindow.h"
#include "desktop/window/windowmenus.h"
#include "desktop/window/workspacedesk.h"
#include "desktop/window/workspacefixture.h"

namespace qmrules::desktop {
namespace {

class ValidationResultsTest : public test::WorkspaceFixture {
 protected:
  ValidationResultsTest() {
    PutText("           ADD 1 TO WS-FEE.\n           STOP RUN.\n");
    window_ = std::make_unique<MainWindow>(MainWindow::Process{.services = Services(),
                                                               .settings = settings_,
                                                               .appearance = appearance_,
                                                               .translations = translations_,
                                                               .language = shell::Language::English});
    window_->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
    Open();
  }
  ~ValidationResultsTest() override {
    window_.reset();
    translations_.Use(shell::Language::English);
  }
  void Open() {
    window_->OpenWorkspace(QString::fromStdString(Root()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return Control().IsShown(); }));
  }
  // The rule Fee stands at rows 6 to 7.
  void PutText(const char* text) {
    workbench::EmbeddedHost host(Root(), Services());
    const auto rule = host.Repository().object("RULE#1");
    rule->Edit();
    rule->Attrs("SourceText", text);
    rule->Post();
  }
  shell::QMRules& Control() { return *window_->Desk()->Session().Control(); }
  QDockWidget& Dock() { return *window_->findChild<QDockWidget*>("resultsDock"); }
  QTreeView& List() { return *window_->findChild<QTreeView*>("findingList"); }
  QString Cell(int row, int column) { return List().model()->index(row, column).data().toString(); }

  // Checks all rules, chooses Validate and answers whatever is asked; what stood in the window when the result was
  // told.
  void Validate() {
    Control().Widgets().tvObjects.ClickCheckBox(*Control().Widgets().tvObjects.Find("f1"));
    QTimer answers;
    QObject::connect(&answers, &QTimer::timeout, [this] {
      auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      rowsWhenAsked_ = List().model()->rowCount();
      if (auto* const box = qobject_cast<QMessageBox*>(dialog)) {
        box->button(box->standardButtons() == QMessageBox::Ok ? QMessageBox::Ok : QMessageBox::Yes)->click();
      } else {
        dialog->accept();
      }
    });
    answers.start(5);
    window_->Desk()->Session().Workspace().RequestMethod(kControlName, "Validate");
  }

  platform::MemorySettings settings_;
  Appearance appearance_;
  Translations translations_;
  std::unique_ptr<MainWindow> window_;
  int rowsWhenAsked_ = 0;
};

TEST_F(ValidationResultsTest, StandBesideTheMessageInTheirDock) {
  EXPECT_FALSE(Dock().isVisible());
  Validate();
  EXPECT_TRUE(Dock().isVisible());
  EXPECT_EQ(rowsWhenAsked_, 2) << "they are there before the message";
  EXPECT_EQ(Cell(0, 0), "moved");
  EXPECT_EQ(Cell(0, 1), "Fee");
  EXPECT_EQ(Cell(0, 3), "6-7");
  EXPECT_EQ(Cell(0, 4), "7-8");
  EXPECT_EQ(Cell(1, 0), "no segment");
}

TEST_F(ValidationResultsTest, CompareTheStoredTextWithTheFileAsItIsNow) {
  Validate();
  folder_.Write("cobol/payfee.cbl", "1\n2\n3\n4\n5\n6\n           ADD 2 TO WS-FEE.\n           STOP RUN.\n");
  QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, List().visualRect(List().model()->index(0, 1)).center());
  EXPECT_EQ(window_->findChild<QLabel*>("differingLines")->text(), "Lines that differ: 1 of 2.");
}

TEST_F(ValidationResultsTest, LeadToTheRuleInTheTree) {
  Validate();
  auto& tree = Control().Widgets().tvObjects;
  tree.Click(*tree.Find("f2"));
  window_->Menus().showResults->trigger();
  EXPECT_EQ(window_->focusWidget(), &List());
  QTest::keyClick(&List(), Qt::Key_Return, Qt::ControlModifier);
  ASSERT_NE(tree.SelectedNode(), nullptr);
  EXPECT_EQ(tree.SelectedNode()->Key(), "f1r1");
}

TEST_F(ValidationResultsTest, OfARuleThatIsGoneSayThatItIsNotInTheTree) {
  Validate();
  window_->Desk()->Session().Host().Repository().object("RULE#1")->Delete();
  emit window_->Results().RuleChosen(1);
  EXPECT_NE(Control().Widgets().tvObjects.Find("f1"), nullptr);
}

TEST_F(ValidationResultsTest, StayInAnotherLanguageAndAreItsOwn) {
  Validate();
  window_->UseLanguage(shell::Language::Japanese);
  EXPECT_EQ(List().model()->rowCount(), 2);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Cell(0, 0) == QString::fromUtf8("移動"); }));
  EXPECT_EQ(Dock().windowTitle(), QString::fromUtf8("検証"));
}

TEST_F(ValidationResultsTest, AreReplacedByTheNextRun) {
  Validate();
  EXPECT_TRUE(QTest::qWaitFor([&] { return Control().IsShown(); }));
  const auto rule = window_->Desk()->Session().Host().Repository().object("RULE#1");
  rule->Edit();
  rule->Attrs("FromRow", 7);
  rule->Attrs("ToRow", 8);
  rule->Post();
  Control().Widgets().tvObjects.ClickCheckBox(*Control().Widgets().tvObjects.Find("f1"));
  Validate();
  EXPECT_EQ(Cell(0, 0), "unchanged");
}

TEST_F(ValidationResultsTest, GoWithTheWorkspace) {
  Validate();
  window_->CloseWorkspace();
  EXPECT_FALSE(Dock().isVisible());
  EXPECT_FALSE(window_->Results().HasReport());
  Open();
  EXPECT_FALSE(Dock().isVisible());
}

}  // namespace
}  // namespace qmrules::desktop
