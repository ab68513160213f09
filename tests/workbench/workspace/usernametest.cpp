#include "workbench/workspace/username.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <array>
#include <string>

namespace qmrules::workbench {
namespace {

TEST(UserName, IsTheLoginNameOfTheProcess) {
  std::array<char, 65536> room{};
  passwd entry{};
  passwd* found = nullptr;
  ASSERT_EQ(::getpwuid_r(::geteuid(), &entry, room.data(), room.size(), &found), 0);
  const std::string expected = found != nullptr ? found->pw_name : "user" + std::to_string(::geteuid());
  EXPECT_EQ(SystemUserName(), expected);
}

}  // namespace
}  // namespace qmrules::workbench
