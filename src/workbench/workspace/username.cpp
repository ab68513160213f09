#include "workbench/workspace/username.h"

#include <fmt/format.h>
#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

namespace qmrules::workbench {

std::string SystemUserName() {
  constexpr std::size_t longestEntry = std::size_t{1} << 20;
  const uid_t user = ::geteuid();
  passwd entry{};
  passwd* found = nullptr;
  std::vector<char> room(1024);
  int code = ::getpwuid_r(user, &entry, room.data(), room.size(), &found);
  while (code == ERANGE && room.size() < longestEntry) {
    room.resize(room.size() * 2);
    code = ::getpwuid_r(user, &entry, room.data(), room.size(), &found);
  }
  if (found == nullptr || *found->pw_name == '\0') return fmt::format("user{}", user);
  return found->pw_name;
}

}  // namespace qmrules::workbench
