#include "desktop/locator/locator.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <optional>

#include "desktop/locator/locatormodel.h"
#include "platform/error.h"

namespace qmrules::desktop {
namespace {

// Gives what it holds, some entries with each step.
class SteppedSource final : public LocatorSource {
 public:
  std::unique_ptr<LocatorSearch> Find(std::string_view text, std::size_t limit) override {
    asked.emplace_back(text);
    EXPECT_GT(limit, 0U);
    return std::make_unique<Search>(*this, text);
  }

  std::vector<std::string> asked;
  std::vector<LocatorEntry> entries;
  bool fails = false;
  bool narrows = false;
  std::size_t entriesPerStep = 100;

 private:
  class Search final : public LocatorSearch {
   public:
    Search(const SteppedSource& source, std::string_view text) : source_(source), query_(text) {}
    std::unique_ptr<LocatorSearch> NarrowedTo(std::string_view text) const override {
      if (!source_.narrows || query_.IsEmpty()) return nullptr;
      auto narrowed = std::make_unique<Search>(*this);
      narrowed->query_ = LocatorQuery(text);
      std::erase_if(narrowed->best_, [&](const LocatorEntry& found) { return !narrowed->query_.Match(found.name); });
      return narrowed;
    }
    bool Continue() override {
      if (source_.fails) throw platform::Error("The catalogue is locked.");
      for (std::size_t step = 0; step < source_.entriesPerStep && next_ < source_.entries.size(); ++step, ++next_) {
        if (!query_.IsEmpty() && query_.Match(source_.entries[next_].name)) best_.push_back(source_.entries[next_]);
      }
      return next_ < source_.entries.size();
    }
    int Percent() const override { return static_cast<int>(next_ * 100 / source_.entries.size()); }
    const std::vector<LocatorEntry>& Best() const override { return best_; }

   private:
    const SteppedSource& source_;
    LocatorQuery query_;
    std::size_t next_ = 0;
    std::vector<LocatorEntry> best_;
  };
};

class LocatorTest : public testing::Test {
 protected:
  LocatorTest() {
    source_.entries = {{"BUSINESSFUNC", "Premium billing", "", "BUSINESSFUNC#1", 0, 0},
                       {"RULE", "Premium is positive", "Premium billing / Checks", "RULE#5", 1, 2},
                       {"COBOL", "PREMCALC", "policy/premcalc.cbl", "COBOL#9", 0, 0}};
    window_.resize(900, 700);
    other_ = new QPushButton("Other", &window_);
    locator_ = new Locator(
        source_, [this](const LocatorEntry& entry) { chosen_ = entry; }, &window_);
    window_.show();
    window_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    other_->setFocus();
  }

  QLineEdit& Field() { return *locator_->findChild<QLineEdit*>(); }
  QListView& List() { return *locator_->findChild<QListView*>(); }
  QString State() { return locator_->findChild<QLabel*>("", Qt::FindDirectChildrenOnly)->text(); }

  void OpenAndType(const QString& text) {
    locator_->Open();
    QTest::keyClicks(&Field(), text);
    Settle();
  }
  static void Settle() {
    for (int turn = 0; turn < 20; ++turn) QApplication::processEvents();
  }

  SteppedSource source_;
  QWidget window_;
  QPushButton* other_ = nullptr;
  Locator* locator_ = nullptr;
  std::optional<LocatorEntry> chosen_;
};

TEST_F(LocatorTest, IsClosedAtFirst) {
  EXPECT_FALSE(locator_->isVisible());
}

TEST_F(LocatorTest, OpensWithTheFieldReadyForTyping) {
  locator_->Open();
  EXPECT_TRUE(locator_->isVisible());
  EXPECT_EQ(QApplication::focusWidget(), &Field());
  EXPECT_EQ(State(), "Type a part of a name, or several parts with blanks between them.");
}

TEST_F(LocatorTest, ShowsWhatTheTextFinds) {
  OpenAndType("prem");
  EXPECT_EQ(List().model()->rowCount(), 3);
  EXPECT_EQ(List().currentIndex().row(), 0);
  QTest::keyClicks(&Field(), " pos");
  Settle();
  EXPECT_EQ(List().model()->rowCount(), 1);
  EXPECT_EQ(List().model()->index(0, 0).data().toString(), "Premium is positive");
}

TEST_F(LocatorTest, ATextThatIsTypedOnGoesOnWithTheSearch) {
  source_.narrows = true;
  OpenAndType("p");
  source_.asked.clear();
  QTest::keyClicks(&Field(), "remium is");
  Settle();
  EXPECT_TRUE(source_.asked.empty());
  EXPECT_EQ(List().model()->rowCount(), 1);
  EXPECT_EQ(List().model()->index(0, 0).data().toString(), "Premium is positive");
}

TEST_F(LocatorTest, TellsHowFarTheSearchIs) {
  source_.entriesPerStep = 1;
  locator_->Open();
  Field().setText("positive");
  EXPECT_EQ(State(), "Searching... 33 %");
  Settle();
  EXPECT_EQ(State(), "Enter goes to the marked one, Escape closes.");
}

TEST_F(LocatorTest, EnterChoosesTheFirst) {
  OpenAndType("prem");
  QTest::keyClick(&Field(), Qt::Key_Return);
  ASSERT_TRUE(chosen_);
  EXPECT_EQ(chosen_->key, "BUSINESSFUNC#1");
  EXPECT_FALSE(locator_->isVisible());
}

TEST_F(LocatorTest, ArrowsGoThroughTheListWithoutLeavingTheField) {
  OpenAndType("prem");
  QTest::keyClick(&Field(), Qt::Key_Down);
  EXPECT_EQ(List().currentIndex().row(), 1);
  EXPECT_EQ(QApplication::focusWidget(), &Field());
  QTest::keyClick(&Field(), Qt::Key_PageDown);
  EXPECT_EQ(List().currentIndex().row(), 2);
  QTest::keyClick(&Field(), Qt::Key_Up);
  QTest::keyClick(&Field(), Qt::Key_Enter);
  ASSERT_TRUE(chosen_);
  EXPECT_EQ(*chosen_, source_.entries[1]);
}

TEST_F(LocatorTest, AClickChooses) {
  OpenAndType("prem");
  QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, List().visualRect(List().model()->index(2, 0)).center());
  ASSERT_TRUE(chosen_);
  EXPECT_EQ(chosen_->key, "COBOL#9");
}

TEST_F(LocatorTest, EscapeClosesAndGivesTheFocusBack) {
  OpenAndType("prem");
  QTest::keyClick(&Field(), Qt::Key_Escape);
  EXPECT_FALSE(locator_->isVisible());
  EXPECT_FALSE(chosen_);
  EXPECT_EQ(QApplication::focusWidget(), other_);
}

TEST_F(LocatorTest, ClosesWhenTheFocusGoesElsewhere) {
  OpenAndType("prem");
  other_->setFocus();
  EXPECT_FALSE(locator_->isVisible());
  EXPECT_EQ(QApplication::focusWidget(), other_);
}

TEST_F(LocatorTest, TabStaysInTheField) {
  OpenAndType("prem");
  QTest::keyClick(&Field(), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), &Field());
}

