#pragma once

#include <string_view>

namespace qmrules::platform {

// Runs commands of the control for those below it, such as the tree's Delete key.
class CommandSink {
 public:
  virtual ~CommandSink() = default;
  // Runs the command of this key to its end. An unknown key does nothing. What the command throws comes through.
  virtual void Run(std::string_view key) = 0;
};

}  // namespace qmrules::platform
