#include "desktop/window/preferences.h"

#include <gtest/gtest.h>

namespace qmrules::desktop {
namespace {

class PreferencesTest : public testing::Test {
 protected:
  platform::MemorySettings settings_;
  Preferences preferences_{settings_};
};

TEST_F(PreferencesTest, LeaveEverythingToTheSystemAtFirst) {
  EXPECT_FALSE(preferences_.Language());
  EXPECT_EQ(preferences_.ColorScheme(), Scheme::System);
  EXPECT_EQ(preferences_.FontSize(), 0);
  EXPECT_TRUE(preferences_.Geometry().isEmpty());
  EXPECT_TRUE(preferences_.RecentWorkspaces().isEmpty());
  EXPECT_EQ(preferences_.LastWorkspace(), "");
}

TEST_F(PreferencesTest, GiveBackWhatWasSet) {
  for (const auto language : {shell::Language::English, shell::Language::Japanese, shell::Language::Korean}) {
    preferences_.SetLanguage(language);
    EXPECT_EQ(preferences_.Language(), language);
  }
  for (const auto scheme : {Scheme::Light, Scheme::Dark, Scheme::System}) {
    preferences_.SetColorScheme(scheme);
    EXPECT_EQ(preferences_.ColorScheme(), scheme);
  }
  preferences_.SetFontSize(14);
  EXPECT_EQ(preferences_.FontSize(), 14);
  const QByteArray bytes("\0\xff\n\"", 4);
  preferences_.SetLayout(bytes);
  EXPECT_EQ(preferences_.Layout(), bytes);
}

TEST_F(PreferencesTest, TakeAValueThatMakesNoSenseForNone) {
  settings_.Set("Workbench", "Language", "fr");
  settings_.Set("Workbench", "Scheme", "pink");
  settings_.Set("Workbench", "FontSize", "4000");
  EXPECT_FALSE(preferences_.Language());
  EXPECT_EQ(preferences_.ColorScheme(), Scheme::System);
  EXPECT_EQ(preferences_.FontSize(), 0);
}

TEST_F(PreferencesTest, KeepTheLastTenWorkspacesTheLatestFirst) {
  for (int number = 1; number <= 12; ++number) preferences_.NoteWorkspace(QString("/w%1").arg(number));
  preferences_.NoteWorkspace("/w5");
  EXPECT_EQ(preferences_.RecentWorkspaces(),
            (QStringList{"/w5", "/w12", "/w11", "/w10", "/w9", "/w8", "/w7", "/w6", "/w4", "/w3"}));
}

}  // namespace
}  // namespace qmrules::desktop
