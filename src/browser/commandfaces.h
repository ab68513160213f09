#pragma once

#include <string_view>

#include "browser/browserservices.h"

namespace qmrules::browser {

// What shows the state of a command to the user: its item in the control's menu, its button or entry in the tool bar,
// and its item in the host's menu. Which these are tells the table of commands.
class CommandFaces {
 public:
  explicit CommandFaces(const BrowserServices& services) : services_(services) {}

  // Each throws std::out_of_range for a key that is no command's.
  void SetEnabled(std::string_view command, bool enabled) const;
  void SetVisible(std::string_view command, bool visible) const;
  // For a command of two states.
  void SetChecked(std::string_view command, bool checked) const;
  bool IsChecked(std::string_view command) const;

 private:
  BrowserServices services_;
};

}  // namespace qmrules::browser
