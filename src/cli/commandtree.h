#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "cli/command.h"

namespace qmrules::cli {

// The options of every command.
struct GlobalOptions {
  std::string workspace;
  std::string language;
};

// One argument or option, as the help, the completion scripts and the manual tell of it.
struct ParameterDescription {
  std::string name;  // "PATH" of an argument; "--json" of an option
  std::string shortName;
  std::string value;  // what stands for its value, "" for a flag
  std::string summary;
  std::vector<std::string> choices;  // the values that it takes, where they are listed
  bool isRequired = false;
  bool isRepeated = false;

  bool IsOption() const { return name.starts_with('-'); }
  bool TakesFile() const { return value == "PATH" || value.starts_with("FILE"); }
  bool TakesFolder() const { return value == "DIR"; }
};

// One command, or a group of commands, or the program itself.
struct CommandDescription {
  std::string words;  // "rule create"; "" for the program
  std::string summary;
  std::vector<ParameterDescription> parameters;
  std::vector<std::string> examples;  // without the program's name
  std::vector<CommandDescription> commands;
};

// The program's commands with all that they declare: the one source of parsing, help, completion and manual.
class CommandTree {
 public:
  explicit CommandTree(std::vector<std::unique_ptr<Command>> commands);
  ~CommandTree();
  CommandTree(const CommandTree&) = delete;
  CommandTree& operator=(const CommandTree&) = delete;

  // Reads a command line. Gives the command that was chosen. Throws UsageError for a line without a command that there
  // is, and CLI::ParseError for one that is malformed otherwise or asks for help or for the version.
  Command& Parse(const std::vector<std::string>& args);

  // The program's help, or that of the command or group whose words the parsed line has.
  std::string HelpOfParsed() const;
  // The help of the command or group with these words. Throws UsageError when there is none.
  std::string HelpOf(const std::vector<std::string>& words) const;
  // "qmrules", or "qmrules rule create": as far as the parsed line tells the command.
  std::string ParsedName() const;

  CommandDescription Describe() const;

  const GlobalOptions& Options() const { return options_; }

 private:
  CLI::App& AppOf(const std::string& words);
  void Add(Command& command);
  const CLI::App& ParsedApp() const;
  CommandDescription Describe(const CLI::App& app, const std::string& words) const;

  std::vector<std::unique_ptr<Command>> commands_;
  GlobalOptions options_;
  std::unique_ptr<CLI::App> root_;
  std::map<const CLI::App*, Command*> commandOf_;
};

}  // namespace qmrules::cli
