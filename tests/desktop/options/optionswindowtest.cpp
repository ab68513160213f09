#include "desktop/options/optionswindow.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTest>
#include <QTimer>

#include "desktop/options/folderoptions.h"
#include "desktop/options/optiondocument.h"
#include "desktop/options/optionpage.h"
#include "desktop/options/optionrow.h"
#include "platform/encoding.h"
#include "platform/error.h"
#include "workbench/options/defaultoptions.h"

namespace qmrules::desktop {
namespace {

using workbench::DefaultGlobalOptions;
using workbench::DefaultProjectOptions;

constexpr const char* kValidationPath =
    "/OPTIONS/CASE[@NAME='Ferrowood']/LIST[@NAME='FW']/CASE[@NAME='CRD']/LIST[@NAME='CRDOptions']"
    "/CASE[@NAME='RuleValidation']";

class OptionsWindowTest : public testing::Test {
 protected:
  OptionsWindow& Open(std::string path = {}) {
    window_ = std::make_unique<OptionsWindow>(
        OptionsWindow::Request{.sheets = {{OptionScope::Project, project_, DefaultProjectOptions()},
                                          {OptionScope::Folder, folder_, FolderOptions({})},
                                          {OptionScope::Workspace, global_, DefaultGlobalOptions()}},
                               .path = std::move(path),
                               .store = [this] { Store(); }});
    window_->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
    return *window_;
  }

  void Store() {
    ++stores_;
    if (storeFails_) throw platform::Error("The disk is full.");
  }

  OptionRow& Row(std::string_view name) {
    for (auto* const row : window_->findChildren<OptionRow*>()) {
      if (row->Option().name == name) return *row;
    }
    throw std::out_of_range("no such row: " + std::string(name));
  }

  template <class Widget>
  Widget& Field(std::string_view name) {
    return *Row(name).findChild<Widget*>();
  }

  void Press(QDialogButtonBox::StandardButton button) {
    QTest::mouseClick(window_->findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
  }

  std::vector<std::string> ShownRows() {
    std::vector<std::string> names;
    for (auto* const row : window_->findChildren<OptionRow*>()) {
      if (!row->isHidden()) names.emplace_back(row->Option().name);
    }
    return names;
  }

  QString CurrentPage() {
    const auto* const item = window_->findChild<QListWidget*>("", Qt::FindDirectChildrenOnly)->currentItem();
    return item == nullptr ? QString() : item->text();
  }

  std::string Text(const platform::XmlDocument& document) { return document.documentElement().xml(); }

  // Presses the button of the message box that comes up next, and keeps its text.
  void AnswerNext(QMessageBox::StandardButton button) {
    QTimer::singleShot(0, qApp, [this, button] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      message_ = box->text().toStdString();
      QTest::mouseClick(box->button(button), Qt::LeftButton);
    });
  }

