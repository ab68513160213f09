#include "cli/completion.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace qmrules::cli {

namespace {

using Visitor = std::function<void(const CommandDescription&)>;

// The program, then each group and command, from above.
void Walk(const CommandDescription& described, const Visitor& visit) {
  visit(described);
  for (const auto& command : described.commands) Walk(command, visit);
}

std::string LastWord(const std::string& words) {
  return words.substr(words.rfind(' ') + 1);
}

std::string ParentWords(const std::string& words) {
  const std::size_t end = words.rfind(' ');
  return end == std::string::npos ? std::string() : words.substr(0, end);
}

// The options of a command and those of every command.
std::vector<ParameterDescription> OptionsOf(const CommandDescription& program, const CommandDescription& command) {
  std::vector<ParameterDescription> options;
  const auto add = [&options](const ParameterDescription& parameter) {
    const bool isThere =
        std::ranges::any_of(options, [&](const auto& option) { return option.name == parameter.name; });
    if (parameter.IsOption() && !isThere) options.push_back(parameter);
  };
  std::ranges::for_each(command.parameters, add);
  for (const auto& parameter : program.parameters) {
    if (parameter.name != "--version") add(parameter);
  }
  if (&program == &command) std::ranges::for_each(program.parameters, add);
  return options;
}

const ParameterDescription* FindArgument(const CommandDescription& command,
                                         const std::function<bool(const ParameterDescription&)>& fits) {
  const auto found = std::ranges::find_if(
      command.parameters, [&](const auto& parameter) { return !parameter.IsOption() && fits(parameter); });
  return found == command.parameters.end() ? nullptr : &*found;
}

bool WantsFile(const ParameterDescription& parameter) {
  return parameter.TakesFile() || parameter.TakesFolder();
}

// The words that may stand next in a command: its commands, its options, and the listed values of its arguments.
std::vector<std::string> WordsOf(const CommandDescription& program, const CommandDescription& command) {
  std::vector<std::string> words;
  for (const auto& child : command.commands) words.push_back(LastWord(child.words));
  for (const auto& parameter : command.parameters) {
    if (!parameter.IsOption()) std::ranges::copy(parameter.choices, std::back_inserter(words));
  }
  for (const auto& option : OptionsOf(program, command)) words.push_back(option.name);
  return words;
}

// The patterns by which a shell's case statement follows the words of a command, as " project" and "project list".
std::string WordPatterns(const CommandDescription& program, char quote, std::string_view separator) {
  std::string patterns;
  Walk(program, [&](const CommandDescription& command) {
    if (command.words.empty()) return;
    patterns += patterns.empty() ? "" : std::string(separator);
    patterns += fmt::format("{0}{1} {2}{0}", quote, ParentWords(command.words), LastWord(command.words));
  });
  return patterns;
}

std::string InSingleQuotes(const std::string& text) {
  std::string quoted = "'";
  for (const char character : text) quoted += character == '\'' ? "'\\''" : std::string(1, character);
  return quoted + "'";
}

// ---- bash

std::string BashValueCases(const CommandDescription& program) {
  std::string cases;
  Walk(program, [&](const CommandDescription& command) {
    for (const auto& option : OptionsOf(program, command)) {
      if (option.value.empty()) continue;
      std::string reply = "return";
      if (!option.choices.empty()) {
        reply = fmt::format("COMPREPLY=($(compgen -W \"{}\" -- \"$current\")); return", fmt::join(option.choices, " "));
      } else if (WantsFile(option)) {
        reply = fmt::format("compopt -o filenames; mapfile -t COMPREPLY < <(compgen -{} -- \"$current\"); return",
                            option.TakesFolder() ? 'd' : 'f');
      }
      cases += fmt::format("    \"{} {}\") {} ;;\n", command.words, option.name, reply);
    }
  });
  return cases;
}

std::string BashCommandCases(const CommandDescription& program) {
  std::string cases;
  Walk(program, [&](const CommandDescription& command) {
    const auto words = WordsOf(program, command);
    std::string reply = fmt::format("COMPREPLY=($(compgen -W \"{}\" -- \"$current\"))", fmt::join(words, " "));
    if (const auto* file = FindArgument(command, WantsFile)) {
      reply += fmt::format(
          "\n      if [[ $current != -* ]]; then\n        compopt -o filenames\n"
          "        mapfile -t COMPREPLY < <(compgen -{} -- \"$current\")\n      fi",
          file->TakesFolder() ? 'd' : 'f');
    }
    cases += fmt::format("    \"{}\")\n      {}\n      ;;\n", command.words, reply);
  });
  return cases;
}

// ---- zsh

std::string ZshChoice(const std::string& word, const std::string& summary) {
  return InSingleQuotes(summary.empty() ? word : word + ":" + summary);
}

std::string ZshChoices(const CommandDescription& program, const CommandDescription& command) {
  std::string choices;
  for (const auto& child : command.commands) choices += " " + ZshChoice(LastWord(child.words), child.summary);
  for (const auto& parameter : command.parameters) {
    if (parameter.IsOption()) continue;
    for (const auto& choice : parameter.choices) choices += " " + ZshChoice(choice, "");
  }
  for (const auto& option : OptionsOf(program, command)) choices += " " + ZshChoice(option.name, option.summary);
  return choices;
}

std::string ZshValueCases(const CommandDescription& program) {
  std::string cases;
  Walk(program, [&](const CommandDescription& command) {
    for (const auto& option : OptionsOf(program, command)) {
      if (option.value.empty()) continue;
      std::string reply = "return";
      if (!option.choices.empty()) reply = fmt::format("compadd {}; return", fmt::join(option.choices, " "));
      if (WantsFile(option)) reply = option.TakesFolder() ? "_files -/; return" : "_files; return";
      cases += fmt::format("    (\"{} {}\") {} ;;\n", command.words, option.name, reply);
    }
  });
  return cases;
}

std::string ZshCommandCases(const CommandDescription& program) {
  std::string cases;
  Walk(program, [&](const CommandDescription& command) {
    const auto* file = FindArgument(command, WantsFile);
    const std::string_view files = file == nullptr ? "" : file->TakesFolder() ? "; _files -/" : "; _files";
    cases +=
        fmt::format("    (\"{}\") choices=({}){} ;;\n", command.words, ZshChoices(program, command).substr(1), files);
  });
  return cases;
}

// ---- fish

std::string FishAt(const CommandDescription& command) {
  return fmt::format("complete -c qmrules -n {}", InSingleQuotes(fmt::format("__qmrules_at \"{}\"", command.words)));
}

std::string FishOption(const CommandDescription& command, const ParameterDescription& option) {
  std::string line = fmt::format("{} -l {}", FishAt(command), option.name.substr(2));
  if (!option.shortName.empty()) line += fmt::format(" -s {}", option.shortName.substr(1));
  if (!option.value.empty()) line += WantsFile(option) ? " -rF" : " -x";
  if (!option.choices.empty()) line += " -a " + InSingleQuotes(fmt::format("{}", fmt::join(option.choices, " ")));
  return fmt::format("{} -d {}\n", line, InSingleQuotes(option.summary));
}

}  // namespace

