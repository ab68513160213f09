#include "desktop/window/inputgate.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

namespace qmrules::desktop {
namespace {

// Counts how often it is painted.
class Painted final : public QWidget {
 public:
  Painted() { setMinimumSize(20, 20); }
  int times = 0;

 protected:
  void paintEvent(QPaintEvent* event) override {
    ++times;
    QWidget::paintEvent(event);
  }
};

class InputGateTest : public testing::Test {
 protected:
  InputGateTest() {
    auto* const layout = new QVBoxLayout(&window_);
    for (QWidget* const widget : {static_cast<QWidget*>(&field_), static_cast<QWidget*>(&command_),
                                  static_cast<QWidget*>(&open_), static_cast<QWidget*>(&painted_)}) {
      layout->addWidget(widget);
    }
    QObject::connect(&command_, &QPushButton::clicked, [this] { ++commands_; });
    QObject::connect(&open_, &QPushButton::clicked, [this] { ++opened_; });
    window_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window_));
    field_.setFocus();
  }
  ~InputGateTest() override {
    // They are the window's children, but members of the test.
    for (QWidget* const widget : {static_cast<QWidget*>(&field_), static_cast<QWidget*>(&command_),
                                  static_cast<QWidget*>(&open_), static_cast<QWidget*>(&painted_)}) {
      widget->setParent(nullptr);
    }
  }
  // The user acts while the gate handles events.
  void Meanwhile(const std::function<void()>& action) {
    QMetaObject::invokeMethod(&window_, action, Qt::QueuedConnection);
    gate_.LetPaint();
  }

  QWidget window_;
  QLineEdit field_;
  QPushButton command_{"Command"};
  QPushButton open_{"Cancel"};
  Painted painted_;
  int commands_ = 0;
  int opened_ = 0;
  int escapes_ = 0;
  InputGate gate_{open_, [this] { ++escapes_; }};
};

TEST_F(InputGateTest, PaintsWhatHasChanged) {
  QCoreApplication::processEvents();
  const int before = painted_.times;
  painted_.update();
  gate_.LetPaint();
  EXPECT_GT(painted_.times, before);
}

TEST_F(InputGateTest, PaintsAlsoWhereInputIsKept) {
  QCoreApplication::processEvents();
  const int before = painted_.times;
  painted_.update();
  gate_.LetPaintOnly();
  EXPECT_GT(painted_.times, before);
}

TEST_F(InputGateTest, DropsWhatIsTypedAndClicked) {
  Meanwhile([this] {
    QTest::keyClicks(&field_, "typed");
    QTest::mouseClick(&command_, Qt::LeftButton);
    QTest::mouseClick(window_.windowHandle(), Qt::LeftButton, {}, command_.geometry().center());
  });
  QCoreApplication::processEvents();
  EXPECT_EQ(field_.text(), "");
  EXPECT_EQ(commands_, 0);
  QTest::mouseClick(&command_, Qt::LeftButton);
  EXPECT_EQ(commands_, 1);
}

TEST_F(InputGateTest, LetsTheOpenWidgetTakeClicks) {
  Meanwhile([this] { QTest::mouseClick(window_.windowHandle(), Qt::LeftButton, {}, open_.geometry().center()); });
  EXPECT_EQ(opened_, 1);
}

TEST_F(InputGateTest, TellsOfEscape) {
  Meanwhile([this] { QTest::keyClick(&field_, Qt::Key_Escape); });
  EXPECT_EQ(escapes_, 1);
}

TEST_F(InputGateTest, KeepsTheWindowOpen) {
  Meanwhile([this] { window_.close(); });
  EXPECT_TRUE(window_.isVisible());
  window_.close();
  EXPECT_FALSE(window_.isVisible());
}

TEST_F(InputGateTest, LetsTimersWait) {
  int rung = 0;
  QTimer timer;
  timer.setSingleShot(true);
  QObject::connect(&timer, &QTimer::timeout, [&] { ++rung; });
  timer.start(0);
  QTest::qSleep(5);
  gate_.LetPaint();
  EXPECT_EQ(rung, 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return rung == 1; }));
}

TEST_F(InputGateTest, DoesNothingWithinItself) {
  int depth = 0;
  Meanwhile([&] {
    QMetaObject::invokeMethod(
        &window_, [&] { ++depth; }, Qt::QueuedConnection);
    gate_.LetPaint();
    EXPECT_EQ(depth, 0);
  });
  QCoreApplication::processEvents();
  EXPECT_EQ(depth, 1);
}

}  // namespace
}  // namespace qmrules::desktop