  platform::XmlDocument project_ = DefaultProjectOptions();
  platform::XmlDocument folder_ = FolderOptions({});
  platform::XmlDocument global_ = DefaultGlobalOptions();
  std::unique_ptr<OptionsWindow> window_;
  std::string message_;
  int stores_ = 0;
  bool storeFails_ = false;
};

TEST_F(OptionsWindowTest, ShowsEveryOptionWithItsMeaning) {
  Open();
  EXPECT_EQ(window_->findChildren<OptionRow*>().size(), static_cast<qsizetype>(OptionTable().size()));
  for (const OptionSpec& option : OptionTable()) {
    bool hasMeaning = false;
    for (const auto* const label : Row(option.name).findChildren<QLabel*>()) {
      hasMeaning = hasMeaning || label->text() == option.meaning;
    }
    EXPECT_TRUE(hasMeaning) << option.name;
  }
}

TEST_F(OptionsWindowTest, ShowsTheValuesOfTheDocuments) {
  project_.selectSingleNode(std::string(kValidationPath) + "/LIST").setAttribute("VALUE", "delete");
  Open();
  EXPECT_EQ(Field<QLineEdit>("UnassignedBFName").text(), "Unassigned Business Function");
  EXPECT_EQ(Row("SegmentValidation").Editor().Value(), OptionValue(std::string("delete")));
  EXPECT_FALSE(Field<QCheckBox>("CollapseSpaces").isChecked());
  EXPECT_TRUE(Field<QCheckBox>("const.move").isChecked());
  EXPECT_TRUE(Field<QCheckBox>("QMGlossary").isChecked());
  EXPECT_EQ(Field<QListWidget>("BlackListTemplates").count(), 2);
}

TEST_F(OptionsWindowTest, OkWritesTheTypedValuesAndStoresOnce) {
  Open();
  auto& name = Field<QLineEdit>("UnassignedBFName");
  name.selectAll();
  QTest::keyClicks(&name, "Without a home");
  QTest::mouseClick(&Field<QCheckBox>("const.move"), Qt::LeftButton, {}, QPoint(5, 8));
  QTest::mouseClick(&Field<QCheckBox>("QMGlossary"), Qt::LeftButton, {}, QPoint(5, 8));
  Press(QDialogButtonBox::Ok);
  EXPECT_EQ(window_->result(), QDialog::Accepted);
  EXPECT_EQ(stores_, 1);
  EXPECT_EQ(window_->Changed(), (std::vector<std::string>{"UnassignedBFName", "const.move", "QMGlossary"}));
  EXPECT_TRUE(project_.selectSingleNode("//TEXT[@VALUE='Without a home']"));
  EXPECT_TRUE(project_.selectSingleNode("//CASE[@NAME='const.move' and @CHECKED='false']"));
  EXPECT_FALSE(global_.selectSingleNode("//CASE[@NAME='QMGlossary']"));
}

TEST_F(OptionsWindowTest, TheEncodingOfTheSourcesIsChosenByItsMeaning) {
  Open();
  auto& box = Field<QComboBox>("sourceEncoding");
  EXPECT_EQ(box.currentText(), "UTF-8, else ISO-8859-1");
  box.setCurrentIndex(box.findText("SHIFT_JIS (Japanese, Windows)"));
  Press(QDialogButtonBox::Ok);
  EXPECT_EQ(EncodingOf(folder_), "SHIFT_JIS");
  EXPECT_EQ(window_->Changed(), std::vector<std::string>{"sourceEncoding"});
  Open();
  EXPECT_EQ(Field<QComboBox>("sourceEncoding").currentText(), "SHIFT_JIS (Japanese, Windows)");
  Field<QComboBox>("sourceEncoding").setCurrentIndex(0);
  Press(QDialogButtonBox::Ok);
  EXPECT_EQ(EncodingOf(folder_), "");
}

TEST_F(OptionsWindowTest, AnEncodingThatIsNotListedIsTypedByItsName) {
  Open();
  auto& box = Field<QComboBox>("sourceEncoding");
  box.setEditText("KLINGON");
  Press(QDialogButtonBox::Ok);
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(EncodingOf(folder_), "");
  box.setEditText(" IBM1141 ");
  Press(QDialogButtonBox::Ok);
  EXPECT_EQ(EncodingOf(folder_), "IBM1141");
  Open();
  EXPECT_EQ(Field<QComboBox>("sourceEncoding").currentText(), "IBM1141");
}

TEST_F(OptionsWindowTest, EveryEncodingOfTheListIsKnown) {
  Open();
  const auto& box = Field<QComboBox>("sourceEncoding");
  for (int at = 1; at < box.count(); ++at) {
    EXPECT_TRUE(platform::IsKnownEncoding(box.itemData(at).toString().toStdString())) << box.itemText(at).toStdString();
  }
}

TEST_F(OptionsWindowTest, OkWithoutAChangeWritesNothing) {
  const std::string before = Text(project_);
  Open();
  Press(QDialogButtonBox::Ok);
  EXPECT_EQ(window_->result(), QDialog::Accepted);
  EXPECT_EQ(stores_, 0);
  EXPECT_EQ(Text(project_), before);
}

TEST_F(OptionsWindowTest, CancelLeavesTheDocumentsAsTheyWere) {
  const std::string before = Text(project_);
  Open();
  Field<QCheckBox>("CollapseSpaces").setChecked(true);
  AnswerNext(QMessageBox::Yes);
  Press(QDialogButtonBox::Cancel);
  EXPECT_EQ(message_, "Drop the changes that you have made?");
  EXPECT_FALSE(window_->isVisible());
  EXPECT_EQ(window_->result(), QDialog::Rejected);
  EXPECT_EQ(Text(project_), before);
  EXPECT_EQ(stores_, 0);
}

TEST_F(OptionsWindowTest, CancelWithoutAChangeAsksNothing) {
  Open();
  Press(QDialogButtonBox::Cancel);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(OptionsWindowTest, ChangesAreKeptWhenTheyAreNotToBeDropped) {
  Open();
  Field<QCheckBox>("CollapseSpaces").setChecked(true);
  AnswerNext(QMessageBox::No);
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  EXPECT_TRUE(window_->isVisible());
  EXPECT_TRUE(Field<QCheckBox>("CollapseSpaces").isChecked());
}

TEST_F(OptionsWindowTest, ARefusedValueIsShownAndNothingIsWritten) {
  const std::string before = Text(project_);
  Open();
  Field<QListWidget>("BlackListTemplates").item(0)->setText("WS-[");
  Field<QCheckBox>("CollapseSpaces").setChecked(true);
  Press(QDialogButtonBox::Ok);
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(CurrentPage(), "Detection");
  EXPECT_EQ(Text(project_), before);
  bool isTold = false;
  for (const auto* const label : Row("BlackListTemplates").findChildren<QLabel*>()) {
    isTold = isTold || (label->isVisible() && label->text().startsWith("“WS-[” is no template"));
  }
  EXPECT_TRUE(isTold);
  Field<QListWidget>("BlackListTemplates").item(0)->setText("WS-*");
  Press(QDialogButtonBox::Ok);
  EXPECT_EQ(window_->result(), QDialog::Accepted);
  EXPECT_TRUE(project_.selectSingleNode("//STRING[@VALUE='WS-*']"));
}

TEST_F(OptionsWindowTest, WhenStoringFailsTheDocumentsAreAsTheyWereAndTheWindowStays) {
  const std::string before = Text(project_);
  storeFails_ = true;
  Open();
  Field<QLineEdit>("UnassignedRSName").setText("Elsewhere");
  Field<QCheckBox>("QMGlossary").setChecked(false);
  AnswerNext(QMessageBox::Ok);
  Press(QDialogButtonBox::Ok);
  EXPECT_EQ(message_, "The options were not stored, and are as they were.\n\nThe disk is full.");
  EXPECT_TRUE(window_->isVisible());
  EXPECT_TRUE(window_->Changed().empty());
  EXPECT_EQ(Text(project_), before);
  EXPECT_TRUE(global_.selectSingleNode("//CASE[@NAME='QMGlossary']"));
  EXPECT_EQ(Field<QLineEdit>("UnassignedRSName").text(), "Elsewhere");
  storeFails_ = false;
  Press(QDialogButtonBox::Ok);
  EXPECT_TRUE(project_.selectSingleNode("//TEXT[@VALUE='Elsewhere']"));
}

TEST_F(OptionsWindowTest, APathShowsOnlyTheOptionsBelowIt) {
  Open(kValidationPath);
  std::vector<std::string> project;
  for (const auto& name : ShownRows()) {
    if (name != "QMGlossary" && name != "sourceEncoding") project.push_back(name);
  }
  EXPECT_EQ(project, (std::vector<std::string>{"SegmentValidation", "CollapseSpaces"}));
}

TEST_F(OptionsWindowTest, OnePageNeedsNeitherListNorSearch) {
  OptionsWindow window(
      {.sheets = {{OptionScope::Project, project_, DefaultProjectOptions()}}, .path = kValidationPath});
  EXPECT_EQ(window.windowTitle(), "Options: Rule Validation");
  EXPECT_TRUE(window.findChild<QListWidget*>("", Qt::FindDirectChildrenOnly)->isHidden());
  EXPECT_TRUE(window.findChild<QLineEdit*>("", Qt::FindDirectChildrenOnly)->isHidden());
}

TEST_F(OptionsWindowTest, APageIsShownByThePathOfItsNode) {
  Open();
  EXPECT_TRUE(window_->ShowPage(kValidationPath));
  EXPECT_EQ(CurrentPage(), "Rule Validation");
  EXPECT_TRUE(window_->ShowPage("//CASE[@NAME='QMGlossary']"));
  EXPECT_EQ(CurrentPage(), "Components");
  EXPECT_FALSE(window_->ShowPage("//CASE[@NAME='NoSuchNode']"));
}

TEST_F(OptionsWindowTest, TheSearchShowsTheOptionsThatHoldItsWords) {
  Open();
  auto& search = *window_->findChild<QLineEdit*>("", Qt::FindDirectChildrenOnly);
  QTest::keyClicks(&search, "copybook scan");
  EXPECT_EQ(ShownRows(), (std::vector<std::string>{"CopybookFolders"}));
  EXPECT_EQ(CurrentPage(), "COBOL Sources");
  search.setText("column 8");
  EXPECT_EQ(ShownRows(), (std::vector<std::string>{"SourceFormat"}));
  search.setText("no such words");
  EXPECT_TRUE(window_->findChild<QStackedWidget*>()->isHidden());
  search.clear();
  EXPECT_EQ(ShownRows().size(), OptionTable().size());
}

TEST_F(OptionsWindowTest, RestoreDefaultsWorksOnThePageOnView) {
  Open();
  Field<QCheckBox>("CollapseSpaces").setChecked(true);
  Field<QLineEdit>("UnassignedBFName").setText("Other");
  window_->ShowPage(kValidationPath);
  Press(QDialogButtonBox::RestoreDefaults);
  EXPECT_FALSE(Field<QCheckBox>("CollapseSpaces").isChecked());
  EXPECT_EQ(Field<QLineEdit>("UnassignedBFName").text(), "Other");
}

TEST_F(OptionsWindowTest, AValueThatIsNoChoiceIsKept) {
  project_.selectSingleNode(std::string(kValidationPath) + "/LIST").setAttribute("VALUE", "ask");
  Open();
  EXPECT_EQ(Row("SegmentValidation").Editor().Value(), OptionValue(std::string("ask")));
  EXPECT_EQ(Row("SegmentValidation").findChildren<QRadioButton*>().size(), 4);
  Field<QCheckBox>("CollapseSpaces").setChecked(true);
  Press(QDialogButtonBox::Ok);
  EXPECT_TRUE(project_.selectSingleNode("//LIST[@NAME='SegmentValidation' and @VALUE='ask']"));
}

TEST_F(OptionsWindowTest, UnknownNodesSurvive) {
  auto root = project_.documentElement();
  root.appendChild(project_.createElement("SITE")).setAttribute("KEY", "value");
  Open();
  Field<QCheckBox>("CollapseSpaces").setChecked(true);
  Press(QDialogButtonBox::Ok);
  EXPECT_TRUE(project_.selectSingleNode("/OPTIONS/SITE[@KEY='value']"));
}

TEST_F(OptionsWindowTest, AnOlderDocumentShowsTheDefaultsAndGetsANodeWhenItIsChanged) {
  project_.loadXML("<OPTIONS/>");
  Open();
  EXPECT_EQ(Field<QLineEdit>("UnassignedRSName").text(), "Unassigned Rule Set");
  Field<QCheckBox>("CollapseSpaces").setChecked(true);
  Press(QDialogButtonBox::Ok);
  EXPECT_EQ(project_.selectSingleNode("//BOOL[@NAME='CollapseSpaces']").getAttribute("VALUE"), "true");
}

class TextList : public OptionsWindowTest {
 protected:
  TextList() {
    Open();
    window_->ShowPage("//STRINGS[@NAME='BlackListTemplates']");
    list_ = &Field<QListWidget>("BlackListTemplates");
  }

  void Click(const char* caption) {
    for (auto* const button : Row("BlackListTemplates").findChildren<QPushButton*>()) {
      if (button->text() == caption) QTest::mouseClick(button, Qt::LeftButton);
    }
  }

  std::vector<ListedText> Value() {
    return std::get<std::vector<ListedText>>(Row("BlackListTemplates").Editor().Value());
  }

  QListWidget* list_;
};

TEST_F(TextList, AddOpensAnEmptyLineForTyping) {
  Click("Add");
  auto* const field = list_->findChild<QLineEdit*>();
  ASSERT_NE(field, nullptr);
  QTest::keyClicks(field, "WS-*");
  QTest::keyClick(field, Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_EQ(Value(), (std::vector<ListedText>{{"FILLER*", false}, {"SQLCODE", false}, {"WS-*", true}}));
  EXPECT_TRUE(window_->isVisible());
}

TEST_F(TextList, OkTakesTheLineThatIsBeingTyped) {
  Click("Add");
  QTest::keyClicks(list_->findChild<QLineEdit*>(), "WS-*");
  window_->accept();
  EXPECT_TRUE(project_.selectSingleNode("//STRING[@VALUE='WS-*']"));
}

TEST_F(TextList, SpaceTicksALine) {
  list_->setCurrentRow(1);
  list_->setFocus();
  QTest::keyClick(list_, Qt::Key_Space);
  EXPECT_EQ(Value(), (std::vector<ListedText>{{"FILLER*", false}, {"SQLCODE", true}}));
}

TEST_F(TextList, DeleteTakesALineOut) {
  list_->setCurrentRow(0);
  list_->setFocus();
  QTest::keyClick(list_, Qt::Key_Delete);
  EXPECT_EQ(Value(), (std::vector<ListedText>{{"SQLCODE", false}}));
}

TEST_F(TextList, LinesAreMovedUpAndDown) {
  list_->setCurrentRow(0);
  Click("Move Down");
  EXPECT_EQ(Value().front().text, "SQLCODE");
  EXPECT_EQ(list_->currentRow(), 1);
  Click("Move Down");
  EXPECT_EQ(Value().back().text, "FILLER*");
  Click("Move Up");
  EXPECT_EQ(Value().front().text, "FILLER*");
}

TEST_F(OptionsWindowTest, EveryFieldHasAnAccessibleName) {
  Open();
  for (auto* const widget : window_->findChildren<QWidget*>()) {
    if (widget->focusPolicy() == Qt::NoFocus || widget->focusProxy() != nullptr) continue;
    if (widget->objectName().startsWith("qt_") || widget->inherits("QScrollBar")) continue;
    const auto* const face = QAccessible::queryAccessibleInterface(widget);
    ASSERT_NE(face, nullptr);
    EXPECT_FALSE(face->text(QAccessible::Name).isEmpty()) << widget->metaObject()->className();
  }
}

TEST_F(OptionsWindowTest, TabReachesEveryFieldOfAPage) {
  Open();
  window_->ShowPage("//TEXT[@NAME='UnassignedBFName']");
  std::vector<QWidget*> reached;
  for (int step = 0; step < 4; ++step) {
    reached.push_back(QApplication::focusWidget());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(reached, (std::vector<QWidget*>{
                         &Field<QLineEdit>("UnassignedBFName"), &Field<QPlainTextEdit>("UnassignedBFDescr"),
                         &Field<QLineEdit>("UnassignedRSName"), &Field<QPlainTextEdit>("UnassignedRSDescr")}));
}

}  // namespace
}  // namespace qmrules::desktop
