#pragma once

#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "workbench/repository/connection.h"

namespace qmrules::cli {

// While there is one, the user's wish to stop the program is noted in place of ending the program.
class InterruptWatch {
 public:
  virtual ~InterruptWatch() = default;
  virtual bool Interrupted() = 0;
};

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
  bool errIsTerminal = false;                             // progress may be shown
  std::string programFolder = {};                         // of the program itself, without a separator at the end
  // Runs the program of this path, which is there, with these arguments, and gives its exit code. Throws
  // platform::Error when it cannot be started.
  std::function<int(const std::string& path, const std::vector<std::string>& arguments)> runProgram = {};
  // Begins to watch; empty where nobody can interrupt.
  std::function<std::unique_ptr<InterruptWatch>()> watchInterrupts = {};

  // The variable's value; "" for none.
  std::string Variable(const std::string& name) const {
    const auto found = variables.find(name);
    return found == variables.end() ? std::string() : found->second;
  }
};

}  // namespace qmrules::cli
