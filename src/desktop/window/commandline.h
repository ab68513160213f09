#pragma once

#include <optional>
#include <string>
#include <vector>

#include "shell/language.h"

namespace qmrules::desktop {

// What the program is started with.
struct CommandLine {
  std::string folder;  // of the workspace; "" for the last one
  std::optional<shell::Language> language;
  // The program prints this and ends with this code.
  struct Answer {
    std::string text;
    int code = 0;  // 0: the text goes to the output; else it tells what is wrong
  };
  std::optional<Answer> answer;
};

// Takes the arguments without the program's name. Options that the toolkit itself takes have been removed.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace qmrules::desktop
