#include "desktop/source/sourceview.h"

#include <QAccessible>
#include <QComboBox>
#include <QHelpEvent>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>
#include <QTranslator>
#include <stdexcept>

#include "desktop/source/shownsource.h"
#include "platform/error.h"

namespace qmrules::desktop {
namespace {

using SourceViewTest = ShownSource;

TEST_F(SourceViewTest, ShowsTheFileWithARowForEachOfItsRows) {
  EXPECT_EQ(text->toPlainText().toStdString() + "\n", test::NumberedRows(100));
  EXPECT_EQ(text->Rows(), 100);
  EXPECT_EQ(Place(), "Row 1, column 1");
}

TEST_F(SourceViewTest, RowEndsOfAllKindsCountAsTheReaderCountsThem) {
  Show("A\r\nB\rC\nD\xE2\x80\xA8still D\fand on");
  EXPECT_EQ(text->Rows(), 4);
  viewer.SetRow(4);
  viewer.SetSelectedRowsCount(1);
  EXPECT_TRUE(text->textCursor().selectedText().startsWith(QStringLiteral("D\uFFFDstill D")));
}

TEST_F(SourceViewTest, AnEmptyFileHasACaretAndNoText) {
  Show("");
  EXPECT_EQ(Place(), "Row 1, column 1");
  EXPECT_EQ(text->toPlainText(), QString());
  Press(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(viewer.SelectedRowsCount(), 1);
}

TEST_F(SourceViewTest, AVeryLongRowIsShownCut) {
  Show(std::string(100000, 'A') + "\nB\n");
  EXPECT_EQ(text->document()->firstBlock().length(), kLongestRow + 2);
  EXPECT_EQ(text->Rows(), 2);
}

TEST_F(SourceViewTest, TheTextIsDecodedByTheSourceEncoding) {
  texts.SetEncoding("SHIFT_JIS");
  Show("      * \x93\xFA\x96\x7B\n");
  EXPECT_EQ(text->toPlainText(), QStringLiteral("      * 日本"));
  texts.SetEncoding("IBM037");
  Show("\xC1\xC2\x25\xC3");
  EXPECT_EQ(text->toPlainText(), QStringLiteral("AB\nC"));
}

TEST_F(SourceViewTest, AMissingFileGivesWayToTheReason) {
  viewer.SetFiles({{"GONE.cbl", "COBOL"}});
  EXPECT_EQ(Told("reason"), "GONE.cbl cannot be shown.\n\nGONE.cbl: there is no such file.");
  EXPECT_TRUE(Find("reason").isVisible());
  EXPECT_FALSE(text->isVisible());
  EXPECT_FALSE(Find<QAction>("find").isEnabled());
  viewer.OpenFile("GONE.cbl");
  viewer.SetRow(7);
  viewer.SetSelectedRowsCount(2);
  EXPECT_EQ(Place(), "");
  texts.Put("GONE.cbl", test::NumberedRows(20));
  view.Reload();
  EXPECT_TRUE(text->isVisible());
  EXPECT_TRUE(Find<QAction>("find").isEnabled());
  EXPECT_EQ(Place(), "Rows 7 to 8 selected");
}

TEST_F(SourceViewTest, BytesThatAreNoTextGiveWayToTheReason) {
  Show(std::string("MZ\0\0\x01\x02\x03\0\0\0", 10));
  EXPECT_EQ(Told("reason"), "OTHER.cbl cannot be shown.\n\nOTHER.cbl is no text file.");
  texts.SetEncoding("UTF-8");
  Show("A\xFF");
  EXPECT_TRUE(
      QString::fromStdString(Told("reason")).startsWith(QStringLiteral("OTHER.cbl cannot be shown.\n\nOTHER.cbl")))
      << Told("reason");
  texts.SetEncoding("NO-SUCH-CODE");
  view.Reload();
  EXPECT_TRUE(Find("reason").isVisible());
}

TEST_F(SourceViewTest, WithoutAFileItSaysSo) {
  viewer.SetFiles({});
  EXPECT_EQ(Told("reason"), "No source is on view.");
  EXPECT_FALSE(Find<QComboBox>("files").isEnabled());
}

TEST_F(SourceViewTest, TheUserChoosesAmongTheFiles) {
  auto& files = Find<QComboBox>("files");
  EXPECT_EQ(files.count(), 2);
  EXPECT_EQ(files.currentText(), QStringLiteral("PBRATE.cbl"));
  files.setFocus();
  QTest::keyClick(&files, Qt::Key_Down);
  EXPECT_EQ(viewer.CurFile()->FileName, "copy/PBPOLMS.cpy");
  EXPECT_EQ(text->toPlainText(), QStringLiteral("       01  POLICY."));
  viewer.OpenFile("PBRATE.cbl");
  EXPECT_EQ(files.currentText(), QStringLiteral("PBRATE.cbl"));
}

TEST_F(SourceViewTest, ALargeFileIsReadOnAnotherThread) {
  texts.Put("OTHER.cbl", test::NumberedRows(100000));
  viewer.SetFiles({{"OTHER.cbl", "COBOL"}});
  EXPECT_EQ(Told("reason"), "Reading OTHER.cbl\u2026");
  viewer.SetRow(90000);
  viewer.SetSelectedRowsCount(3);
  ASSERT_TRUE(QTest::qWaitFor([this] { return text->isVisible(); }, 60000));
  EXPECT_EQ(text->Rows(), 100000);
  EXPECT_TRUE(IsOnScreen(90000));
  EXPECT_EQ(viewer.Row(), 90000);
  EXPECT_EQ(text->textCursor().selectedText().toStdString(), "ROW 90000\u2029ROW 90001\u2029ROW 90002");
  EXPECT_TRUE(text->hasFocus());
}

TEST_F(SourceViewTest, AnotherFileTakesThePlaceOfALargeOneThatIsBeingRead) {
  texts.Put("LARGE.cbl", test::NumberedRows(100000));
  viewer.SetFiles({{"LARGE.cbl", "COBOL"}, {"PBRATE.cbl", "COBOL"}});
  viewer.OpenFile("PBRATE.cbl");
  EXPECT_TRUE(text->isVisible());
  QThreadPool::globalInstance()->waitForDone();
  QCoreApplication::processEvents();
  // What was read in vain goes with the event loop.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(text->Rows(), 100);
}

TEST_F(SourceViewTest, ALargeFileThatIsNoTextGivesWayToTheReason) {
  texts.SetEncoding("UTF-8");
  Show(std::string(600000, 'A') + "\xFF");
  ASSERT_TRUE(QTest::qWaitFor([this] { return Told("reason").find("cannot be shown") != std::string::npos; }, 60000));
}

TEST_F(SourceViewTest, ReadingAgainKeepsCaretAndScrolledPlace) {
  viewer.SetRow(50);
  text->verticalScrollBar()->setValue(60);
  texts.Put("PBRATE.cbl", "NEW\n" + test::NumberedRows(100));
  view.Reload();
  EXPECT_EQ(text->Rows(), 101);
  EXPECT_EQ(viewer.Row(), 50);
  EXPECT_EQ(text->CaretRow(), 50);
  EXPECT_EQ(text->verticalScrollBar()->value(), 60);
}

TEST_F(SourceViewTest, SegmentsAreToldWhereTheCaretStandsAndWhereThePointerHovers) {
  viewer.CheckSegment({"COBOL#12", 8, 10});
  viewer.CheckSegment({"COBOL#12", 9, 9});
  viewer.SetRow(9);
  EXPECT_EQ(Place(), "Row 9, column 1  \u00b7  Segment: rows 8 to 10  \u00b7  Segment: row 9");
  EXPECT_EQ(text->SegmentsText(9).toStdString(), "Segment: rows 8 to 10\nSegment: row 9");
  EXPECT_EQ(text->SegmentsText(11).toStdString(), "");
  viewer.ClearMarks();
  EXPECT_EQ(Place(), "Row 9, column 1");
}

TEST_F(SourceViewTest, SegmentsAreShownBehindTheLinesAndInTheMargin) {
  viewer.CheckSegment({"COBOL#12", 8, 10});
  viewer.CheckSegment({"COBOL#12", 9, 12});
  QCoreApplication::processEvents();
  const QImage lines = text->viewport()->grab().toImage();
  const auto behind = [&](int row) { return lines.pixelColor(MiddleOf(row, text->viewport()->width() - 5)); };
  const SourceColors& colors = text->Colors();
  EXPECT_EQ(behind(7), colors.base);
  EXPECT_EQ(behind(8), colors.Segment(1));
  EXPECT_EQ(behind(9), colors.Segment(2));
  EXPECT_EQ(behind(12), colors.Segment(1));
  EXPECT_EQ(behind(13), colors.base);
  const QImage margin = Margin()->grab().toImage();
  const auto holds = [&](int row, const QColor& color) {
    for (int x = 0; x < margin.width(); ++x) {
      if (margin.pixelColor(MiddleOf(row, x)) == color) return true;
    }
    return false;
  };
  EXPECT_TRUE(holds(8, colors.lanes[0]));
  EXPECT_TRUE(holds(9, colors.lanes[0]));
  EXPECT_TRUE(holds(9, colors.lanes[1]));
  EXPECT_FALSE(holds(8, colors.lanes[1]));
  EXPECT_FALSE(holds(13, colors.lanes[0]));
}

TEST_F(SourceViewTest, TheCaretGoesFromSegmentToSegment) {
  viewer.CheckSegment({"COBOL#12", 8, 10});
  viewer.CheckSegment({"COBOL#12", 90, 95});
  Trigger("nextSegment");
  EXPECT_EQ(viewer.Row(), 8);
  Trigger("nextSegment");
  EXPECT_EQ(viewer.Row(), 90);
  EXPECT_TRUE(IsOnScreen(90));
  Trigger("nextSegment");
  EXPECT_EQ(Told("place"), "No segment begins below this row.");
  Trigger("previousSegment");
  EXPECT_EQ(viewer.Row(), 8);
}

TEST_F(SourceViewTest, ThePlaceGoneToHasItsColumn) {
  viewer.GoTo({"PBRATE.cbl", 60, 3});
  EXPECT_EQ(text->textCursor().positionInBlock(), 2);
  EXPECT_TRUE(IsOnScreen(60));
  viewer.GoTo({"PBRATE.cbl", 61, 500});
  EXPECT_TRUE(text->textCursor().atBlockEnd());
}

TEST_F(SourceViewTest, AFailingObserverIsReported) {
  QSignalSpy failures(&view, &SourceView::Failed);
  const auto failing = viewer.OnSelectionChanged([] { throw platform::Error("The store is gone."); });
  Press(Qt::Key_Down);
  ASSERT_EQ(failures.count(), 1);
  EXPECT_EQ(failures[0][0].toString(), QStringLiteral("The store is gone."));
  EXPECT_EQ(Told("place"), "The store is gone.");
  Press(Qt::Key_Down);
  EXPECT_EQ(viewer.Row(), 3);
}

TEST_F(SourceViewTest, AFailingClassifierLeavesPlainText) {
  texts.SetClassifier([](std::shared_ptr<const workbench::codemodel::SourceFile>) -> workbench::codemodel::ClassedText {
    throw std::runtime_error("No memory.");
  });
  QSignalSpy failures(&view, &SourceView::Failed);
  Show("A\n");
  ASSERT_TRUE(QTest::qWaitFor([&] { return failures.count() == 1; }, 20000));
  EXPECT_EQ(text->toPlainText(), QStringLiteral("A"));
}

TEST_F(SourceViewTest, TheLettersGrowWithTheWheelAndTheKeys) {
  const double size = text->font().pointSizeF();
  QSignalSpy zooms(&view, &SourceView::ZoomChanged);
  QWheelEvent wheel(QPointF(50, 50), text->viewport()->mapToGlobal(QPointF(50, 50)), {}, QPoint(0, 240), Qt::NoButton,
                    Qt::ControlModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(text->viewport(), &wheel);
  EXPECT_EQ(view.Zoom(), 2);
  EXPECT_EQ(text->font().pointSizeF(), size + 2);
  Trigger("zoomOut");
  EXPECT_EQ(view.Zoom(), 1);
  Trigger("zoomReset");
  EXPECT_EQ(text->font().pointSizeF(), size);
  view.SetZoom(1000);
  EXPECT_LE(text->font().pointSizeF(), 60);
  EXPECT_EQ(zooms.count(), 4);
}

TEST_F(SourceViewTest, TheWheelOverTheRowNumbersScrolls) {
  QWheelEvent wheel(QPointF(5, 50), Margin()->mapToGlobal(QPointF(5, 50)), {}, QPoint(0, -360), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(Margin(), &wheel);
  EXPECT_GT(text->verticalScrollBar()->value(), 0);
}

TEST_F(SourceViewTest, HoveringTellsTheSegments) {
  viewer.CheckSegment({"COBOL#12", 3, 5});
  QCoreApplication::processEvents();
  for (QWidget* const hovered : {Margin(), text->viewport()}) {
    const QPoint place = MiddleOf(4);
    QHelpEvent hover(QEvent::ToolTip, place, hovered->mapToGlobal(place));
    QCoreApplication::sendEvent(hovered, &hover);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Segment: rows 3 to 5"));
    QToolTip::hideText();
  }
}

TEST_F(SourceViewTest, TheContextMenuOffersTheActions) {
  QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint(5, 5), text->mapToGlobal(QPoint(5, 5)));
  QCoreApplication::sendEvent(text->viewport(), &asked);
  auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->actions().size(), static_cast<qsizetype>(view.Actions().size()));
  menu->close();
}

// Puts a mark before every text.
class MarkingTranslator final : public QTranslator {
 public:
  bool isEmpty() const override { return false; }
  QString translate(const char*, const char* text, const char*, int) const override {
    return QStringLiteral("~") + QString::fromUtf8(text);
  }
};

TEST_F(SourceViewTest, AnotherLanguageChangesEveryTextAtOnce) {
  viewer.SetRow(4);
  MarkingTranslator language;
  QCoreApplication::installTranslator(&language);
  QCoreApplication::processEvents();
  EXPECT_EQ(Told("place"), "~Row 4, column 1");
  EXPECT_TRUE(text->accessibleName().startsWith(u'~'));
  EXPECT_TRUE(Margin()->accessibleName().startsWith(u'~'));
  for (const QAction* action : view.Actions()) EXPECT_TRUE(action->text().startsWith(u'~'));
  for (const QLabel* label : view.findChildren<QLabel*>()) {
    EXPECT_TRUE(label->buddy() == nullptr || label->text().startsWith(u'~')) << label->text().toStdString();
  }
  viewer.SetFiles({});
  QCoreApplication::removeTranslator(&language);
  QCoreApplication::processEvents();
  EXPECT_EQ(Told("reason"), "No source is on view.");
}

TEST_F(SourceViewTest, ScreenReadersHaveTheTextAndTheCaret) {
  viewer.GoTo({"PBRATE.cbl", 2, 3});
  QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(text);
  ASSERT_NE(reader, nullptr);
  ASSERT_NE(reader->textInterface(), nullptr);
  EXPECT_EQ(reader->textInterface()->text(0, 5), QStringLiteral("ROW 1"));
  EXPECT_EQ(reader->textInterface()->cursorPosition(), 8);
  EXPECT_EQ(reader->text(QAccessible::Name), QStringLiteral("Source text"));
  EXPECT_EQ(reader->text(QAccessible::Description), QStringLiteral("PBRATE.cbl"));
}

TEST_F(SourceViewTest, ScreenReadersHaveTheTextsThatChange) {
  const auto name = [&](const char* part) { return Find<QWidget>(part).accessibleName().toStdString(); };
  viewer.GoTo({"PBRATE.cbl", 2, 3});
  EXPECT_EQ(name("place"), "Place in the source: Row 2, column 3");
  viewer.SetFiles({});
  EXPECT_EQ(name("reason"), "Why no source is shown: No source is on view.");
  EXPECT_EQ(name("place"), "Place in the source");
}

TEST_F(SourceViewTest, EveryPartHasAName) {
  for (const char* name : {"codeText", "files", "reason", "place", "findPattern", "findCount", "rowNumber"}) {
    EXPECT_FALSE(Find<QWidget>(name).accessibleName().isEmpty()) << name;
  }
  for (const QAction* action : view.Actions()) {
    EXPECT_FALSE(action->text().isEmpty()) << action->objectName().toStdString();
    EXPECT_FALSE(action->shortcuts().isEmpty()) << action->objectName().toStdString();
  }
}

}  // namespace
}  // namespace qmrules::desktop
