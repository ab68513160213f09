#include "cli/cli.h"

#include <CLI/Error.hpp>
#include <exception>
#include <string_view>

#include "cli/command.h"
#include "cli/commandlist.h"
#include "cli/commandtree.h"
#include "platform/error.h"
#include "shell/language.h"

namespace qmrules::cli {

namespace {

// In messages of several lines the break is carriage return and line feed.
std::string WithPlainBreaks(std::string_view text) {
  std::string plain;
  for (const char character : text) {
    if (character != '\r') plain += character;
  }
  return plain;
}

void Tell(CliEnvironment& environment, std::string_view text) {
  environment.err << "qmrules: " << WithPlainBreaks(text) << '\n';
}

int TellUsage(CliEnvironment& environment, const CommandTree& tree, std::string_view text) {
  Tell(environment, text);
  environment.err << "See \"" << tree.ParsedName() << " --help\".\n";
  return kWrongUsage;
}

shell::Language LanguageFor(const CliEnvironment& environment, const std::string& option) {
  if (const auto chosen = shell::ParseLanguage(option)) return *chosen;
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const std::string locale = environment.Variable(variable);
    if (!locale.empty()) return shell::LanguageOf(locale);
  }
  return shell::Language::English;
}

int ParseAndRun(CommandTree& tree, const std::vector<std::string>& args, CliEnvironment& environment) {
  try {
    Command& command = tree.Parse(args);
    Context context{environment, tree, shell::StringTableFor(LanguageFor(environment, tree.Options().language)),
                    tree.Options().workspace};
    return command.Run(context);
  } catch (const CLI::CallForHelp&) {
    environment.out << tree.HelpOfParsed();
    return kDone;
  } catch (const CLI::CallForVersion& version) {
    environment.out << version.what() << '\n';
    return kDone;
  } catch (const CLI::ParseError& failure) {
    return TellUsage(environment, tree, failure.what());
  } catch (const UsageError& failure) {
    return TellUsage(environment, tree, failure.what());
  } catch (const platform::Error& failure) {
    Tell(environment, failure.what());
    return kFailed;
  }
}

}  // namespace

int RunCli(const std::vector<std::string>& args, CliEnvironment& environment) {
  try {
    CommandTree tree(MakeCommands());
    const int code = ParseAndRun(tree, args, environment);
    if (environment.out.flush()) return code;
    Tell(environment, "The output cannot be written.");
    return kFailed;
  } catch (const std::exception& failure) {
    Tell(environment, failure.what());
    return kFailed;
  }
}

}  // namespace qmrules::cli
