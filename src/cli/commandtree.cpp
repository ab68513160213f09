#include "cli/commandtree.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <utility>

#include "cli/commandlist.h"

namespace qmrules::cli {

namespace {

constexpr std::string_view kProgram = "qmrules";

std::vector<std::string> SplitWords(const std::string& words) {
  std::vector<std::string> split;
  for (std::size_t at = 0; at < words.size();) {
    const std::size_t end = std::min(words.find(' ', at), words.size());
    split.push_back(words.substr(at, end - at));
    at = end + 1;
  }
  return split;
}

std::string FooterOf(const Command& command) {
  const auto examples = command.Examples();
  std::string footer = examples.size() == 1 ? "Example:\n" : "Examples:\n";
  for (const auto& example : examples) footer += fmt::format("  {} {}\n", kProgram, example);
  return footer + "\nOptions of every command: --workspace DIR, --language en|ja|ko";
}

const CLI::App* ChildNamed(const CLI::App& app, const std::string& name) {
  for (const CLI::App* child : app.get_subcommands([](const CLI::App*) { return true; })) {
    if (child->get_name() == name) return child;
  }
  return nullptr;
}

// The listed values in a check's description, which has the form "{a,b,c}".
std::vector<std::string> ChoicesIn(const std::string& typeName) {
  std::vector<std::string> choices;
  const std::size_t open = typeName.find('{');
  const std::size_t close = typeName.find('}', open == std::string::npos ? 0 : open);
  if (open == std::string::npos || close == std::string::npos) return choices;
  for (std::size_t at = open + 1; at < close;) {
    const std::size_t end = std::min(typeName.find(',', at), close);
    choices.push_back(typeName.substr(at, end - at));
    at = end + 1;
  }
  return choices;
}

ParameterDescription DescribeOption(const CLI::Option& option) {
  ParameterDescription described;
  const std::string typeName = option.get_type_name();
  described.choices = ChoicesIn(typeName);
  if (option.nonpositional()) {
    if (!option.get_lnames().empty()) described.name = "--" + option.get_lnames().front();
    if (!option.get_snames().empty()) described.shortName = "-" + option.get_snames().front();
    if (option.get_expected_max() > 0) described.value = typeName.substr(0, typeName.find(":{"));
  } else {
    described.name = option.get_name(true);
    described.value = described.name;
  }
  if (!described.choices.empty() && !described.value.empty()) {
    described.value = fmt::format("{}", fmt::join(described.choices, "|"));
  }
  described.summary = option.get_description();
  described.isRequired = option.get_required();
  described.isRepeated = option.get_items_expected_max() > 1 || option.get_expected_max() > 1;
  return described;
}

}  // namespace

CommandTree::CommandTree(std::vector<std::unique_ptr<Command>> commands)
    : commands_(std::move(commands)),
      root_(std::make_unique<CLI::App>("Catalogue of the business rules of legacy programs", std::string(kProgram))) {
  root_->get_formatter()->column_width(34);
  root_->get_formatter()->label("SUBCOMMAND", "COMMAND");
  root_->get_formatter()->label("Positionals", "Arguments");
  root_->set_help_flag("-h,--help", "Print this help and exit");
  root_->set_version_flag("--version", fmt::format("{} {}", kProgram, QMRULES_VERSION), "Print the version and exit");
  root_
      ->add_option("--workspace", options_.workspace,
                   "The workspace; without it the one in the current folder or the nearest folder above")
      ->type_name("DIR");
  root_->add_option("--language", options_.language, "Language of the texts; without it the locale's")
      ->check(CLI::IsMember({"en", "ja", "ko"}))
      ->option_text("en|ja|ko");
  root_->fallthrough();
  root_->require_subcommand(1);
  root_->footer(
      "\"qmrules help COMMAND\" tells more of a command. Exit codes: 0 done, 1 refused or failed (nothing was\n"
      "changed), 2 the command line is malformed.");
  for (const auto& command : commands_) Add(*command);
}

CommandTree::~CommandTree() = default;

CLI::App& CommandTree::AppOf(const std::string& words) {
  CLI::App* app = root_.get();
  std::string prefix;
  for (const auto& word : SplitWords(words)) {
    prefix += prefix.empty() ? word : " " + word;
    const auto* child = ChildNamed(*app, word);
    if (child == nullptr && prefix != words) {
      app = app->add_subcommand(word, std::string(GroupSummary(prefix)));
      app->require_subcommand(1);
      app->footer("");
      app->group("Commands");
    } else {
      app = child == nullptr ? app->add_subcommand(word)->group("Commands") : app->get_subcommand(word);
    }
  }
  return *app;
}

void CommandTree::Add(Command& command) {
  const auto title = command.Title();
  CLI::App& app = AppOf(title.words);
  app.description(title.summary);
  app.footer(FooterOf(command));
  command.Declare(app);
  commandOf_[&app] = &command;
}

const CLI::App& CommandTree::ParsedApp() const {
  const CLI::App* app = root_.get();
  while (!app->get_subcommands([](const CLI::App* child) { return child->parsed(); }).empty()) {
    app = app->get_subcommands([](const CLI::App* child) { return child->parsed(); }).front();
  }
  return *app;
}

Command& CommandTree::Parse(const std::vector<std::string>& args) {
  try {
    root_->parse(std::vector<std::string>(args.rbegin(), args.rend()));
  } catch (const CLI::RequiredError&) {
    // Where a command is missing, an unknown word may stand in its place.
    const CLI::App& app = ParsedApp();
    if (commandOf_.contains(&app)) throw;
    const auto unknown = root_->remaining(true);
    if (unknown.empty()) throw UsageError("A command is missing.");
    throw UsageError(fmt::format("There is no {} \"{}\".", unknown.front().starts_with('-') ? "option" : "command",
                                 unknown.front()));
  }
  return *commandOf_.at(&ParsedApp());
}

std::string CommandTree::HelpOfParsed() const {
  return HelpOf(SplitWords(ParsedName().substr(std::min(kProgram.size() + 1, ParsedName().size()))));
}

std::string CommandTree::HelpOf(const std::vector<std::string>& words) const {
  const CLI::App* app = root_.get();
  std::string name(kProgram);
  for (const auto& word : words) {
    app = ChildNamed(*app, word);
    if (app == nullptr) throw UsageError(fmt::format("There is no command \"{}\".", fmt::join(words, " ")));
    name += " " + word;
  }
  return app->get_formatter()->make_help(app, name, CLI::AppFormatMode::Normal);
}

std::string CommandTree::ParsedName() const {
  std::string name(kProgram);
  const CLI::App& last = ParsedApp();
  for (const CLI::App* app = root_.get(); app != &last;) {
    app = app->get_subcommands([](const CLI::App* child) { return child->parsed(); }).front();
    name += " " + app->get_name();
  }
  return name;
}

CommandDescription CommandTree::Describe() const {
  return Describe(*root_, "");
}

CommandDescription CommandTree::Describe(const CLI::App& app, const std::string& words) const {
  CommandDescription described{words, app.get_description(), {}, {}, {}};
  for (const CLI::Option* option : app.get_options()) {
    if (!option->get_group().empty()) described.parameters.push_back(DescribeOption(*option));
  }
  if (const auto found = commandOf_.find(&app); found != commandOf_.end()) {
    described.examples = found->second->Examples();
  }
  for (const CLI::App* child : app.get_subcommands([](const CLI::App*) { return true; })) {
    described.commands.push_back(Describe(*child, words.empty() ? child->get_name() : words + " " + child->get_name()));
  }
  return described;
}

}  // namespace qmrules::cli
