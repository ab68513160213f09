#include <array>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "cli/clifixture.h"
#include "cli/commandlist.h"

namespace qmrules::test {
namespace {

std::vector<std::string> SplitWords(const std::string& words) {
  std::vector<std::string> split;
  std::string word;
  for (const char character : words + " ") {
    if (character == ' ') {
      split.push_back(std::exchange(word, {}));
    } else {
      word += character;
    }
  }
  return split;
}

class HelpTexts : public CliTest {};

TEST_F(HelpTexts, EveryCommandHasAnExampleAndASummary) {
  for (const auto& command : cli::MakeCommands()) {
    const auto title = command->Title();
    auto args = SplitWords(title.words);
    args.emplace_back("--help");
    const std::string help = Do(args);
    EXPECT_NE(help.find("\nExample"), std::string::npos) << title.words;
    EXPECT_TRUE(help.starts_with(title.summary + "\n")) << help;
    EXPECT_NE(help.find("Usage: qmrules " + title.words), std::string::npos) << help;
    for (const auto& example : command->Examples()) EXPECT_TRUE(example.starts_with(title.words)) << example;
  }
}

TEST_F(HelpTexts, HelpOfACommandIsTheSameInBothForms) {
  EXPECT_EQ(Do({"help", "rule", "create"}), Do({"rule", "create", "--help"}));
  EXPECT_EQ(Do({"help", "project"}), Do({"project", "-h"}));
  EXPECT_EQ(Do({"help"}), Do({"--help"}));
}

TEST_F(HelpTexts, HelpOfAnUnknownCommandIsWrongUsage) {
  EXPECT_EQ(Run({"help", "rule", "forget"}),
            (CliRun{2, "", "qmrules: There is no command \"rule forget\".\nSee \"qmrules help --help\".\n"}));
}

TEST_F(HelpTexts, VersionIsPrinted) {
  EXPECT_EQ(Do({"--version"}), "qmrules " QMRULES_VERSION "\n");
}

TEST_F(HelpTexts, AMissingOrUnknownCommandIsWrongUsage) {
  EXPECT_EQ(Run({}), (CliRun{2, "", "qmrules: A command is missing.\nSee \"qmrules --help\".\n"}));
  EXPECT_EQ(Run({"project"}), (CliRun{2, "", "qmrules: A command is missing.\nSee \"qmrules project --help\".\n"}));
  EXPECT_EQ(Run({"remove"}), (CliRun{2, "", "qmrules: There is no command \"remove\".\nSee \"qmrules --help\".\n"}));
  EXPECT_EQ(Run({"project", "remove"}),
            (CliRun{2, "", "qmrules: There is no command \"remove\".\nSee \"qmrules project --help\".\n"}));
  EXPECT_EQ(Run({"--quick"}), (CliRun{2, "", "qmrules: There is no option \"--quick\".\nSee \"qmrules --help\".\n"}));
}

TEST_F(HelpTexts, AnUnknownOptionOrArgumentIsWrongUsage) {
  EXPECT_EQ(
      Run({"list", "--quick"}),
      (CliRun{2, "", "qmrules: The following argument was not expected: --quick\nSee \"qmrules list --help\".\n"}));
  EXPECT_EQ(Run({"list", "more"}),
            (CliRun{2, "", "qmrules: The following argument was not expected: more\nSee \"qmrules list --help\".\n"}));
}

class CompletionScripts : public CliTest {
 protected:
  // What bash offers behind the words, the last of which is being typed.
  std::string Offered(const std::vector<std::string>& words) {
    folder_.Write("completion.bash", Do({"completion", "bash"}));
    std::string line = "cd '" + Root() + "'; source completion.bash; COMP_WORDS=(";
    for (const auto& word : words) line += "'" + word + "' ";
    line += "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); compopt() { :; }; _qmrules; echo \"${COMPREPLY[*]}\"";
    const std::string script = folder_.Write("run.bash", line + "\n");
    std::FILE* const pipe = ::popen(("bash '" + script + "' 2>&1").c_str(), "r");
    std::string offered;
    std::array<char, 256> part{};
    while (std::fgets(part.data(), part.size(), pipe) != nullptr) offered += part.data();
    EXPECT_EQ(::pclose(pipe), 0);
    return offered;
  }
};

TEST_F(CompletionScripts, AreMadeForThreeShells) {
  EXPECT_NE(Do({"completion", "bash"}).find("complete -F _qmrules qmrules\n"), std::string::npos);
  EXPECT_TRUE(Do({"completion", "zsh"}).starts_with("#compdef qmrules\n"));
  EXPECT_NE(Do({"completion", "fish"}).find("complete -c qmrules -f\n"), std::string::npos);
  EXPECT_EQ(Run({"completion", "tcsh"}).code, 2);
}

TEST_F(CompletionScripts, NameEveryCommandAndOption) {
  for (const std::string shell : {"bash", "zsh", "fish"}) {
    const std::string script = Do({"completion", shell});
    for (const auto& command : cli::MakeCommands()) {
      EXPECT_NE(script.find(command->Title().words), std::string::npos) << shell << ": " << command->Title().words;
    }
    EXPECT_NE(script.find(shell == "fish" ? "-l segment" : "--segment"), std::string::npos) << shell;
    EXPECT_EQ(script.find("markdown"), std::string::npos) << shell;
  }
}

TEST_F(CompletionScripts, AreWellFormed) {
  for (const std::string shell : {"bash", "zsh", "fish"}) {
    const std::string path = folder_.Write("script", Do({"completion", shell}));
    EXPECT_EQ(std::system((shell + " -n '" + path + "'").c_str()), 0) << shell;
  }
}

TEST_F(CompletionScripts, BashOffersWhatFits) {
  EXPECT_EQ(Offered({"qmrules", "pro"}), "project\n");
  EXPECT_EQ(Offered({"qmrules", "project", ""}), "list create use --help --workspace --language\n");
  EXPECT_EQ(Offered({"qmrules", "rule", "create", "--se"}), "--segment\n");
  EXPECT_EQ(Offered({"qmrules", "--language", ""}), "en ja ko\n");
  EXPECT_EQ(Offered({"qmrules", "move", "d"}), "down\n");
  EXPECT_EQ(Offered({"qmrules", "completion", "z"}), "zsh\n");
  EXPECT_EQ(Offered({"qmrules", "rule", "create", "--ruleset", ""}), "\n");
  folder_.Write("cobol/a.cbl", "");
  EXPECT_EQ(Offered({"qmrules", "source", "add", "cobol/"}), "cobol/a.cbl\n");
  EXPECT_EQ(Offered({"qmrules", "source", "add", "--workspace", "co"}), "cobol\n");
}

class Manual : public CliTest {};

TEST_F(Manual, IsAManualPage) {
  const std::string page = Do({"man"});
  EXPECT_TRUE(page.starts_with(".TH QMRULES 1 \"\" \"qmrules " QMRULES_VERSION "\" \"User Commands\"\n"));
  for (const auto& command : cli::MakeCommands()) {
    EXPECT_NE(page.find(".SS qmrules " + command->Title().words + "\n"), std::string::npos) << command->Title().words;
  }
}

TEST_F(Manual, IsSetWithoutAWarning) {
  const std::string path = folder_.Write("qmrules.1", Do({"man"}));
  const std::string warnings = folder_.File("warnings");
  EXPECT_EQ(std::system(("groff -man -Tutf8 -wall '" + path + "' > /dev/null 2> '" + warnings + "'").c_str()), 0);
  EXPECT_EQ(ReadBytes(warnings), "");
}

TEST_F(Manual, TheDocumentOfTheProjectIsThePrintedOne) {
  EXPECT_EQ(Do({"man", "--markdown"}), ReadBytes(QMRULES_DOCS "/cli.md"))
      << "docs/cli.md is out of date: write it anew with \"qmrules man --markdown\"";
}

}  // namespace
}  // namespace qmrules::test
