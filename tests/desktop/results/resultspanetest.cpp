#include "desktop/results/resultspane.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>

#include "desktop/results/demofindings.h"
#include "desktop/results/findingmodel.h"
#include "desktop/results/findingtexts.h"

namespace qmrules::desktop {
namespace {

class ResultsPaneTest : public testing::Test {
 protected:
  ResultsPaneTest() {
    pane_.resize(1100, 320);
    pane_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&pane_));
  }
  void FillPane() {
    pane_.SetReport(test::DemoReport(), [this](const std::string& file) {
      ++reads_;
      return test::SourceOf(file);
    });
  }
  QLineEdit& Filter() { return *pane_.findChild<QLineEdit*>("findingFilter"); }
  QTreeView& List() { return *pane_.findChild<QTreeView*>("findingList"); }
  QLabel& Label(const char* name) { return *pane_.findChild<QLabel*>(name); }
  QStringList Column(int column) {
    QStringList texts;
    for (int row = 0; row < List().model()->rowCount(); ++row) {
      texts += List().model()->index(row, column).data().toString();
    }
    return texts;
  }
  QPoint PlaceOf(int row) { return List().visualRect(List().model()->index(row, 1)).center(); }
  void ClickRow(int row, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(List().viewport(), Qt::LeftButton, keys, PlaceOf(row));
  }
  void ClickHeader(int column) {
    QHeaderView& header = *List().header();
    QTest::mouseClick(
        header.viewport(), Qt::LeftButton, {},
        QPoint(header.sectionViewportPosition(column) + header.sectionSize(column) / 2, header.height() / 2));
  }
  QString Compared() { return Label("findingMeaning").text().section(':', 0, 0); }

  int reads_ = 0;
  ResultsPane pane_;
  QAbstractItemModelTester tester_{&pane_.Model(), QAbstractItemModelTester::FailureReportingMode::Fatal};
  QSignalSpy chosen_{&pane_, &ResultsPane::RuleChosen};
};

TEST_F(ResultsPaneTest, SaysWhyItIsEmpty) {
  EXPECT_TRUE(Label("noFindings").isVisible());
  EXPECT_TRUE(Label("noFindings").text().startsWith("No rule has been validated yet."));
  EXPECT_FALSE(List().isVisible());
  FillPane();
  EXPECT_FALSE(Label("noFindings").isVisible());
  QTest::keyClicks(&Filter(), "zzz");
  EXPECT_EQ(Label("noFindings").text(), "No result has this text.");
}

TEST_F(ResultsPaneTest, ListsVerdictRuleFileAndRows) {
  FillPane();
  EXPECT_EQ(Column(0), (QStringList{"file missing", "not found", "ambiguous", "moved", "unchanged", "no segment"}));
  EXPECT_EQ(Column(1), (QStringList{"Lost", "Rate", "Total", "Tax", "Fee", "Unwritten"}));
  EXPECT_EQ(Column(2), (QStringList{"gone.cbl", "pay.cbl", "pay.cbl", "pay.cbl", "pay.cbl", ""}));
  EXPECT_EQ(Column(3), (QStringList{"7-8", "2", "4", "1-2", "1", ""}));
  EXPECT_EQ(Column(4), (QStringList{"", "", "6 (+2)", "3-5", "", ""}));
  QStringList headings;
  for (int column = 0; column < 5; ++column) headings += List().model()->headerData(column, Qt::Horizontal).toString();
  EXPECT_EQ(headings, (QStringList{"Verdict", "Rule", "File", "Old rows", "New rows"}));
}

