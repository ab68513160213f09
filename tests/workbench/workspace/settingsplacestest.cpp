#include "workbench/workspace/settingsplaces.h"

#include <gtest/gtest.h>

namespace qmrules::workbench {
namespace {

TEST(UserSettingsPath, LiesInTheFolderForConfigurations) {
  EXPECT_EQ(UserSettingsPath("/etc/xdg", "/home/ana"), "/etc/xdg/qmrules/settings.json");
  EXPECT_EQ(UserSettingsPath("", "/home/ana"), "/home/ana/.config/qmrules/settings.json");
}

}  // namespace
}  // namespace qmrules::workbench
