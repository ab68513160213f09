#include "desktop/results/comparisonview.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QLabel>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QToolButton>

#include "desktop/results/comparisoncolors.h"
#include "desktop/results/comparisonpane.h"
#include "desktop/results/demofindings.h"
#include "desktop/source/sourcecolors.h"

namespace qmrules::desktop {
namespace {

using test::DemoReport;
using test::SourceOf;
using validation::Verdict;

class ComparisonViewTest : public testing::Test {
 protected:
  ComparisonViewTest() {
    view_.resize(900, 300);
    view_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&view_));
  }
  void Show(std::size_t finding) { view_.Show(report_->findings[finding], SourceOf); }
  ComparisonPane& Pane(const char* name) { return *view_.findChild<ComparisonPane*>(name); }
  // Each line as its sign, its row and its text.
  QStringList Lines(const char* name) {
    ComparisonPane& pane = Pane(name);
    QStringList lines;
    for (QTextBlock block = pane.document()->begin(); block.isValid(); block = block.next()) {
      const int line = block.blockNumber();
      lines += QString("%1%2 %3").arg(pane.Sign(line)).arg(pane.Row(line)).arg(block.text());
    }
    return lines;
  }
  QString Text(const char* name) { return view_.findChild<QLabel*>(name)->text(); }
  QToolButton& Button(const char* name) { return *view_.findChild<QToolButton*>(name); }

  std::shared_ptr<const validation::ValidationReport> report_ = DemoReport();
  ComparisonView view_;
};

TEST_F(ComparisonViewTest, BeginsWithAWordOnWhatToDo) {
  EXPECT_TRUE(Text("findingMeaning").startsWith("Choose a rule"));
  EXPECT_FALSE(Button("showInTree").isEnabled());
  EXPECT_TRUE(Pane("storedText").document()->isEmpty());
}

TEST_F(ComparisonViewTest, ShowsTheStoredTextBesideItsNewPlace) {
  Show(1);
  EXPECT_EQ(Text("findingMeaning"), "Tax: The text stands at other rows of the file.");
  EXPECT_EQ(Text("storedCaption"), "Stored text: pay.cbl, rows 1-2");
  EXPECT_EQ(Text("placeCaption"), "pay.cbl, rows 3-5");
  EXPECT_EQ(Lines("storedText"), (QStringList{" 1 ADD 2 TO TAX", " 0 ", " 2 ADD 3 TO TAX"}));
  EXPECT_EQ(Lines("placeText"), (QStringList{" 3     ADD 2 TO TAX", "+4 ", " 5     ADD 3 TO TAX"}));
  EXPECT_EQ(Text("differingLines"), "Lines that differ: 1 of 3.");
  EXPECT_FALSE(Button("nextPlace").isVisible());
}

TEST_F(ComparisonViewTest, AnUnchangedTextHasNoLineThatDiffers) {
  Show(0);
  EXPECT_EQ(Text("differingLines"), "No line differs.");
  EXPECT_EQ(Text("placeCaption"), "Now: pay.cbl, rows 1");
}

TEST_F(ComparisonViewTest, StepsThroughThePlacesOfAnAmbiguousText) {
  Show(2);
  EXPECT_EQ(Text("placeNumber"), "2 of 3") << "the chosen one first";
  EXPECT_EQ(Text("placeCaption"), "Nearest place: pay.cbl, rows 6");
  QTest::mouseClick(&Button("nextPlace"), Qt::LeftButton);
  EXPECT_EQ(Text("placeCaption"), "Other place: pay.cbl, rows 8");
  EXPECT_EQ(Pane("placeText").Row(0), 8);
  EXPECT_FALSE(Button("nextPlace").isEnabled());
  view_.Step(1);
  EXPECT_EQ(Text("placeNumber"), "3 of 3");
  Button("previousPlace").setFocus();
  QTest::keyClick(&Button("previousPlace"), Qt::Key_Space);
  QTest::keyClick(&Button("previousPlace"), Qt::Key_Space);
  EXPECT_EQ(Pane("placeText").Row(0), 2);
  EXPECT_FALSE(Button("previousPlace").isEnabled());
}

TEST_F(ComparisonViewTest, ATextThatIsNowhereHasItsNearestPlaceAsAHint) {
  Show(3);
  EXPECT_EQ(Text("placeCaption"), "Something like it, characters that differ: 1. pay.cbl, rows 7");
  EXPECT_EQ(Lines("storedText"), QStringList("~2 MOVE 12 TO RATE"));
  EXPECT_EQ(Lines("placeText"), QStringList("~7 MOVE 10 TO RATE"));
}

TEST_F(ComparisonViewTest, TheWordsThatDifferAreMarkedStronger) {
  Show(3);
  const QTextBlock block = Pane("placeText").document()->begin();
  EXPECT_TRUE(block.blockFormat().hasProperty(QTextFormat::BackgroundBrush));
  QStringList strong;
  for (auto part = block.begin(); !part.atEnd(); ++part) {
    const QTextCharFormat format = part.fragment().charFormat();
    if (!format.fontUnderline()) continue;
    EXPECT_EQ(format.fontWeight(), int{QFont::Bold});
    EXPECT_NE(format.background(), block.blockFormat().background());
    strong += part.fragment().text();
  }
  EXPECT_EQ(strong, QStringList("10"));
}

