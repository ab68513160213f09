#include "desktop/window/mainwindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDockWidget>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSplitterHandle>
#include <QStatusBar>
#include <QStyle>
#include <QTest>
#include <QTreeView>

#include "browser/commandtable.h"
#include "desktop/icons/iconset.h"
#include "desktop/locator/locator.h"
#include "desktop/window/failurebar.h"
#include "desktop/window/modalanswer.h"
#include "desktop/window/newworkspacedialog.h"
#include "desktop/window/programspane.h"
#include "desktop/window/treejump.h"
#include "desktop/window/windowmenus.h"
#include "desktop/window/workspacedesk.h"
#include "desktop/window/workspacefixture.h"
#include "platform/error.h"

namespace qmrules::desktop {
namespace {

using test::ModalAnswer;

class MainWindowTest : public test::WorkspaceFixture {
 protected:
  ~MainWindowTest() override {
    appearance_.UseScheme(Scheme::System);
    appearance_.UseFontSize(0);
    translations_.Use(shell::Language::English);
  }
  std::unique_ptr<MainWindow> Window() {
    auto window = std::make_unique<MainWindow>(MainWindow::Process{.services = Services(),
                                                                   .settings = settings_,
                                                                   .appearance = appearance_,
                                                                   .translations = translations_,
                                                                   .language = shell::Language::English});
    window->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    return window;
  }
  // With the demo workspace, its control being shown.
  std::unique_ptr<MainWindow> WindowWithWorkspace() {
    auto window = Window();
    window->OpenWorkspace(QString::fromStdString(Root()));
    EXPECT_NE(window->Desk(), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Control(*window).IsShown(); }));
    return window;
  }
  static shell::QMRules& Control(MainWindow& window) { return *window.Desk()->Session().Control(); }
  static QDockWidget& Dock(MainWindow& window, const char* name) { return *window.findChild<QDockWidget*>(name); }
  static QStringList MenuTitles(MainWindow& window) {
    QStringList titles;
    for (const QAction* const action : window.menuBar()->actions()) {
      if (action->isVisible()) titles += action->text().remove('&');
    }
    return titles;
  }
  static QString LabelText(MainWindow& window, const char* name) {
    auto* const label = window.findChild<QLabel*>(name);
    return label->isVisible() ? label->text() : QString();
  }

  platform::MemorySettings settings_;
  Appearance appearance_;
  Translations translations_;
};

TEST_F(MainWindowTest, BeginsWithTheStartPage) {
  const auto window = Window();
  EXPECT_FALSE(window->findChild<QWidget*>("startPage")->isVisible());
  window->Begin("");
  EXPECT_TRUE(window->findChild<QWidget*>("startPage")->isVisible());
  EXPECT_FALSE(Dock(*window, "programsDock").isVisible());
  EXPECT_FALSE(Dock(*window, "rulesDock").isVisible());
  EXPECT_FALSE(window->Menus().scan->isEnabled());
  EXPECT_EQ(MenuTitles(*window), (QStringList{"File", "Navigate", "View", "Help"}));
}

TEST_F(MainWindowTest, OpensAWorkspaceAndClosesItAgain) {
  const auto window = WindowWithWorkspace();
  EXPECT_FALSE(window->findChild<QWidget*>("startPage")->isVisible());
  EXPECT_TRUE(window->findChild<QWidget*>("sourceView")->isVisible());
  EXPECT_TRUE(Dock(*window, "programsDock").isVisible());
  EXPECT_TRUE(Dock(*window, "rulesDock").isVisible());
  EXPECT_EQ(window->Programs().Model().rowCount(), 2);
  EXPECT_TRUE(window->windowTitle().startsWith("Demo"));
  EXPECT_EQ(MenuTitles(*window), (QStringList{"File", "Business Rules", "Navigate", "View", "Help"}));
  window->CloseWorkspace();
  EXPECT_EQ(window->Desk(), nullptr);
  EXPECT_TRUE(window->findChild<QWidget*>("startPage")->isVisible());
  EXPECT_EQ(window->findChild<QWidget*>("sourceView"), nullptr);
  EXPECT_EQ(window->Programs().Model().rowCount(), 0);
  EXPECT_FALSE(window->Menus().scan->isEnabled());
  EXPECT_EQ(MenuTitles(*window), (QStringList{"File", "Navigate", "View", "Help"}));
}

