#include "desktop/window/application.h"

#include <gtest/gtest.h>

#include <QKeyEvent>
#include <QStringList>
#include <QWidget>

#include "platform/error.h"

namespace qmrules::desktop {
namespace {

// Fails at each key, and at each event that is sent to it by the name of the test.
class Failing final : public QWidget {
 protected:
  void keyPressEvent(QKeyEvent* /*event*/) override { throw platform::Error("The catalogue is locked."); }
};

class ApplicationTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "test";
    static char* words[] = {name, nullptr};
    application_ = std::make_unique<Application>(count, words);
  }
  static void TearDownTestSuite() { application_.reset(); }
  void SetUp() override {
    application_->SetFailureTeller([this](const QString& text) { told_ += text; });
  }
  void TearDown() override { application_->SetFailureTeller(nullptr); }
  static bool Send(QWidget& widget) {
    QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a");
    return QCoreApplication::sendEvent(&widget, &key);
  }

  static inline std::unique_ptr<Application> application_;
  QStringList told_;
};

TEST_F(ApplicationTest, TellsOfAFailureOnceTheEventIsOver) {
  Failing widget;
  EXPECT_FALSE(Send(widget));
  EXPECT_TRUE(told_.isEmpty());
  QCoreApplication::processEvents();
  EXPECT_EQ(told_, QStringList("The catalogue is locked."));
}

TEST_F(ApplicationTest, LivesOn) {
  Failing widget;
  for (int time = 0; time < 3; ++time) Send(widget);
  QCoreApplication::processEvents();
  EXPECT_EQ(told_.size(), 3);
  QWidget sound;
  EXPECT_NO_THROW(Send(sound));
}

TEST_F(ApplicationTest, SaysItOnTheErrorOutputWhenNobodyElseDoes) {
  application_->SetFailureTeller(nullptr);
  Failing widget;
  testing::internal::CaptureStderr();
  Send(widget);
  QCoreApplication::processEvents();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "qmrules-workbench: The catalogue is locked.\n");
}

}  // namespace
}  // namespace qmrules::desktop