std::string BashCompletion(const CommandDescription& program) {
  return fmt::format(R"(# bash completion for qmrules, made by "qmrules completion bash"
_qmrules() {{
  local current=${{COMP_WORDS[COMP_CWORD]}} previous=${{COMP_WORDS[COMP_CWORD - 1]}} command="" word i
  COMPREPLY=()
  for ((i = 1; i < COMP_CWORD; i++)); do
    word=${{COMP_WORDS[i]}}
    case "$command $word" in
      {0}) command="${{command:+$command }}$word" ;;
    esac
  done
  case "$command $previous" in
{1}  esac
  case "$command" in
{2}  esac
}}
complete -F _qmrules qmrules
)",
                     WordPatterns(program, '"', " | "), BashValueCases(program), BashCommandCases(program));
}

std::string ZshCompletion(const CommandDescription& program) {
  return fmt::format(R"(#compdef qmrules
# zsh completion for qmrules, made by "qmrules completion zsh"
_qmrules() {{
  local command="" word i
  local -a choices
  for ((i = 2; i < CURRENT; i++)); do
    word=${{words[i]}}
    case "$command $word" in
      ({0}) command="${{command:+$command }}$word" ;;
    esac
  done
  case "$command ${{words[CURRENT - 1]}}" in
{1}  esac
  case "$command" in
{2}  esac
  _describe 'qmrules' choices
}}
if [ "$funcstack[1]" = "_qmrules" ]; then
  _qmrules "$@"
else
  compdef _qmrules qmrules
fi
)",
                     WordPatterns(program, '"', " | "), ZshValueCases(program), ZshCommandCases(program));
}

std::string FishCompletion(const CommandDescription& program) {
  std::string script = fmt::format(R"(# fish completion for qmrules, made by "qmrules completion fish"
function __qmrules_command
    set -l command ''
    for word in (commandline -opc)[2..-1]
        switch "$command $word"
            case {}
                set command (string trim -- "$command $word")
        end
    end
    echo $command
end
function __qmrules_at
    set -l now (__qmrules_command)
    test "$now" = "$argv[1]"
end
complete -c qmrules -f
)",
                                   WordPatterns(program, '\'', " "));
  Walk(program, [&](const CommandDescription& command) {
    for (const auto& child : command.commands) {
      script += fmt::format("{} -a {} -d {}\n", FishAt(command), LastWord(child.words), InSingleQuotes(child.summary));
    }
    for (const auto& parameter : command.parameters) {
      if (parameter.IsOption()) continue;
      if (WantsFile(parameter)) script += FishAt(command) + " -F\n";
      for (const auto& choice : parameter.choices) script += fmt::format("{} -a {}\n", FishAt(command), choice);
    }
    for (const auto& option : OptionsOf(program, command)) script += FishOption(command, option);
  });
  return script;
}

}  // namespace qmrules::cli
