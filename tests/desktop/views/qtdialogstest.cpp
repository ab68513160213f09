#include "desktop/views/qtdialogs.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QTemporaryDir>

#include "desktop/views/qttree.h"
#include "desktop/views/viewtest.h"
#include "platform/widgets/menu.h"

namespace qmrules::desktop {
namespace {

using platform::FileRequest;
using platform::MessageAnswer;
using platform::MessageStyle;
using platform::widgets::Menu;
using platform::widgets::TreeView;

class QtDialogsTest : public ViewTest {
 protected:
  QtDialogsTest() {
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    Show();
  }

  static QMessageBox& Box() { return dynamic_cast<QMessageBox&>(*QApplication::activeModalWidget()); }

  MessageAnswer Ask(MessageStyle style, std::function<void()> user) {
    Later(std::move(user));
    return dialogs.MessageBox("Delete <b>?\nReally", "QMRules", style);
  }

  platform::MemoryPointer pointer;
  QtDialogs dialogs{pointer, &window};
};

TEST_F(QtDialogsTest, AQuestionHasYesAndNo) {
  const auto answer = Ask(MessageStyle::Question, [] {
    EXPECT_EQ(Box().text(), "Delete <b>?\nReally");
    EXPECT_EQ(Box().textFormat(), Qt::PlainText);
    EXPECT_EQ(Box().icon(), QMessageBox::Question);
    EXPECT_EQ(Box().buttons().size(), 2);
    QTest::mouseClick(Box().button(QMessageBox::Yes), Qt::LeftButton);
  });
  EXPECT_EQ(answer, MessageAnswer::Yes);
  EXPECT_EQ(Ask(MessageStyle::Question, [] { QTest::keyClick(&Box(), Qt::Key_Escape); }), MessageAnswer::No);
}

TEST_F(QtDialogsTest, TheOtherStyles) {
  EXPECT_EQ(Ask(MessageStyle::QuestionOkCancel, [] { QTest::keyClick(&Box(), Qt::Key_Escape); }),
            MessageAnswer::Cancel);
  EXPECT_EQ(Ask(MessageStyle::QuestionOkCancel, [] { QTest::keyClick(&Box(), Qt::Key_Return); }), MessageAnswer::Ok);
  const auto exclamation = Ask(MessageStyle::Exclamation, [] {
    EXPECT_EQ(Box().icon(), QMessageBox::Warning);
    Box().close();
  });
  EXPECT_EQ(exclamation, MessageAnswer::Ok);
  const auto information = Ask(MessageStyle::Information, [] {
    EXPECT_EQ(Box().icon(), QMessageBox::Information);
    QTest::keyClick(&Box(), Qt::Key_Return);
  });
  EXPECT_EQ(information, MessageAnswer::Ok);
}

TEST_F(QtDialogsTest, ThePointerIsNormalWhileTheUserIsAsked) {
  pointer.SetBusy(true);
  Ask(MessageStyle::Information, [this] {
    EXPECT_FALSE(pointer.IsBusy());
    QTest::keyClick(&Box(), Qt::Key_Return);
  });
  EXPECT_TRUE(pointer.IsBusy());
}

class FileDialogsTest : public QtDialogsTest {
 protected:
  FileDialogsTest() {
    QFile file(folder.filePath("rules.erd"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    request.title = "Rule Export";
    request.filter = "ERD file|*.erd|Text file|*.txt;*.log|";
    request.folder = folder.path().toStdString();
  }

  static QFileDialog& Dialog() { return dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget()); }

  QTemporaryDir folder;
  FileRequest request;
};

TEST_F(FileDialogsTest, AFileIsOpenedThroughTheFilterAsked) {
  Later([this] {
    EXPECT_EQ(Dialog().windowTitle(), "Rule Export");
    EXPECT_EQ(Dialog().nameFilters(), (QStringList{"ERD file (*.erd)", "Text file (*.txt *.log)"}));
    EXPECT_EQ(Dialog().directory().path(), folder.path());
    Dialog().selectFile("rules.erd");
    QMetaObject::invokeMethod(&Dialog(), "accept");
  });
  EXPECT_EQ(dialogs.PickFileToOpen(request), folder.filePath("rules.erd").toStdString());
  Later([] { QTest::keyClick(&Dialog(), Qt::Key_Escape); });
  EXPECT_EQ(dialogs.PickFileToOpen(request), std::nullopt);
}

TEST_F(FileDialogsTest, ANameWithoutAnEndingGetsTheFiltersOne) {
  Later([] {
    Dialog().selectFile("new");
    QMetaObject::invokeMethod(&Dialog(), "accept");
  });
  EXPECT_EQ(dialogs.PickFileToSave(request), folder.filePath("new.erd").toStdString());
}

TEST_F(FileDialogsTest, AFileThatExistsIsAskedFor) {
  request.defaultName = "rules.erd";
  int asked = 0;
  const auto save = [&](QMessageBox::StandardButton answer) {
    Later([&asked, answer] {
      QFileDialog& dialog = Dialog();
      Later([&asked, answer] {
        auto* const question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(question, nullptr);
        ++asked;
        QTest::mouseClick(question->button(answer), Qt::LeftButton);
      });
      QMetaObject::invokeMethod(&dialog, "accept");
      if (answer == QMessageBox::No) dialog.reject();
    });
    return dialogs.PickFileToSave(request);
  };
  EXPECT_EQ(save(QMessageBox::No), std::nullopt);
  EXPECT_EQ(save(QMessageBox::Yes), folder.filePath("rules.erd").toStdString());
  EXPECT_EQ(asked, 2);
}

class PopupMenuTest : public QtDialogsTest {
 protected:
  PopupMenuTest() {
    menu.Add("mnuCreateRule", "Create Rule ...");
    menu.AddSeparator();
    menu.Add("mnuDelete", "&Delete");
  }
  Menu menu{"mnuPopup"};
};

TEST_F(PopupMenuTest, TheChosenItemIsClickedOnceTheMenuIsClosed) {
  std::vector<std::string> order;
  const auto click = menu.Item("mnuDelete").OnClick.Subscribe([&] {
    order.emplace_back(QApplication::activePopupWidget() == nullptr ? "closed" : "open");
  });
  Later([] { QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_D); });
  dialogs.PopupMenu(menu);
  order.emplace_back("returned");
  EXPECT_EQ(order, (std::vector<std::string>{"closed", "returned"}));
}

TEST_F(PopupMenuTest, EscapeChoosesNothing) {
  int clicks = 0;
  const auto click = menu.Item("mnuDelete").OnClick.Subscribe([&] { ++clicks; });
  Later([] { QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape); });
  dialogs.PopupMenu(menu);
  EXPECT_EQ(clicks, 0);
}

TEST_F(PopupMenuTest, AfterAKeyItOpensAtTheItemWithTheFocus) {
  auto& tree = container.Add<TreeView>("tvObjects");
  for (int row = 0; row < 5; ++row) tree.Add(Node("row"));
  auto& view = Make<QtTree>(tree);
  QCoreApplication::processEvents();
  tree.SetSelectedNode(tree.LastRoot());
  view.setFocus();
  const QRect row = view.visualRect(view.currentIndex());
  QPoint opened;
  Later([&] {
    opened = QApplication::activePopupWidget()->pos();
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
  });
  const auto down = tree.OnKeyDown.Subscribe([&](platform::widgets::KeyPress&) { dialogs.PopupMenu(menu); });
  QTest::keyClick(&view, Qt::Key_F10, Qt::ShiftModifier);
  const QPoint expected = view.viewport()->mapToGlobal(QPoint(row.center().x(), row.bottom()));
  EXPECT_NEAR(opened.y(), expected.y(), 4);
  EXPECT_NEAR(opened.x(), expected.x(), 4);
}

}  // namespace
}  // namespace qmrules::desktop
