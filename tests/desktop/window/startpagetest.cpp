#include "desktop/window/startpage.h"

#include <gtest/gtest.h>

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
  StartPage page_;
};

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