TEST_F(LocatorTest, OpensAgainWithTheLastTextSelected) {
  OpenAndType("prem");
  QTest::keyClick(&Field(), Qt::Key_Escape);
  locator_->Open();
  EXPECT_EQ(Field().selectedText(), "prem");
  Settle();
  EXPECT_EQ(List().model()->rowCount(), 3);
}

TEST_F(LocatorTest, EnterOnNothingChoosesNothing) {
  OpenAndType("no such name");
  EXPECT_EQ(State(), "No name matches.");
  QTest::keyClick(&Field(), Qt::Key_Return);
  EXPECT_FALSE(chosen_);
  EXPECT_TRUE(locator_->isVisible());
}

TEST_F(LocatorTest, EnterNeverGoesToWhatAnEarlierTextHasFound) {
  source_.entriesPerStep = 1;
  OpenAndType("prem");
  QTest::keyClicks(&Field(), "c");
  QTest::keyClick(&Field(), Qt::Key_Return);
  EXPECT_FALSE(chosen_);
}

TEST_F(LocatorTest, TheMarkedEntryStaysMarkedWhileMoreAreFound) {
  source_.entriesPerStep = 2;
  locator_->Open();
  Field().setText("prem");
  QTest::keyClick(&Field(), Qt::Key_Down);
  EXPECT_EQ(List().currentIndex().data().toString(), "Premium is positive");
  Settle();
  EXPECT_EQ(List().model()->rowCount(), 3);
  EXPECT_EQ(List().currentIndex().data().toString(), "Premium is positive");
}

TEST_F(LocatorTest, AFailureIsShownAndLivedThrough) {
  source_.fails = true;
  OpenAndType("prem");
  EXPECT_EQ(State(), "The catalogue is locked.");
  source_.fails = false;
  QTest::keyClicks(&Field(), "i");
  Settle();
  EXPECT_EQ(List().model()->rowCount(), 2);
  EXPECT_EQ(State(), "Enter goes to the marked one, Escape closes.");
}

TEST_F(LocatorTest, FollowsTheSizeOfItsWindow) {
  locator_->Open();
  window_.resize(400, 300);
  Settle();
  EXPECT_TRUE(window_.rect().contains(locator_->geometry()));
}

TEST_F(LocatorTest, EveryPartHasAnAccessibleName) {
  OpenAndType("prem");
  for (QWidget* const widget :
       {static_cast<QWidget*>(locator_), static_cast<QWidget*>(&Field()), static_cast<QWidget*>(&List())}) {
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).isEmpty());
  }
  EXPECT_EQ(List().model()->index(1, 0).data(Qt::AccessibleTextRole).toString(),
            "Premium is positive, Rule, Premium billing / Checks");
}

TEST_F(LocatorTest, TheMatchesStandOut) {
  OpenAndType("prem");
  EXPECT_EQ(List().model()->index(2, 0).data(LocatorModel::kMarks).toList(), (QVariantList{QPoint(0, 4)}));
  EXPECT_FALSE(List().grab().toImage().isNull());
}

TEST(LocatorModelTest, KeepsTheRulesOfItemModels) {
  LocatorModel model(nullptr);
  const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  const LocatorEntry entry{"RULE", "Rule", "Function / Set", "RULE#1", 1, 2};
  model.Show({entry, {"COBOL", "PROGRAM", "f.cbl", "COBOL#2", 0, 0}}, LocatorQuery("r"));
  EXPECT_EQ(model.rowCount(), 2);
  EXPECT_EQ(model.RowOf("COBOL#2"), 1);
  EXPECT_EQ(model.RowOf("COBOL#3"), -1);
  model.SetPalette(QApplication::palette());
  model.Show({entry}, LocatorQuery("r"));
  model.Show({}, LocatorQuery(""));
  EXPECT_EQ(model.rowCount(), 0);
}

}  // namespace
}  // namespace qmrules::desktop
