#include "desktop/window/programspane.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSortFilterProxyModel>
#include <QTest>
#include <QTreeView>

namespace qmrules::desktop {
namespace {

using catalogue::RegisteredSource;

RegisteredSource Program(const char* key, const char* name, const char* file) {
  return {key, "COBOL", name, file, 100, ""};
}

class ProgramsPaneTest : public testing::Test {
 protected:
  ProgramsPaneTest() {
    pane_.resize(300, 300);
    pane_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&pane_));
  }
  void FillPane() {
    pane_.SetPrograms({Program("COBOL#1", "PBRATE01", "cobol/pbrate01.cbl"),
                       Program("COBOL#2", "PBFEE01", "cobol/pbfee01.cbl"),
                       Program("COBOL#3", "BATCH", "jobs/nightly.cbl")});
  }
  QLineEdit& Filter() { return *pane_.findChild<QLineEdit*>("programFilter"); }
  QTreeView& List() { return *pane_.findChild<QTreeView*>("programList"); }
  QLabel& Nothing() { return *pane_.findChild<QLabel*>("noPrograms"); }
  QStringList Shown() {
    QStringList names;
    for (int row = 0; row < List().model()->rowCount(); ++row) names += List().model()->index(row, 0).data().toString();
    return names;
  }
  void ClickRow(int row) {
    const QPoint place = List().visualRect(List().model()->index(row, 0)).center();
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, place);
  }

  ProgramsPane pane_;
  QAbstractItemModelTester tester_{&pane_.Model(), QAbstractItemModelTester::FailureReportingMode::Fatal};
  QSignalSpy chosen_{&pane_, &ProgramsPane::Chosen};
};

TEST_F(ProgramsPaneTest, ShowsProgramsByName) {
  FillPane();
  EXPECT_EQ(Shown(), (QStringList{"BATCH", "PBFEE01", "PBRATE01"}));
  EXPECT_EQ(List().model()->index(0, ProgramModel::kLanguage).data().toString(), "COBOL");
}

TEST_F(ProgramsPaneTest, TheLanguagesAreShownWhereThereAreSeveral) {
  FillPane();
  EXPECT_TRUE(List().isColumnHidden(ProgramModel::kLanguage));
  auto programs = pane_.Model().Programs();
  programs.push_back({"JCL#1", "JCL", "NIGHTLY", "jobs/nightly.jcl", 10, ""});
  pane_.SetPrograms(programs);
  EXPECT_FALSE(List().isColumnHidden(ProgramModel::kLanguage));
}

TEST_F(ProgramsPaneTest, FiltersByNameAndFileInAnyCase) {
  FillPane();
  QTest::keyClicks(&Filter(), "pb");
  EXPECT_EQ(Shown(), (QStringList{"PBFEE01", "PBRATE01"}));
  Filter().clear();
  QTest::keyClicks(&Filter(), "JOBS");
  EXPECT_EQ(Shown(), QStringList("BATCH"));
  Filter().clear();
  EXPECT_EQ(Shown().size(), 3);
}

TEST_F(ProgramsPaneTest, SaysWhyItShowsNothing) {
  EXPECT_TRUE(Nothing().isVisible());
  EXPECT_NE(Nothing().text().indexOf("no programs yet"), -1);
  FillPane();
  EXPECT_FALSE(Nothing().isVisible());
  QTest::keyClicks(&Filter(), "zzz");
  EXPECT_TRUE(Nothing().isVisible());
  EXPECT_NE(Nothing().text().indexOf("has this text"), -1);
}

TEST_F(ProgramsPaneTest, AClickChoosesAProgram) {
  FillPane();
  ClickRow(1);
  ASSERT_FALSE(chosen_.isEmpty());
  EXPECT_EQ(chosen_.first().first().toString(), "COBOL#2");
}

TEST_F(ProgramsPaneTest, TheFilterBoxLeadsThroughTheListAndChooses) {
  FillPane();
  pane_.FocusFilter();
  QTest::keyClicks(&Filter(), "pb");
  QTest::keyClick(&Filter(), Qt::Key_Down);
  QTest::keyClick(&Filter(), Qt::Key_Return);
  ASSERT_FALSE(chosen_.isEmpty());
  EXPECT_EQ(chosen_.first().first().toString(), "COBOL#1");
}

TEST_F(ProgramsPaneTest, EnterInAListOfNothingChoosesNothing) {
  FillPane();
  QTest::keyClicks(&Filter(), "zzz");
  QTest::keyClick(&Filter(), Qt::Key_Return);
  EXPECT_TRUE(chosen_.isEmpty());
}

TEST_F(ProgramsPaneTest, ShowsTheNumberOfRulesAndSortsByIt) {
  FillPane();
  pane_.Model().SetRuleCounts([](const RegisteredSource& program) {
    return program.name == "BATCH" ? 0 : program.name == "PBFEE01" ? 9 : 10;
  });
  List().sortByColumn(ProgramModel::kRules, Qt::DescendingOrder);
  EXPECT_EQ(Shown(), (QStringList{"PBRATE01", "PBFEE01", "BATCH"}));
  EXPECT_EQ(List().model()->index(0, ProgramModel::kRules).data().toString(), "10");
  EXPECT_EQ(List().model()->index(2, ProgramModel::kRules).data().toString(), "");
}

TEST_F(ProgramsPaneTest, MarksTheProgramOnView) {
  FillPane();
  pane_.SetCurrent("COBOL#2");
  EXPECT_EQ(List().currentIndex().data().toString(), "PBFEE01");
  EXPECT_TRUE(List().model()->index(1, 0).data(Qt::FontRole).value<QFont>().bold());
  pane_.SetCurrent("");
  EXPECT_FALSE(List().model()->index(1, 0).data(Qt::FontRole).value<QFont>().bold());
}

TEST_F(ProgramsPaneTest, KeepsTheCurrentRowWhenTheSameProgramsAreReadAgain) {
  FillPane();
  pane_.SetCurrent("COBOL#2");
  FillPane();
  EXPECT_EQ(List().currentIndex().data().toString(), "PBFEE01");
}

}  // namespace
}  // namespace qmrules::desktop