TEST_F(ResultsPaneTest, EachVerdictHasAPictureAndAMeaning) {
  const IconSet icons(IconSet::Background::Light);
  for (const auto verdict : validation::VerdictsByNeed()) {
    EXPECT_FALSE(icons.Svg(VerdictIcon(verdict)).isEmpty()) << VerdictIcon(verdict);
    EXPECT_FALSE(VerdictMeaning(verdict).isEmpty());
  }
  FillPane();
  EXPECT_FALSE(List().model()->index(0, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
  EXPECT_EQ(List().model()->index(0, 0).data(Qt::ToolTipRole).toString(), "The file cannot be read.");
}

TEST_F(ResultsPaneTest, CountsEachVerdict) {
  FillPane();
  EXPECT_EQ(
      Label("findingCounts").text().split(QString::fromUtf8(" · ")),
      (QStringList{"file missing: 1", "not found: 1", "ambiguous: 1", "moved: 1", "unchanged: 1", "no segment: 1"}));
}

TEST_F(ResultsPaneTest, AClickOnAHeadingSorts) {
  FillPane();
  ClickHeader(1);
  EXPECT_EQ(Column(1), (QStringList{"Fee", "Lost", "Rate", "Tax", "Total", "Unwritten"}));
  ClickHeader(1);
  EXPECT_EQ(Column(1), (QStringList{"Unwritten", "Total", "Tax", "Rate", "Lost", "Fee"}));
}

TEST_F(ResultsPaneTest, FiltersByVerdictRuleAndFile) {
  FillPane();
  QTest::keyClicks(&Filter(), "PAY not");
  EXPECT_EQ(Column(1), QStringList("Rate"));
  Filter().clear();
  EXPECT_EQ(Column(1).size(), 6);
}

TEST_F(ResultsPaneTest, AClickComparesTheRule) {
  FillPane();
  ClickRow(3);
  EXPECT_EQ(Compared(), "Tax");
  EXPECT_EQ(reads_, 1);
  EXPECT_TRUE(chosen_.isEmpty());
}

TEST_F(ResultsPaneTest, TheKeyboardGoesThroughTheListAndEnterCompares) {
  FillPane();
  pane_.FocusList();
  EXPECT_TRUE(List().hasFocus());
  QTest::keyClick(&List(), Qt::Key_Down);
  EXPECT_EQ(reads_, 0) << "the arrows alone read no file";
  QTest::keyClick(&List(), Qt::Key_Return);
  EXPECT_EQ(Compared(), "Rate");
  QTest::keyClick(&List(), Qt::Key_Up);
  QTest::keyClick(&List(), Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(Compared(), "Lost");
  EXPECT_TRUE(chosen_.isEmpty());
}

TEST_F(ResultsPaneTest, TheFilterBoxLeadsThroughTheList) {
  FillPane();
  Filter().setFocus();
  QTest::keyClicks(&Filter(), "pay");
  QTest::keyClick(&Filter(), Qt::Key_Down);
  QTest::keyClick(&Filter(), Qt::Key_Return);
  EXPECT_EQ(Compared(), "Total");
}

TEST_F(ResultsPaneTest, ADoubleClickOrCtrlEnterChoosesTheRule) {
  FillPane();
  ClickRow(1);
  QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(1));
  ASSERT_EQ(chosen_.size(), 1);
  EXPECT_EQ(chosen_.first().first().toInt(), 4);
  QTest::keyClick(&List(), Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(chosen_.size(), 2);
}

TEST_F(ResultsPaneTest, CtrlCCopiesTheSelectedRowsWithTabs) {
  FillPane();
  ClickRow(3);
  ClickRow(2, Qt::ShiftModifier);
  QTest::keyClick(&List(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(),
            "ambiguous\tTotal\tpay.cbl\t4\t6 (+2)\nmoved\tTax\tpay.cbl\t1-2\t3-5\n");
}

TEST_F(ResultsPaneTest, TheCurrentRuleStaysCurrentWhenTheListIsSorted) {
  FillPane();
  ClickRow(3);
  ClickHeader(1);
  EXPECT_EQ(List().currentIndex().siblingAtColumn(1).data().toString(), "Tax");
  EXPECT_EQ(Compared(), "Tax");
}

TEST_F(ResultsPaneTest, AnotherRunTakesThePlaceOfTheFirst) {
  FillPane();
  ClickRow(3);
  auto next = std::make_shared<validation::ValidationReport>();
  next->findings.push_back(
      test::Finding(9, validation::Verdict::Unchanged, "Other", "pay.cbl", {1, 1}, "ADD 1 TO FEE\n"));
  pane_.SetReport(next, test::SourceOf);
  EXPECT_EQ(Column(1), QStringList("Other"));
  EXPECT_TRUE(Label("findingMeaning").text().startsWith("Choose a rule"));
  pane_.Clear();
  EXPECT_FALSE(pane_.HasReport());
  EXPECT_EQ(List().model()->rowCount(), 0);
}

TEST_F(ResultsPaneTest, EnterInAnEmptyListDoesNothing) {
  FillPane();
  QTest::keyClicks(&Filter(), "zzz");
  QTest::keyClick(&Filter(), Qt::Key_Return);
  QTest::keyClick(&Filter(), Qt::Key_Return, Qt::ControlModifier);
  pane_.FocusList();
  EXPECT_EQ(reads_, 0);
  EXPECT_TRUE(chosen_.isEmpty());
}

TEST_F(ResultsPaneTest, ScreenReadersAreToldWhatTheWidgetsAre) {
  const auto nameOf = [](QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
  };
  EXPECT_EQ(nameOf(Filter()), "Filter by verdict, rule or file");
  EXPECT_EQ(nameOf(List()), "Results of the validation");
}

TEST_F(ResultsPaneTest, AHundredThousandResultsAreSortedAndFilteredWithoutAWait) {
  auto report = std::make_shared<validation::ValidationReport>();
  for (int rule = 0; rule < 100'000; ++rule) {
    report->findings.push_back(test::Finding(rule, static_cast<validation::Verdict>(rule % 9),
                                             "Rule " + std::to_string(rule), "pay.cbl", {rule, rule}, ""));
  }
  pane_.SetReport(report, test::SourceOf);
  ClickHeader(3);
  QTest::keyClicks(&Filter(), "rule 9999");
  EXPECT_EQ(List().model()->rowCount(), 19);
}

}  // namespace
}  // namespace qmrules::desktop