TEST_F(MainWindowTest, TheNextRunOpensTheWorkspaceThatWasOpen) {
  WindowWithWorkspace()->close();
  {
    const auto window = Window();
    window->Begin("");
    ASSERT_NE(window->Desk(), nullptr);
    window->Menus().closeWorkspace->trigger();
    EXPECT_EQ(window->Desk(), nullptr);
  }
  const auto window = Window();
  window->Begin("");
  EXPECT_EQ(window->Desk(), nullptr);
}

TEST_F(MainWindowTest, TheHostsMenuHasTheCommandsInTheirOrder) {
  const auto window = WindowWithWorkspace();
  QCoreApplication::processEvents();
  const auto& texts = shell::StringTableFor(shell::Language::English);
  QStringList expected;
  for (const auto& entry : browser::CommandTable()) {
    expected += entry.IsSeparator() ? QString("-") : QString::fromStdString(texts.Text(entry.label));
  }
  QStringList shown;
  for (const QAction* const action : window->Menus().Rules().actions()) {
    shown += action->isSeparator() ? QString("-") : action->text().section('\t', 0, 0).remove("...");
  }
  EXPECT_EQ(shown, expected);
}

TEST_F(MainWindowTest, AProgramThatIsChosenIsOnView) {
  const auto window = WindowWithWorkspace();
  auto& list = *window->findChild<QTreeView*>("programList");
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(0, 0)).center());
  EXPECT_EQ(window->Desk()->Session().Viewer().CurFile()->FileName, "cobol/payfee.cbl");
  EXPECT_EQ(LabelText(*window, "statusSource"), QString::fromUtf8("PAYFEE · cobol/payfee.cbl"));
  window->Desk()->Session().Viewer().SelectRows(3, 2);
  EXPECT_EQ(LabelText(*window, "place"), "Rows 3 to 4 selected");
}

TEST_F(MainWindowTest, CountsTheRulesOfThePrograms) {
  const auto window = WindowWithWorkspace();
  EXPECT_TRUE(QTest::qWaitFor([&] { return LabelText(*window, "statusCounts") == "Programs: 2  Rules: 2"; }));
  const auto& model = window->Programs().Model();
  EXPECT_EQ(model.index(0, ProgramModel::kRules).data().toString(), "1");
  EXPECT_EQ(model.index(1, ProgramModel::kRules).data().toString(), "");
}

TEST_F(MainWindowTest, ScansTheSourcesAndTellsWhatCameOfIt) {
  const auto window = WindowWithWorkspace();
  folder_.Write("cobol/paynew.cbl",
                "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. PAYNEW.\n       PROCEDURE DIVISION.\n"
                "           STOP RUN.\n");
  window->Menus().scan->trigger();
  EXPECT_EQ(window->Programs().Model().rowCount(), 3);
  EXPECT_EQ(window->statusBar()->currentMessage(), "Programs scanned: 1, unchanged: 2.");
}

TEST_F(MainWindowTest, TheLayoutSurvivesARestart) {
  {
    const auto window = WindowWithWorkspace();
    window->resize(1100, 700);
    window->addDockWidget(Qt::BottomDockWidgetArea, &Dock(*window, "rulesDock"));
    Dock(*window, "programsDock").hide();
    QCoreApplication::processEvents();
    window->close();
  }
  const auto window = WindowWithWorkspace();
  EXPECT_EQ(window->size(), QSize(1100, 700));
  EXPECT_EQ(window->dockWidgetArea(&Dock(*window, "rulesDock")), Qt::BottomDockWidgetArea);
  EXPECT_FALSE(Dock(*window, "programsDock").isVisible());
  window->Menus().firstLayout->trigger();
  EXPECT_EQ(window->dockWidgetArea(&Dock(*window, "rulesDock")), Qt::RightDockWidgetArea);
  EXPECT_TRUE(Dock(*window, "programsDock").isVisible());
}

TEST_F(MainWindowTest, ThePanesOfTheControlSurviveARestart) {
  std::string layout;
  {
    const auto window = WindowWithWorkspace();
    auto& splitter = Control(*window).PaneSplitter();
    ASSERT_TRUE(splitter.Drag("Properties", 720));
    layout = splitter.LayoutText();
    window->close();
  }
  EXPECT_EQ(Control(*WindowWithWorkspace()).PaneSplitter().LayoutText(), layout);
}

