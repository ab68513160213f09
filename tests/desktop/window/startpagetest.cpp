#include "desktop/window/startpage.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace qmrules::desktop {
namespace {

class StartPageTest : public testing::Test {
 protected:
  // The button whose text holds this.
  QPushButton* Button(const QString& text) {
    for (auto* const button : page_.findChildren<QPushButton*>()) {
      if (button->text().contains(text)) return button;
    }
    return nullptr;
  }
  // The label with this text.
  QLabel* Label(const QString& text) {
    for (auto* const label : page_.findChildren<QLabel*>()) {
      if (label->text() == text) return label;
    }
    return nullptr;
  }
  StartPage page_;
};

TEST_F(StartPageTest, NothingIsCalledLastOpenedBeforeThereIsAny) {
  ASSERT_NE(Label("Last opened"), nullptr);
  EXPECT_TRUE(Label("Last opened")->isHidden());
  page_.SetRecent({"/home/ana/billing"});
  EXPECT_FALSE(Label("Last opened")->isHidden());
}

TEST_F(StartPageTest, NothingCoversAnotherPartOnAWidePage) {
  QFont font = page_.font();
  font.setPointSize(14);  // so that texts take several lines
  page_.setFont(font);
  page_.resize(1440, 900);
  page_.show();
  const auto labels = page_.findChildren<QLabel*>();
  for (const auto* const one : labels) {
    for (const auto* const other : labels) {
      if (one == other || one->isHidden() || other->isHidden()) continue;
      EXPECT_FALSE(one->geometry().intersects(other->geometry()))
          << one->text().toStdString() << " / " << other->text().toStdString();
    }
  }
}

TEST_F(StartPageTest, OffersToOpenAndToMakeAWorkspace) {
  QSignalSpy open(&page_, &StartPage::OpenRequested);
  QSignalSpy made(&page_, &StartPage::NewRequested);
  ASSERT_NE(Button("Open Workspace"), nullptr);
  Button("Open Workspace")->click();
  EXPECT_EQ(open.count(), 1);
  Button("New Workspace")->click();
  EXPECT_EQ(made.count(), 1);
}

TEST_F(StartPageTest, OffersTheLastWorkspaces) {
  page_.SetRecent({"/home/ana/billing", "/home/ana/claims"});
  QSignalSpy chosen(&page_, &StartPage::RecentChosen);
  Button("claims")->click();
  ASSERT_EQ(chosen.count(), 1);
  EXPECT_EQ(chosen.first().first().toString(), "/home/ana/claims");
  page_.SetRecent({});
  EXPECT_EQ(Button("claims"), nullptr);
}

}  // namespace
}  // namespace qmrules::desktop
