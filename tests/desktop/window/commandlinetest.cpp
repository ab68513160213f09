#include "desktop/window/commandline.h"

#include <gtest/gtest.h>

namespace qmrules::desktop {
namespace {

TEST(DesktopCommandLine, NamesNothingByItself) {
  const auto line = ParseCommandLine({});
  EXPECT_EQ(line.folder, "");
  EXPECT_FALSE(line.language);
  EXPECT_FALSE(line.answer);
}

TEST(DesktopCommandLine, TakesAFolderAndALanguage) {
  for (const auto& words : std::vector<std::vector<std::string>>{
           {"--language", "ko", "sources"}, {"sources", "--language=ko"}, {"--language=ko", "--", "sources"}}) {
    const auto line = ParseCommandLine(words);
    EXPECT_EQ(line.folder, "sources");
    EXPECT_EQ(line.language, shell::Language::Korean);
    EXPECT_FALSE(line.answer);
  }
  EXPECT_EQ(ParseCommandLine({"--", "-folder"}).folder, "-folder");
}

TEST(DesktopCommandLine, AnswersHelpAndVersionOnTheOutput) {
  const auto help = ParseCommandLine({"folder", "--help"});
  ASSERT_TRUE(help.answer);
  EXPECT_EQ(help.answer->code, 0);
  EXPECT_NE(help.answer->text.find("Usage: qmrules-workbench [OPTIONS] [FOLDER]\n"), std::string::npos);
  const auto version = ParseCommandLine({"--version"});
  ASSERT_TRUE(version.answer);
  EXPECT_EQ(version.answer->code, 0);
  EXPECT_TRUE(version.answer->text.starts_with("qmrules-workbench ")) << version.answer->text;
}

TEST(DesktopCommandLine, TellsWhatIsWrong) {
  const auto refusal = [](const std::vector<std::string>& words) {
    const auto line = ParseCommandLine(words);
    EXPECT_EQ(line.answer ? line.answer->code : 0, 2);
    return line.answer ? line.answer->text : std::string();
  };
  const std::string hint = "\nSee \"qmrules-workbench --help\".\n";
  EXPECT_EQ(refusal({"--colour"}), "qmrules-workbench: There is no option --colour." + hint);
  EXPECT_EQ(refusal({"one", "two"}), "qmrules-workbench: There is one FOLDER too many: two." + hint);
  EXPECT_EQ(refusal({"--language"}), "qmrules-workbench: --language wants en, ja or ko." + hint);
  EXPECT_EQ(refusal({"--language", "fr"}), "qmrules-workbench: --language wants en, ja or ko, not fr." + hint);
}

}  // namespace
}  // namespace qmrules::desktop