TEST_F(MainWindowTest, TheControlIsShownAndHiddenWithItsDock) {
  const auto window = WindowWithWorkspace();
  Dock(*window, "rulesDock").close();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !Control(*window).IsShown(); }));
  Dock(*window, "rulesDock").show();
  EXPECT_TRUE(QTest::qWaitFor([&] { return Control(*window).IsShown(); }));
}

TEST_F(MainWindowTest, AnotherLanguageGivesOtherTextsAndIsKept) {
  const auto window = WindowWithWorkspace();
  const QString english = window->Menus().scan->text();
  window->UseLanguage(shell::Language::Japanese);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Control(*window).IsShown(); }));
  QCoreApplication::processEvents();
  const auto& texts = shell::StringTableFor(shell::Language::Japanese);
  const QString first = window->Menus().Rules().actions().first()->text();
  EXPECT_EQ(first.toStdString(), texts.Text(browser::CommandTable()[0].label) + "...");
  EXPECT_EQ(Control(*window).Widgets().tvObjects.Count(), 4U);
  EXPECT_EQ(Preferences(settings_).Language(), shell::Language::Japanese);
  EXPECT_NE(window->Menus().scan->text(), english);
  window->UseLanguage(shell::Language::English);
  QCoreApplication::processEvents();
  EXPECT_EQ(window->Menus().scan->text(), english);
}

TEST_F(MainWindowTest, LettersAndColoursAreKept) {
  const auto window = Window();
  const int before = appearance_.FontSize();
  window->Menus().largerFont->trigger();
  QCoreApplication::processEvents();
  EXPECT_EQ(QFontInfo(window->font()).pointSize(), before + 1);
  EXPECT_EQ(Preferences(settings_).FontSize(), before + 1);
  window->UseScheme(Scheme::Dark);
  QCoreApplication::processEvents();
  EXPECT_LT(window->palette().color(QPalette::Window).lightness(), 128);
  EXPECT_EQ(Preferences(settings_).ColorScheme(), Scheme::Dark);
  window->UseScheme(Scheme::Light);
  QCoreApplication::processEvents();
  EXPECT_GT(window->palette().color(QPalette::Window).lightness(), 128);
  window->Menus().systemFont->trigger();
  QCoreApplication::processEvents();
  EXPECT_EQ(QFontInfo(window->font()).pointSize(), before);
}

TEST_F(MainWindowTest, TheTitlesOfThePanesGrowWithTheLetters) {
  const auto window = WindowWithWorkspace();
  // How far to the right the title's letters reach.
  const auto titleEnd = [&] {
    auto& dock = Dock(*window, "rulesDock");
    const QImage title = dock.grab(QRect(0, 0, dock.width() / 2, dock.widget()->y() - 2)).toImage();
    int end = 0;
    for (int y = 2; y < title.height(); ++y) {
      for (int x = 0; x < title.width(); ++x) {
        if (std::abs(title.pixelColor(x, y).lightness() - title.pixelColor(title.width() - 1, y).lightness()) > 60) {
          end = std::max(end, x);
        }
      }
    }
    return end;
  };
  const int before = titleEnd();
  EXPECT_GT(before, 20);
  window->UseFontSize(2 * appearance_.FontSize());
  EXPECT_TRUE(QTest::qWaitFor([&] { return titleEnd() > before * 3 / 2; }));
}

TEST_F(MainWindowTest, MessageBoxesHaveThePicturesOfTheScheme) {
  const auto window = Window();
  window->UseScheme(Scheme::Dark);
  for (const auto& [asked, key] :
       {std::pair(QStyle::SP_MessageBoxQuestion, "Question"),
        std::pair(QStyle::SP_MessageBoxInformation, "Information"), std::pair(QStyle::SP_MessageBoxWarning, "Warning"),
        std::pair(QStyle::SP_MessageBoxCritical, "Error")}) {
    EXPECT_EQ(QApplication::style()->standardIcon(asked).pixmap(32, 32).toImage(),
              IconSet(IconSet::Background::Dark).Icon(key).pixmap(32, 32).toImage())
        << key;
  }
}

