#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QTextBlock>
#include <QtTest>
#include <string>

#include "desktop/source/codetext.h"
#include "desktop/source/memorytexts.h"
#include "desktop/source/sourceview.h"
#include "platform/memorysourceviewer.h"

namespace qmrules::desktop {

// The source view in a window, over a program of two files: PBRATE.cbl with the rows "ROW 1" to "ROW 100", and
// copy/PBPOLMS.cpy.
class ShownSource : public testing::Test {
 protected:
  ShownSource() {
    texts.Put("PBRATE.cbl", test::NumberedRows(100));
    texts.Put("copy/PBPOLMS.cpy", "       01  POLICY.\n");
    viewer.SetFiles({{"PBRATE.cbl", "COBOL"}, {"copy/PBPOLMS.cpy", "COBOL"}});
    view.resize(600, 400);
    view.show();
    view.activateWindow();
    text->setFocus();
    QCoreApplication::processEvents();
  }

  template <class Widget = QLabel>
  Widget& Find(const char* name) {
    auto* const found = view.findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return *found;
  }
  std::string Told(const char* label) { return Find(label).text().toStdString(); }
  std::string Place() {
    QCoreApplication::processEvents();
    return Told("place");
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) { QTest::keyClick(text, key, modifiers); }
  void Trigger(const char* action) { Find<QAction>(action).trigger(); }
  // One other text, as the program's only file.
  void Show(const std::string& bytes) {
    texts.Put("OTHER.cbl", bytes);
    viewer.SetFiles({{"OTHER.cbl", "COBOL"}});
    QCoreApplication::processEvents();
  }

  // The middle of a row that is on screen, in the text or the margin.
  QPoint MiddleOf(int row, int x = 10) const {
    QPoint middle;
    text->ForVisibleRows([&](const QTextBlock& block, const QRectF& rect) {
      if (block.blockNumber() + 1 == row) middle = QPoint(x, static_cast<int>(rect.center().y()));
    });
    EXPECT_FALSE(middle.isNull()) << "row " << row << " is not on screen";
    return middle;
  }
  bool IsOnScreen(int row) const {
    bool isThere = false;
    text->ForVisibleRows([&](const QTextBlock& block, const QRectF& rect) {
      isThere = isThere || (block.blockNumber() + 1 == row && rect.bottom() <= text->viewport()->height());
    });
    return isThere;
  }
  QWidget* Margin() { return &Find<QWidget>("rowMargin"); }

  platform::MemorySourceViewer viewer;
  test::MemoryTexts texts;
  SourceView view{viewer, texts};
  CodeText* text = &Find<CodeText>("codeText");
};

}  // namespace qmrules::desktop
