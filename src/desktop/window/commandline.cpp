#include "desktop/window/commandline.h"

#include <fmt/format.h>

namespace qmrules::desktop {

namespace {

constexpr int kWrongUsage = 2;

constexpr std::string_view kHelp =
    R"(The catalogue of the business rules of legacy programs, on the desktop
Usage: qmrules-workbench [OPTIONS] [FOLDER]

Arguments:
  FOLDER                 The workspace; without it the one that was open when the
                         program ended last

Options:
  -h, --help             Print this help and exit
  --version              Print the version and exit
  --language en|ja|ko    Language of the texts; without it the one chosen in the
                         window, at first the locale's
)";

CommandLine Refusal(const std::string& text) {
  CommandLine line;
  line.answer = {fmt::format("qmrules-workbench: {}\nSee \"qmrules-workbench --help\".\n", text), kWrongUsage};
  return line;
}

CommandLine Printed(std::string text) {
  CommandLine line;
  line.answer = {std::move(text), 0};
  return line;
}

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
  constexpr std::string_view kLanguage = "--language";
  CommandLine line;
  bool optionsAreOver = false;
  for (std::size_t at = 0; at < arguments.size(); ++at) {
    const std::string& argument = arguments[at];
    if (optionsAreOver || !argument.starts_with('-')) {
      if (!line.folder.empty()) return Refusal(fmt::format("There is one FOLDER too many: {}.", argument));
      line.folder = argument;
    } else if (argument == "--") {
      optionsAreOver = true;
    } else if (argument == "-h" || argument == "--help") {
      return Printed(std::string(kHelp));
    } else if (argument == "--version") {
      return Printed("qmrules-workbench " QMRULES_VERSION "\n");
    } else if (argument == kLanguage || argument.starts_with(std::string(kLanguage) + "=")) {
      const bool isApart = argument == kLanguage;
      if (isApart && at + 1 == arguments.size()) return Refusal("--language wants en, ja or ko.");
      const std::string code = isApart ? arguments[++at] : argument.substr(kLanguage.size() + 1);
      line.language = shell::ParseLanguage(code);
      if (!line.language) return Refusal(fmt::format("--language wants en, ja or ko, not {}.", code));
    } else {
      return Refusal(fmt::format("There is no option {}.", argument));
    }
  }
  return line;
}

}  // namespace qmrules::desktop
