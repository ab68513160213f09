#include <CLI/App.hpp>

#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/commandtree.h"
#include "cli/completion.h"
#include "cli/manual.h"

namespace qmrules::cli {

namespace {

class CompletionCommand final : public Command {
 public:
  CommandTitle Title() const override {
    return {"completion", "Print a script that completes command lines in a shell"};
  }
  std::vector<std::string> Examples() const override {
    return {"completion bash > ~/.local/share/bash-completion/completions/qmrules"};
  }
  void Declare(CLI::App& app) override {
    app.add_option("SHELL", shell_, "The shell")
        ->check(CLI::IsMember({"bash", "zsh", "fish"}))
        ->option_text("bash|zsh|fish REQUIRED")
        ->required();
  }
  int Run(Context& context) override {
    const auto program = context.tree.Describe();
    context.environment.out << (shell_ == "bash"  ? BashCompletion(program)
                                : shell_ == "zsh" ? ZshCompletion(program)
                                                  : FishCompletion(program));
    return kDone;
  }

 private:
  std::string shell_;
};

class ManCommand final : public Command {
 public:
  CommandTitle Title() const override { return {"man", "Print the manual page"}; }
  std::vector<std::string> Examples() const override {
    return {"man > ~/.local/share/man/man1/qmrules.1", "man | man -l -"};
  }
  void Declare(CLI::App& app) override {
    // For the documentation of the project; left out of the help.
    app.add_flag("--markdown", markdown_, "Print it as Markdown")->group("");
  }
  int Run(Context& context) override {
    const auto program = context.tree.Describe();
    context.environment.out << (markdown_ ? ManualMarkdown(program) : ManualPage(program));
    return kDone;
  }

 private:
  bool markdown_ = false;
};

class HelpCommand final : public Command {
 public:
  CommandTitle Title() const override { return {"help", "Print the help of a command"}; }
  std::vector<std::string> Examples() const override { return {"help", "help rule create"}; }
  void Declare(CLI::App& app) override {
    app.add_option("COMMAND", words_, "The command; the program itself when none is named")->type_name("");
  }
  int Run(Context& context) override {
    context.environment.out << context.tree.HelpOf(words_);
    return kDone;
  }

 private:
  std::vector<std::string> words_;
};

}  // namespace

std::unique_ptr<Command> MakeCompletionCommand() {
  return std::make_unique<CompletionCommand>();
}

std::unique_ptr<Command> MakeManCommand() {
  return std::make_unique<ManCommand>();
}

std::unique_ptr<Command> MakeHelpCommand() {
  return std::make_unique<HelpCommand>();
}

}  // namespace qmrules::cli