TEST_F(MainWindowTest, BoxesAndFieldsHaveOutlinesThatAreSeenOnADarkWindow) {
  const auto window = Window();
  window->UseScheme(Scheme::Dark);
  QWidget ground;
  QRadioButton round(&ground);
  QCheckBox box(&ground);
  QLineEdit field(&ground);
  for (QWidget* const part :
       {static_cast<QWidget*>(&round), static_cast<QWidget*>(&box), static_cast<QWidget*>(&field)}) {
    part->resize(part->sizeHint());
    const QImage drawn = part->grab().toImage();
    const int dark = ground.palette().color(QPalette::Window).lightness();
    int lightest = 0;
    for (int y = 0; y < drawn.height(); ++y) {
      for (int x = 0; x < drawn.width(); ++x) lightest = std::max(lightest, drawn.pixelColor(x, y).lightness());
    }
    EXPECT_GT(lightest, dark + 50) << part->metaObject()->className();
  }
}

TEST_F(MainWindowTest, TheKeyboardReachesTheLinesBetweenThePanes) {
  const auto window = WindowWithWorkspace();
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  window->resize(1600, 800);
  window->Desk()->FocusControl();
  for (int step = 0; step < 10; ++step) {
    window->Menus().largerPane->trigger();
    QCoreApplication::processEvents();
  }
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F8);
  const auto* const bar = qobject_cast<QSplitterHandle*>(QApplication::focusWidget());
  ASSERT_NE(bar, nullptr);
  const int before = bar->x();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
  EXPECT_GT(bar->x(), before);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_TRUE(Control(*window).Widgets().tvObjects.HasFocus());
}

TEST_F(MainWindowTest, KeysMakeAPaneLargerAndSmaller) {
  const auto window = WindowWithWorkspace();
  window->resize(1400, 800);
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  const auto width = [&](const char* dock) { return Dock(*window, dock).width(); };
  window->Desk()->FocusControl();
  const int rules = width("rulesDock");
  window->Menus().largerPane->trigger();
  EXPECT_TRUE(QTest::qWaitFor([&] { return width("rulesDock") > rules; }));
  const int larger = width("rulesDock");
  window->Menus().smallerPane->trigger();
  EXPECT_TRUE(QTest::qWaitFor([&] { return width("rulesDock") < larger; }));
  const int smaller = width("rulesDock");
  window->Programs().FocusFilter();
  const int programs = width("programsDock");
  window->Menus().largerPane->trigger();
  EXPECT_TRUE(QTest::qWaitFor([&] { return width("programsDock") > programs; }));
  window->Desk()->FocusSource();
  window->Menus().smallerPane->trigger();  // the source gives room to the rules
  EXPECT_TRUE(QTest::qWaitFor([&] { return width("rulesDock") > smaller; }));
}

TEST_F(MainWindowTest, TheEncodingOfTheSourcesIsSetInTheOptions) {
  const auto window = WindowWithWorkspace();
  auto& host = window->Desk()->Session().Host();
  const ModalAnswer answer([](QWidget& page) {
    for (auto* const box : page.findChildren<QComboBox*>()) box->setEditText("IBM037");
    qobject_cast<QDialog*>(&page)->accept();
  });
  window->Menus().options->trigger();
  ASSERT_TRUE(answer.Done());
  EXPECT_EQ(host.Folder().SourceEncoding(), "IBM037");
  EXPECT_EQ(host.FileSystem().SourceEncoding(), "IBM037");
  EXPECT_EQ(workbench::EmbeddedHost(Root(), Services()).Folder().SourceEncoding(), "IBM037");
  // The next scan reads the sources by it: they make no sense then.
  EXPECT_EQ(window->Desk()->Session().Scan().Count(workbench::ScannedModel::Outcome::Unchanged), 0U);
}

TEST_F(MainWindowTest, AFolderThatIsNoWorkspaceIsRefusedAndTheWindowLivesOn) {
  const auto window = Window();
  QString told;
  const ModalAnswer answer([&](QWidget& box) {
    told = qobject_cast<QMessageBox*>(&box)->text();
    box.close();
  });
  window->OpenWorkspace(QString::fromStdString(Root() + "/cobol"));
  EXPECT_TRUE(answer.Done());
  EXPECT_TRUE(told.contains("cobol")) << told.toStdString();
  EXPECT_EQ(window->Desk(), nullptr);
  EXPECT_TRUE(window->findChild<QWidget*>("startPage")->isVisible());
  window->OpenWorkspace(QString::fromStdString(Root()));
  EXPECT_NE(window->Desk(), nullptr);
}

