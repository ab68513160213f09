#include <QScrollBar>
#include <QTextLayout>
#include <atomic>
#include <thread>

#include "desktop/source/shownsource.h"

namespace qmrules::desktop {
namespace {

using workbench::codemodel::TextClass;

class ColoringTest : public ShownSource {
 protected:
  void WaitForColors() {
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    text->viewport()->grab();
  }
  // The runs of a row that have the color of the class, as text parted by "|".
  std::string Colored(int row, TextClass kind) const {
    const QTextBlock block = text->document()->findBlockByNumber(row - 1);
    QStringList runs;
    for (const QTextLayout::FormatRange& range : block.layout()->formats()) {
      if (range.format.foreground().color() == text->Colors().Class(kind)) {
        runs += block.text().mid(range.start, range.length);
      }
    }
    return runs.join(u'|').toStdString();
  }
};

TEST_F(ColoringTest, ClassesHaveTheirColors) {
  std::string marked = "000200     MOVE 'Z' TO B.";
  marked.resize(72, ' ');
  Show("       PROCEDURE DIVISION.\n000100* A NOTE\n" + marked + "PBRATE\n");
  WaitForColors();
  EXPECT_EQ(Colored(1, TextClass::Heading), "PROCEDURE|DIVISION");
  EXPECT_EQ(Colored(2, TextClass::Comment), "000100* A NOTE");
  EXPECT_EQ(Colored(3, TextClass::Margin), "000200|PBRATE");
  EXPECT_EQ(Colored(3, TextClass::Verb), "MOVE");
  EXPECT_EQ(Colored(3, TextClass::Literal), "'Z'");
  EXPECT_EQ(Colored(3, TextClass::Reserved), "TO");
}

TEST_F(ColoringTest, AnotherPaletteChangesTheColors) {
  Show("           MOVE A TO B.\n");
  WaitForColors();
  const QColor light = text->Colors().Class(TextClass::Verb);
  QPalette dark = view.palette();
  dark.setColor(QPalette::Base, Qt::black);
  dark.setColor(QPalette::Text, Qt::white);
  view.setPalette(dark);
  text->viewport()->grab();
  EXPECT_NE(text->Colors().Class(TextClass::Verb), light);
  EXPECT_EQ(Colored(1, TextClass::Verb), "MOVE");
}

TEST_F(ColoringTest, OtherLanguagesArePlain) {
  texts.Put("PROG.pli", "MOVE A TO B.\n");
  viewer.SetFiles({{"PROG.pli", "PLI"}});
  WaitForColors();
  EXPECT_TRUE(text->document()->firstBlock().layout()->formats().isEmpty());
}

TEST_F(ColoringTest, RowsAreColoredWhenTheyComeOnScreen) {
  std::string rows;
  for (int row = 0; row < 1000; ++row) rows += "           MOVE A TO B.\n";
  Show(rows);
  WaitForColors();
  EXPECT_EQ(Colored(1, TextClass::Verb), "MOVE");
  EXPECT_EQ(Colored(900, TextClass::Verb), "");
  viewer.SetRow(900);
  text->viewport()->grab();
  EXPECT_EQ(Colored(900, TextClass::Verb), "MOVE");
  EXPECT_EQ(Colored(500, TextClass::Verb), "");
}

TEST_F(ColoringTest, ClassesAreToldOnAnotherThread) {
  std::atomic<bool> isOther = false;
  texts.SetClassifier([&isOther, own = std::this_thread::get_id()](auto) {
    isOther = std::this_thread::get_id() != own;
    return workbench::codemodel::ClassedText();
  });
  Show("A\n");
  WaitForColors();
  EXPECT_TRUE(isOther);
}

TEST_F(ColoringTest, ClassesOfAFileThatHasGoneAreDropped) {
  Show("           MOVE A TO B.\n");
  viewer.SetFiles({{"PBRATE.cbl", "NATURAL"}});
  WaitForColors();
  EXPECT_TRUE(text->document()->firstBlock().layout()->formats().isEmpty());
}

TEST_F(ColoringTest, ClassesBehindTheTextAreLeftOut) {
  texts.SetClassifier([](auto) {
    workbench::codemodel::ClassedText classes;
    classes.Add(1, {2, 100, TextClass::Verb});
    classes.Add(1, {200, 5, TextClass::Number});
    classes.Add(9, {1, 5, TextClass::Number});
    return classes;
  });
  Show("ABC\n");
  WaitForColors();
  EXPECT_EQ(Colored(1, TextClass::Verb), "BC");
  EXPECT_EQ(Colored(1, TextClass::Number), "");
}

}  // namespace
}  // namespace qmrules::desktop
