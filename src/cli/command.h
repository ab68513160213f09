#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "cli/environment.h"
#include "shell/messages.h"

namespace CLI {
class App;
}

namespace qmrules::cli {

class CommandTree;

// What a command runs in.
struct Context {
  CliEnvironment& environment;
  const CommandTree& tree;
  const shell::StringTable& texts;  // in the user's language
  std::string workspace;            // of --workspace; "" when it was not given
};

struct CommandTitle {
  std::string words;    // as they are typed: "rule create"
  std::string summary;  // one line, without a full stop
};

// One command: it declares its own arguments and options, and runs with what they were given.
class Command {
 public:
  virtual ~Command() = default;
  virtual CommandTitle Title() const = 0;
  // Whole command lines, without the program's name; at least one.
  virtual std::vector<std::string> Examples() const = 0;
  // Declares arguments and options on the command's own part of the command line. They are stored in this object.
  virtual void Declare(CLI::App& app) = 0;
  // Gives the exit code. Throws platform::Error, nothing having been changed, and UsageError.
  virtual int Run(Context& context) = 0;
};

// The command line is not of the command's form, though each of its parts is.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace qmrules::cli