TEST_F(ComparisonViewTest, WithoutItsFileTheStoredTextStandsAlone) {
  Show(4);
  EXPECT_EQ(Text("findingMeaning"), "Lost: The file cannot be read.");
  EXPECT_EQ(Text("placeCaption"), "gone.cbl cannot be read.");
  EXPECT_EQ(Lines("storedText"), (QStringList{QString::fromUtf8("−7 STOP RUN."), QString::fromUtf8("−8 GOBACK.")}));
  EXPECT_EQ(Text("differingLines"), "");
}

TEST_F(ComparisonViewTest, AFileThatVanishedSinceTheRunIsSaidToBeUnreadable) {
  view_.Show(report_->findings[1], [](const std::string&) { return std::nullopt; });
  EXPECT_EQ(Text("placeCaption"), "pay.cbl cannot be read.");
}

TEST_F(ComparisonViewTest, ARuleWithoutASegmentHasNothingToCompare) {
  Show(5);
  EXPECT_EQ(Text("findingMeaning"), "Unwritten: The rule has no segment.");
  EXPECT_EQ(Text("storedCaption"), "");
  EXPECT_EQ(Text("placeCaption"), "");
  EXPECT_TRUE(Button("showInTree").isEnabled());
}

TEST_F(ComparisonViewTest, TheButtonAsksForTheTree) {
  const QSignalSpy asked(&view_, &ComparisonView::TreeRequested);
  Show(0);
  QTest::mouseClick(&Button("showInTree"), Qt::LeftButton);
  EXPECT_EQ(asked.size(), 1);
}

TEST_F(ComparisonViewTest, BeginsAtTheFirstLineThatDiffers) {
  auto finding = report_->findings[1];
  finding.storedText.clear();
  std::string file;
  for (int line = 0; line < 200; ++line) {
    finding.storedText += "line " + std::to_string(line) + "\n";
    file += (line == 120 ? "other " : "line ") + std::to_string(line) + "\n";
  }
  finding.candidates = {{1, 200}};
  view_.Show(finding, [&](const std::string&) { return file; });
  for (const char* const name : {"storedText", "placeText"}) {
    EXPECT_EQ(Pane(name).verticalScrollBar()->value(), 118) << name;
    EXPECT_EQ(Pane(name).textCursor().blockNumber(), 120) << name;
  }
}

TEST_F(ComparisonViewTest, BothTextsScrollTogether) {
  auto finding = report_->findings[1];
  finding.storedText.clear();
  std::string file;
  for (int line = 0; line < 200; ++line) {
    finding.storedText += "line " + std::to_string(line) + "\n";
    file += "line " + std::to_string(line) + std::string(300, 'x') + "\n";
  }
  finding.candidates = {{1, 200}};
  view_.Show(finding, [&](const std::string&) { return file; });
  Pane("storedText").verticalScrollBar()->setValue(50);
  EXPECT_EQ(Pane("placeText").verticalScrollBar()->value(), 50);
  Pane("placeText").verticalScrollBar()->setValue(7);
  EXPECT_EQ(Pane("storedText").verticalScrollBar()->value(), 7);
  QScrollBar& wide = *Pane("placeText").horizontalScrollBar();
  ASSERT_GT(wide.maximum(), Pane("storedText").horizontalScrollBar()->maximum());
  wide.setValue(wide.maximum());
  EXPECT_EQ(wide.value(), wide.maximum()) << "the narrower text does not hold the wider one back";
}

TEST_F(ComparisonViewTest, ScreenReadersAreToldWhatTheTextsAre) {
  Show(1);
  const auto told = [](QWidget& widget, QAccessible::Text kind) {
    return QAccessible::queryAccessibleInterface(&widget)->text(kind);
  };
  EXPECT_EQ(told(Pane("storedText"), QAccessible::Name), "Stored text");
  EXPECT_EQ(told(Pane("placeText"), QAccessible::Name), "Text in the file");
  EXPECT_EQ(told(Pane("placeText"), QAccessible::Description), "pay.cbl, rows 3-5 Lines that differ: 1 of 3.");
  for (const char* const button : {"previousPlace", "nextPlace", "showInTree"}) {
    EXPECT_NE(told(Button(button), QAccessible::Name), "") << button;
  }
}

TEST_F(ComparisonViewTest, TabLeavesTheTextsAndNothingCanBeTyped) {
  Show(1);
  ComparisonPane& stored = Pane("storedText");
  stored.setFocus();
  QTest::keyClicks(&stored, "x");
  EXPECT_EQ(stored.document()->firstBlock().text(), "ADD 2 TO TAX");
  QTest::keyClick(&stored, Qt::Key_Tab);
  EXPECT_FALSE(stored.hasFocus());
}

TEST(ComparisonColors, LetTheTextBeReadInLightAndDark) {
  QPalette light;
  light.setColor(QPalette::Base, Qt::white);
  light.setColor(QPalette::Text, Qt::black);
  QPalette dark;
  dark.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
  dark.setColor(QPalette::Text, QColor(0xE0, 0xE0, 0xE0));
  for (const QPalette& palette : {light, dark}) {
    const ComparisonColors colors(palette);
    for (const QColor& ground : {colors.base, colors.changed, colors.word, colors.removed, colors.added}) {
      EXPECT_GE(Contrast(ground, colors.text), kReadableContrast) << ground.name().toStdString();
    }
    EXPECT_GE(Contrast(colors.margin, colors.rowNumber), kReadableContrast);
    EXPECT_FALSE(colors.Line(validation::LinePairKind::Same).isValid());
  }
}

}  // namespace
}  // namespace qmrules::desktop
