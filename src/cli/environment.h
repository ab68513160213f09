#pragma once

#include <map>
#include <ostream>
#include <string>

#include "platform/clock.h"
#include "workbench/repository/connection.h"

namespace qmrules::cli {

// All that a run of the program takes from the process it runs in, so that a run can be made anywhere.
struct CliEnvironment {
  std::ostream& out;
  std::ostream& err;
  const platform::Clock& clock;
  std::string currentFolder = {};  // absolute; relative paths start there
  std::map<std::string, std::string> variables =
      {};                         // LC_ALL, LC_MESSAGES, LANG, NO_COLOR, QMRULES_WORKSPACE are looked at
  std::string userName = {};      // under which changes are recorded
  std::string settingsPath = {};  // of the user's settings
  std::string registryPath = {};  // of the machine's values
  workbench::repository::ConnectionFactory connect = {};  // opens the catalogue's database; empty for SQLite's own
  bool outIsTerminal = false;                             // titles may be made bold

  // The variable's value; "" for none.
  std::string Variable(const std::string& name) const {
    const auto found = variables.find(name);
    return found == variables.end() ? std::string() : found->second;
  }
};

}  // namespace qmrules::cli
