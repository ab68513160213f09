#include "cli/manual.h"

#include <fmt/format.h>

#include <functional>
#include <vector>

namespace qmrules::cli {

namespace {

constexpr std::string_view kAboutTheCommand =
    "qmrules keeps a catalogue of business rules over a folder of legacy sources. Business functions trigger rule sets "
    "in sequence, rule sets hold rules in sequence, and each rule may point at a run of source lines. Scanning makes a "
    "model of each program, which knows every variable, statement, paragraph and condition of it. All commands but "
    "init work in a workspace: the folder that init has made, or any folder below it.";

struct Term {
  std::string_view term;
  std::string_view meaning;
};

constexpr Term kKeys[] = {
    {"RULE#12", "A key: the entity, in any case, and the number of the object."},
    {"Function/Rule set/Rule",
     "A path by names, or its beginning. \"\\/\" stands for a \"/\" in a name, \"\\\\\" for a \"\\\". A path with "
     "several meanings is refused, with the keys that it can mean."},
    {"/Rule set/Rule", "The same for a rule set that no function of the project triggers."},
};
constexpr Term kExitCodes[] = {
    {"0", "Done."},
    {"1",
     "Refused or failed. Nothing was changed; only a scan keeps the models of the other programs, and a validation "
     "the rules that it has written."},
    {"2", "The command line is malformed."},
    {"3", "Done, with --strict, and a rule is not valid."},
};
constexpr Term kVariables[] = {
    {"QMRULES_WORKSPACE", "The workspace, where --workspace is not given."},
    {"LC_ALL, LC_MESSAGES, LANG", "The language of the texts, where --language is not given."},
    {"NO_COLOR", "When set, titles are not printed in bold on a terminal."},
};
constexpr Term kFiles[] = {
    {".qmrules",
     "In the workspace: the catalogue, the models of the programs, the options of the workspace and the attributes of "
     "rules."},
    {"Projects", "In the workspace: the options and the dataflow of each project."},
};

// Commands without groups, in order.
void WalkCommands(const CommandDescription& described, const std::function<void(const CommandDescription&)>& visit) {
  if (!described.examples.empty()) visit(described);
  for (const auto& command : described.commands) WalkCommands(command, visit);
}

bool IsHelp(const ParameterDescription& parameter) {
  return parameter.name == "--help";
}

// How the parameter stands at the head of its explanation.
std::string Heading(const ParameterDescription& parameter) {
  if (!parameter.IsOption()) return parameter.value;
  std::string heading = parameter.shortName.empty() ? parameter.name : parameter.shortName + ", " + parameter.name;
  if (!parameter.value.empty()) heading += " " + parameter.value;
  return heading;
}

// ---- roff

// Text whose characters mean nothing to roff.
std::string Roff(std::string_view text) {
  std::string escaped;
  if (text.starts_with('.') || text.starts_with('\'')) escaped = "\\&";
  for (const char character : text) {
    if (character == '\\') {
      escaped += "\\e";
    } else if (character == '-') {
      escaped += "\\-";
    } else {
      escaped += character;
    }
  }
  return escaped;
}

std::string RoffTerm(std::string_view term, std::string_view meaning) {
  return fmt::format(".TP\n\\fB{}\\fR\n{}\n", Roff(term), Roff(meaning));
}

template <std::size_t Count>
std::string RoffSection(std::string_view title, const Term (&terms)[Count]) {
  std::string section = fmt::format(".SH {}\n", title);
  for (const Term& term : terms) section += RoffTerm(term.term, term.meaning);
  return section;
}

std::string RoffParameters(const CommandDescription& command) {
  std::string text;
  for (const auto& parameter : command.parameters) {
    if (!IsHelp(parameter)) text += RoffTerm(Heading(parameter), parameter.summary + ".");
  }
  return text;
}

std::string RoffCommand(const CommandDescription& command) {
  std::string text = fmt::format(".SS {}\n{}.\n.PP\n.B {}\n", Roff("qmrules " + command.words), Roff(command.summary),
                                 Roff(UsageOf(command)));
  text += RoffParameters(command);
  text += fmt::format(".PP\n{}:\n.PP\n.nf\n", command.examples.size() == 1 ? "Example" : "Examples");
  for (const auto& example : command.examples) text += fmt::format("    {}\n", Roff("qmrules " + example));
  return text + ".fi\n";
}

// ---- Markdown

// Text of a table's cell, in which a backslash would take the meaning from the sign behind it.
std::string Cell(std::string_view text) {
  std::string cell;
  for (const char character : text) {
    if (character == '|' || character == '\\') cell += '\\';
    cell += character;
  }
  return cell;
}

// The same as code, in which a backslash stands for itself but a bar still ends the cell.
std::string CodeCell(std::string_view text) {
  std::string cell = "`";
  for (const char character : text) cell += character == '|' ? "\\|" : std::string(1, character);
  return cell + "`";
}

template <std::size_t Count>
std::string MarkdownSection(std::string_view title, std::string_view column, const Term (&terms)[Count]) {
  std::string section = fmt::format("## {}\n\n| {} | Meaning |\n|---|---|\n", title, column);
  for (const Term& term : terms) section += fmt::format("| {} | {} |\n", CodeCell(term.term), Cell(term.meaning));
  return section + "\n";
}

std::string MarkdownParameters(const CommandDescription& command) {
  std::string rows;
  for (const auto& parameter : command.parameters) {
    if (IsHelp(parameter)) continue;
    rows += fmt::format("| {} | {} |\n", CodeCell(Heading(parameter)), Cell(parameter.summary));
  }
  return rows.empty() ? rows : "| Argument or option | Meaning |\n|---|---|\n" + rows + "\n";
}

std::string MarkdownCommand(const CommandDescription& command) {
  std::string text =
      fmt::format("### qmrules {}\n\n{}.\n\n    {}\n\n", command.words, command.summary, UsageOf(command));
  text += MarkdownParameters(command);
  text += command.examples.size() == 1 ? "Example:\n\n" : "Examples:\n\n";
  for (const auto& example : command.examples) text += fmt::format("    qmrules {}\n", example);
  return text + "\n";
}

}  // namespace

std::string UsageOf(const CommandDescription& command) {
  std::string usage = command.words.empty() ? "qmrules" : "qmrules " + command.words;
  for (const bool wantsOptions : {false, true}) {
    for (const auto& parameter : command.parameters) {
      if (IsHelp(parameter) || parameter.IsOption() != wantsOptions) continue;
      std::string form = parameter.value;
      if (wantsOptions) form = parameter.value.empty() ? parameter.name : parameter.name + " " + parameter.value;
      if (parameter.isRepeated) form += "...";
      usage += parameter.isRequired ? " " + form : " [" + form + "]";
    }
  }
  return usage;
}

std::string ManualPage(const CommandDescription& program) {
  std::string page = fmt::format(".TH QMRULES 1 \"\" \"qmrules {}\" \"User Commands\"\n", QMRULES_VERSION);
  page += fmt::format(".SH NAME\nqmrules \\- {}\n", Roff(program.summary));
  page += ".SH SYNOPSIS\n.B qmrules\n[\\fIOPTION\\fR] \\fICOMMAND\\fR [\\fIARGUMENT\\fR]...\n";
  page += fmt::format(".SH DESCRIPTION\n{}\n", Roff(kAboutTheCommand));
  page += ".SH OPTIONS\n" + RoffParameters(program) + RoffTerm("-h, --help", "Print the help of the command and exit.");
  page += ".SH COMMANDS\n";
  WalkCommands(program, [&page](const CommandDescription& command) { page += RoffCommand(command); });
  page += RoffSection("KEYS AND PATHS", kKeys);
  page += RoffSection("EXIT STATUS", kExitCodes);
  page += RoffSection("ENVIRONMENT", kVariables);
  return page + RoffSection("FILES", kFiles);
}

std::string ManualMarkdown(const CommandDescription& program) {
  std::string text = fmt::format("# The command qmrules\n\n{}\n\n", kAboutTheCommand);
  text += "This page is printed by `qmrules man --markdown`.\n\n";
  text += "## Options of every command\n\n" + MarkdownParameters(program);
  text += MarkdownSection("Keys and paths", "Form", kKeys);
  text += MarkdownSection("Exit codes", "Code", kExitCodes);
  text += MarkdownSection("Environment", "Variable", kVariables);
  text += MarkdownSection("Files", "Name", kFiles);
  text += "## Commands\n\n";
  WalkCommands(program, [&text](const CommandDescription& command) { text += MarkdownCommand(command); });
  text.pop_back();
  return text;
}

}  // namespace qmrules::cli
