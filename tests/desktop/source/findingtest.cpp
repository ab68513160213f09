#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>

#include "desktop/source/findbar.h"
#include "desktop/source/matches.h"
#include "desktop/source/shownsource.h"

namespace qmrules::desktop {
namespace {

class FindingTest : public ShownSource {
 protected:
  void SetUp() override {
    Show("       MOVE A-TOTAL TO TOTAL.\n       MOVE total TO B.\n       ADD SUBTOTAL TO TOTAL.\n");
  }

  QLineEdit& Pattern() { return Find<QLineEdit>("findPattern"); }
  void Type(const char* pattern) {
    Press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(&Pattern(), QString::fromLatin1(pattern));
  }
  // The row and column of the selected match.
  std::string At() const { return std::to_string(viewer.Row()) + ":" + std::to_string(viewer.Column()); }
  std::string Count() { return Told("findCount"); }
};

TEST_F(FindingTest, TypingShowsTheFirstMatchAndTheirNumber) {
  Type("TOTAL");
  EXPECT_EQ(At(), "1:15");
  EXPECT_EQ(text->textCursor().selectedText(), QStringLiteral("TOTAL"));
  EXPECT_EQ(Count(), "1 of 5");
  EXPECT_TRUE(Pattern().hasFocus());
}

TEST_F(FindingTest, TabGoesFromLeftToRight) {
  Type("TOTAL");
  int left = -1;
  int reached = 0;
  for (const QWidget* part = &Pattern(); part->parentWidget() == Pattern().parentWidget();
       part = QApplication::focusWidget()) {
    EXPECT_GT(part->x(), left) << part->metaObject()->className();
    left = part->x();
    ++reached;
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(reached, 6);
}

TEST_F(FindingTest, ScreenReadersHearTheNumberOfMatches) {
  Type("TOTAL");
  EXPECT_EQ(Find("findCount").accessibleName(), "Matches: 1 of 5");
}

TEST_F(FindingTest, EnterGoesOnAndRoundTheEndWithANotice) {
  Type("TOTAL");
  for (const char* place : {"1:24", "2:13", "3:15", "3:24"}) {
    QTest::keyClick(&Pattern(), Qt::Key_Return);
    EXPECT_EQ(At(), place);
  }
  EXPECT_EQ(Count(), "5 of 5");
  QTest::keyClick(&Pattern(), Qt::Key_Return);
  EXPECT_EQ(At(), "1:15");
  EXPECT_EQ(Count(), "1 of 5, continued at the beginning");
  QTest::keyClick(&Pattern(), Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(At(), "3:24");
  EXPECT_EQ(Count(), "5 of 5, continued at the end");
}

TEST_F(FindingTest, CaseAndWholeWordsCanBeAskedFor) {
  Type("total");
  Find<QCheckBox>("matchCase").click();
  EXPECT_EQ(At(), "2:13");
  EXPECT_EQ(Count(), "1 of 1");
  Find<QCheckBox>("matchCase").click();
  Find<QCheckBox>("wholeWord").click();
  EXPECT_EQ(Count(), "1 of 3");
}

TEST_F(FindingTest, F3RepeatsWithTheBarClosed) {
  Type("TOTAL");
  QTest::keyClick(&Pattern(), Qt::Key_Escape);
  EXPECT_TRUE(text->hasFocus());
  EXPECT_FALSE(Find<QWidget>("findBar").isVisible());
  Press(Qt::Key_F3);
  EXPECT_EQ(At(), "1:24");
  Press(Qt::Key_F3, Qt::ShiftModifier);
  EXPECT_EQ(At(), "1:15");
  EXPECT_TRUE(text->hasFocus());
}

TEST_F(FindingTest, F3WithoutAPatternAsksForOne) {
  Press(Qt::Key_F3);
  EXPECT_TRUE(Pattern().hasFocus());
}

TEST_F(FindingTest, WhatIsNotThereIsTold) {
  Type("TOTALS");
  EXPECT_EQ(Count(), "No match");
  QTest::keyClick(&Pattern(), Qt::Key_Return);
  EXPECT_EQ(Count(), "No match");
}

TEST_F(FindingTest, TheSelectedPieceBecomesThePattern) {
  viewer.SetRow(2);
  text->SelectPlace(static_cast<int>(text->Source().indexOf(QStringLiteral("ADD"))), 3);
  Press(Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(Pattern().text(), QStringLiteral("ADD"));
  EXPECT_EQ(Count(), "1 of 1");
}

TEST_F(FindingTest, SelectedRowsDoNotBecomeThePattern) {
  viewer.SelectRows(2, 1);
  Press(Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(Pattern().text(), QString());
}

TEST_F(FindingTest, AnotherFileIsSearchedAnew) {
  Type("TOTAL");
  viewer.SetFiles({{"PBRATE.cbl", "COBOL"}});
  EXPECT_EQ(Count(), "No match");
  Pattern().setText(QStringLiteral("ROW 100"));
  EXPECT_EQ(viewer.Row(), 100);
  EXPECT_TRUE(IsOnScreen(100));
}

TEST_F(FindingTest, MatchesAreMarkedInTheText) {
  Type("TOTAL");
  const QImage lines = text->viewport()->grab().toImage();
  int pixels = 0;
  for (int x = 0; x < lines.width(); ++x) {
    if (lines.pixelColor(MiddleOf(2, x)) == text->Colors().match) ++pixels;
  }
  EXPECT_GT(pixels, 0);
}

TEST_F(FindingTest, ARowIsGoneToByItsNumber) {
  viewer.SetFiles({{"PBRATE.cbl", "COBOL"}});
  Press(Qt::Key_G, Qt::ControlModifier);
  auto& number = Find<QLineEdit>("rowNumber");
  EXPECT_TRUE(number.hasFocus());
  EXPECT_EQ(Told("rowCount"), "of 100");
  QTest::keyClicks(&number, QStringLiteral("7x3"));
  EXPECT_EQ(number.text(), QStringLiteral("73"));
  QTest::keyClick(&number, Qt::Key_Return);
  EXPECT_EQ(viewer.Row(), 73);
  EXPECT_TRUE(IsOnScreen(73));
  EXPECT_TRUE(text->hasFocus());
  EXPECT_FALSE(Find<QWidget>("rowBar").isVisible());
}

TEST_F(FindingTest, ARowThatIsNotThereIsToldAndNotGoneTo) {
  Press(Qt::Key_G, Qt::ControlModifier);
  auto& number = Find<QLineEdit>("rowNumber");
  for (const char* row : {"4", "0", "999999999"}) {
    number.setText(QString::fromLatin1(row));
    QTest::keyClick(&number, Qt::Key_Return);
    EXPECT_EQ(Told("rowCount"), "Rows go from 1 to 3.") << row;
    EXPECT_EQ(viewer.Row(), 1) << row;
  }
  QTest::keyClick(&number, Qt::Key_Escape);
  EXPECT_FALSE(Find<QWidget>("rowBar").isVisible());
}

using Places = std::vector<int>;

TEST(Matches, StandBehindOneAnother) {
  EXPECT_EQ(FindMatches(QStringLiteral("aaaaa"), QStringLiteral("aa"), {}), (Places{0, 2}));
  EXPECT_EQ(FindMatches(QStringLiteral("aaaaa"), QString(), {}), Places{});
  EXPECT_EQ(FindMatches(QString(), QStringLiteral("a"), {}), Places{});
}

TEST(Matches, CompareWithoutCaseUnlessAsked) {
  const QString found = QStringLiteral("Änderung ÄNDERUNG");
  EXPECT_EQ(FindMatches(found, QStringLiteral("änderung"), {}), (Places{0, 9}));
  EXPECT_EQ(FindMatches(found, QStringLiteral("änderung"), {true, false}), Places{});
}

TEST(Matches, AWholeWordEndsWhereANameEnds) {
  const FindOptions whole{false, true};
  EXPECT_EQ(FindMatches(QStringLiteral("WS-A A A1 (A) A-B"), QStringLiteral("A"), whole), (Places{5, 11}));
  EXPECT_EQ(FindMatches(QStringLiteral("==:TAG:=="), QStringLiteral(":TAG:"), whole), (Places{2}));
}

}  // namespace
}  // namespace qmrules::desktop