TEST_F(MainWindowTest, AProgramThatCannotBeReadIsRefusedAndTheOldOneStaysOnView) {
  const auto window = WindowWithWorkspace();
  auto& session = window->Desk()->Session();
  session.ShowProgram(session.Programs()[1].key);
  std::filesystem::remove(folder_.File("cobol/payfee.cbl"));
  QString told;
  const ModalAnswer answer([&](QWidget& box) {
    told = qobject_cast<QMessageBox*>(&box)->text();
    box.close();
  });
  emit window->Programs().Chosen(QString::fromStdString(session.Programs()[0].key));
  EXPECT_TRUE(told.contains("payfee.cbl")) << told.toStdString();
  EXPECT_EQ(session.Viewer().CurFile()->FileName, "cobol/payrate.cbl");
}

TEST_F(MainWindowTest, AFailureOfAnEventIsToldInABoxAndAgainInTheBar) {
  const auto window = WindowWithWorkspace();
  QString told;
  const ModalAnswer answer([&](QWidget& box) {
    told = qobject_cast<QMessageBox*>(&box)->text();
    // While the box is up there is no other.
    window->TellFailure("The disk is full.");
    box.close();
  });
  window->TellFailure("The catalogue is locked.");
  EXPECT_EQ(told, "The catalogue is locked.");
  EXPECT_EQ(window->Failures().Texts(), QStringList("The disk is full."));
  EXPECT_TRUE(window->Failures().isVisible());
  window->TellFailure("The catalogue is locked.");
  EXPECT_EQ(window->Failures().Texts().size(), 2);
  window->Failures().Close();
  EXPECT_FALSE(window->Failures().isVisible());
}

TEST_F(MainWindowTest, WithoutAWorkspaceAFailureIsToldInTheBar) {
  const auto window = Window();
  window->TellFailure("The catalogue is locked.");
  EXPECT_EQ(window->Failures().Texts(), QStringList("The catalogue is locked."));
}

TEST_F(MainWindowTest, SettingsThatCannotBeReadAreToldAndTheWindowOpens) {
  folder_.Write("broken.json", "{");
  platform::JsonUserSettings broken(folder_.File("broken.json"));
  int boxes = 0;
  QTimer closing;
  QObject::connect(&closing, &QTimer::timeout, [&] {
    if (QWidget* const box = QApplication::activeModalWidget()) {
      ++boxes;
      box->close();
    }
  });
  closing.start(5);
  MainWindow window({.services = Services(),
                     .settings = broken,
                     .appearance = appearance_,
                     .translations = translations_,
                     .language = shell::Language::English});
  window.show();
  EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
  EXPECT_GE(boxes + window.Failures().Texts().size(), 1);
}

TEST_F(MainWindowTest, AChangeByAnotherProcessShowsInTheTree) {
  const auto window = WindowWithWorkspace();
  {
    workbench::EmbeddedHost other(Root(), Services());
    const auto project = other.ProjectObject()->Key();
    const auto function = other.Repository().NewObject("BUSINESSFUNC", "Renewals");
    function->Link("BelongsTo", project);
  }
  const auto hasIt = [&] { return Control(*window).Widgets().tvObjects.Find("f3") != nullptr; };
  EXPECT_TRUE(QTest::qWaitFor(hasIt, 2000));
}

TEST_F(MainWindowTest, AJumpToARuleOpensTheTreeAndShowsTheSegment) {
  const auto window = WindowWithWorkspace();
  auto& widgets = Control(*window).Widgets();
  EXPECT_TRUE(JumpTo({.entity = "RULE", .name = "Fee", .place = "", .key = "RULE#1", .functionID = 1, .ruleSetID = 1},
                     widgets));
  ASSERT_NE(widgets.tvObjects.SelectedNode(), nullptr);
  EXPECT_EQ(widgets.tvObjects.SelectedNode()->Key(), "f1r1");
  EXPECT_EQ(widgets.txtObjName.Text(), "Fee");
  auto& viewer = window->Desk()->Session().Viewer();
  ASSERT_TRUE(viewer.CurFile());
  EXPECT_EQ(viewer.CurFile()->FileName, "cobol/payfee.cbl");
  EXPECT_EQ(viewer.Row(), 6);
  EXPECT_EQ(viewer.SelectedRowsCount(), 2);
  EXPECT_TRUE(JumpTo({.entity = "BUSINESSFUNC", .name = "Claims", .place = "", .key = "BUSINESSFUNC#2"}, widgets));
  EXPECT_EQ(widgets.tvObjects.SelectedNode()->Key(), "f2");
  EXPECT_FALSE(JumpTo({.entity = "RULE", .name = "Gone", .place = "", .key = "RULE#9", .functionID = 1, .ruleSetID = 1},
                      widgets));
}

