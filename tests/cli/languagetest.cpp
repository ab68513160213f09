#include "cli/clifixture.h"
#include "shell/messages.h"

namespace qmrules::test {
namespace {

class LanguageChoice : public CliTest {
 protected:
  LanguageChoice() { MakeCatalogue(); }
  std::string Refusal(const std::vector<std::string>& options = {}) {
    std::vector<std::string> args{"function", "create", "Billing"};
    args.insert(args.end(), options.begin(), options.end());
    return Run(args).err;
  }
};

// Texts of the string table: 514 and 603.
const char* const kEnglish = "qmrules: Cannot create business function.\nProbably it already exists.\n";

TEST_F(LanguageChoice, IsEnglishWithoutALocale) {
  EXPECT_EQ(Refusal(), kEnglish);
}

TEST_F(LanguageChoice, FollowsTheLocale) {
  for (const char* variable : {"LANG", "LC_MESSAGES", "LC_ALL"}) {
    variables_ = {{variable, "ja_JP.UTF-8"}};
    const auto& table = shell::StringTableFor(shell::Language::Japanese);
    EXPECT_EQ(Refusal(), "qmrules: " + table.Text(514) + "\n" + table.Text(603) + "\n") << variable;
  }
  variables_ = {{"LANG", "de_DE.UTF-8"}};
  EXPECT_EQ(Refusal(), kEnglish);
}

TEST_F(LanguageChoice, TheStrongerVariableGoesFirst) {
  variables_ = {{"LANG", "ja_JP.UTF-8"}, {"LC_ALL", "en_GB.UTF-8"}};
  EXPECT_EQ(Refusal(), kEnglish);
}

TEST_F(LanguageChoice, TheOptionGoesBeforeTheLocale) {
  variables_ = {{"LANG", "ja_JP.UTF-8"}};
  const auto& table = shell::StringTableFor(shell::Language::Korean);
  EXPECT_EQ(Refusal({"--language", "ko"}), "qmrules: " + table.Text(514) + "\n" + table.Text(603) + "\n");
}

TEST_F(LanguageChoice, GoesForTitlesAndLogTexts) {
  const auto& table = shell::StringTableFor(shell::Language::Japanese);
  Do({"--language", "ja", "rule", "create", "New", "--ruleset", "Lapse"});
  const std::string log = Do({"log", "RULE#3", "--language", "ja"});
  EXPECT_NE(log.find(table.Text(186)), std::string::npos);
  EXPECT_NE(log.find(table.Text(600)), std::string::npos);
}

TEST_F(LanguageChoice, RefusesAnotherLanguage) {
  const auto run = Run({"list", "--language", "fr"});
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(run.err, "qmrules: --language: fr not in {en,ja,ko}\nSee \"qmrules list --help\".\n");
}

}  // namespace
}  // namespace qmrules::test