TEST_F(MainWindowTest, TheLocatorJumps) {
  const auto window = WindowWithWorkspace();
  window->Menus().locate->trigger();
  auto* const locator = window->findChild<Locator*>();
  ASSERT_NE(locator, nullptr);
  auto* const field = locator->findChild<QLineEdit*>();
  QTest::keyClicks(field, "grace");
  auto* const list = locator->findChild<QListView*>();
  ASSERT_TRUE(QTest::qWaitFor([&] { return list->model()->rowCount() == 1; }));
  QTest::keyClick(field, Qt::Key_Return);
  const auto& tree = Control(*window).Widgets().tvObjects;
  EXPECT_TRUE(QTest::qWaitFor([&] { return tree.SelectedNode() != nullptr && tree.SelectedNode()->Key() == "f1r2"; }));
}

TEST_F(MainWindowTest, WhatIsTypedIsWrittenWhenTheWindowCloses) {
  {
    const auto window = WindowWithWorkspace();
    auto& widgets = Control(*window).Widgets();
    widgets.tvObjects.Click(*widgets.tvObjects.Find("f2"));
    widgets.txtObjName.SetFocus();
    widgets.txtObjName.Enter("Settlement");
    window->close();
  }
  workbench::EmbeddedHost host(Root(), Services());
  EXPECT_NE(host.Repository().FindObject("BUSINESSFUNC", "Settlement"), nullptr);
}

TEST_F(MainWindowTest, TheKeyboardPageShowsTheKeysOfTheMenus) {
  const auto window = Window();
  bool hasShown = false;
  const ModalAnswer answer([&](QWidget& page) {
    auto* const list = page.findChild<QTreeView*>();
    const QModelIndex group = list->model()->index(0, 0);
    for (int row = 0; row < list->model()->rowCount(group); ++row) {
      hasShown = hasShown || list->model()->index(row, 1, group).data().toString() == "Ctrl+K";
    }
    page.close();
  });
  window->Menus().keyboard->trigger();
  EXPECT_TRUE(hasShown);
}

TEST_F(MainWindowTest, MakesANewWorkspaceAndScansIt) {
  const test::TemporaryFolder sources;
  sources.Write("one.cbl",
                "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. ONE.\n       PROCEDURE DIVISION.\n"
                "           STOP RUN.\n");
  const auto window = Window();
  const ModalAnswer answer([&](QWidget& dialog) {
    dialog.findChild<QLineEdit*>("folder")->setText(QString::fromStdString(sources.Path().string()));
    dialog.findChild<QLineEdit*>("project")->setText("First");
    qobject_cast<QDialog*>(&dialog)->accept();
  });
  window->Menus().newWorkspace->trigger();
  ASSERT_NE(window->Desk(), nullptr);
  EXPECT_EQ(window->Programs().Model().rowCount(), 1);
  EXPECT_EQ(Preferences(settings_).RecentWorkspaces(), QStringList(QString::fromStdString(sources.Path().string())));
}

TEST_F(MainWindowTest, ANewWorkspaceThatCannotBeMadeIsToldInItsDialog) {
  NewWorkspaceDialog dialog([](const workbench::EmbeddedHost::NewWorkspace&) {
    throw platform::Error("The folder is a workspace already.");
  });
  dialog.findChild<QLineEdit*>("folder")->setText("/somewhere/billing");
  EXPECT_EQ(dialog.findChild<QLineEdit*>("project")->text(), "billing");
  dialog.show();
  dialog.accept();
  EXPECT_TRUE(dialog.isVisible());
  EXPECT_EQ(dialog.findChild<QLabel*>("failure")->text(), "The folder is a workspace already.");
}

}  // namespace
}  // namespace qmrules::desktop
