#include "cli/clifixture.h"

namespace qmrules::test {

using nlohmann::json;

namespace {

std::string ProgramOfDisplays(const std::string& name, int statements = 0) {
  std::string text = "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. " + name + ".\n       PROCEDURE DIVISION.\n";
  for (int at = 0; at < statements; ++at) text += "           DISPLAY 'LINE'.\n";
  return text + "           STOP RUN.\n";
}

class SourceCommands : public CliTest {
 protected:
  SourceCommands() { MakeWorkspace(); }
};

TEST_F(SourceCommands, AddRegistersTheProgramsOfAFolder) {
  folder_.Write("cobol/a.cbl", ProgramOfDisplays("FIRST"));
  folder_.Write("cobol/deep/b.cob", ProgramOfDisplays("SECOND", 2));
  folder_.Write("cobol/copy.cbl", "       01  RECORD.\n");
  EXPECT_EQ(Do({"source", "add", "cobol"}),
            "Program  File              Lines  Outcome\n"
            "FIRST    cobol/a.cbl       4      added\n"
            "SECOND   cobol/deep/b.cob  6      added\n");
  EXPECT_EQ(Do({"source", "list"}),
            "Key      Program  Lines  File\n"
            "COBOL#1  FIRST    4      cobol/a.cbl\n"
            "COBOL#2  SECOND   6      cobol/deep/b.cob\n");
}

TEST_F(SourceCommands, AddTwiceChangesNothing) {
  folder_.Write("a.cbl", ProgramOfDisplays("FIRST"));
  Do({"source", "add", "a.cbl"});
  EXPECT_EQ(DoJson({"source", "add", "a.cbl"}),
            json::parse(R"([{"key":"COBOL#1","name":"FIRST","file":"a.cbl","lines":4,"outcome":"unchanged"}])"));
  folder_.Write("a.cbl", ProgramOfDisplays("FIRST", 3));
  EXPECT_EQ(DoJson({"source", "add", "a.cbl"})[0]["outcome"], "updated");
  EXPECT_EQ(DoJson({"source", "list"}),
            json::parse(R"([{"key":"COBOL#1","name":"FIRST","language":"COBOL","file":"a.cbl","lines":7}])"));
}

TEST_F(SourceCommands, ListOfNothingIsEmpty) {
  EXPECT_EQ(Do({"source", "list"}), "");
  EXPECT_EQ(DoJson({"source", "list"}), json::array());
}

TEST_F(SourceCommands, ListShowsTheCurrentProjectOnly) {
  folder_.Write("a.cbl", ProgramOfDisplays("FIRST"));
  Do({"source", "add", "a.cbl"});
  Do({"project", "create", "Other"});
  EXPECT_EQ(Do({"source", "list"}), "");
}

TEST_F(SourceCommands, AddReadsPathsFromTheCurrentFolder) {
  folder_.Write("cobol/a.cbl", ProgramOfDisplays("FIRST"));
  currentFolder_ = folder_.File("cobol");
  EXPECT_EQ(DoJson({"source", "add", "a.cbl"})[0]["file"], "cobol/a.cbl");
}

TEST_F(SourceCommands, AddRefusesASecondFileOfTheSameProgramAndRegistersNothing) {
  folder_.Write("old/a.cbl", ProgramOfDisplays("FIRST"));
  folder_.Write("one/z.cbl", ProgramOfDisplays("FIRST"));
  folder_.Write("one/b.cbl", ProgramOfDisplays("SECOND"));
  Do({"source", "add", "old"});
  EXPECT_EQ(
      Run({"source", "add", "one"}),
      (CliRun{1, "",
              "qmrules: The program FIRST of one/z.cbl is known already from old/a.cbl; register it under another "
              "name with --as NAME.\n"}));
  EXPECT_EQ(DoJson({"source", "list"}).size(), 1U);
  EXPECT_EQ(DoJson({"source", "add", "one/z.cbl", "--as", "first-new"})[0]["name"], "FIRST-NEW");
}

TEST_F(SourceCommands, AsNamesOneProgramOnly) {
  folder_.Write("a.cbl", ProgramOfDisplays("FIRST"));
  folder_.Write("b.cbl", ProgramOfDisplays("SECOND"));
  EXPECT_EQ(Run({"source", "add", "a.cbl", "b.cbl", "--as", "THIRD"}),
            (CliRun{1, "", "qmrules: --as names one program, and 2 were found; name the one file that it is for.\n"}));
  EXPECT_EQ(DoJson({"source", "list"}), json::array());
}

TEST_F(SourceCommands, AddRefusesABinaryFileAndRegistersNothing) {
  folder_.Write("cobol/a.cbl", ProgramOfDisplays("FIRST"));
  folder_.Write("cobol/picture.cbl", std::string("\x89PNG\0\0\0\x0D", 8));
  const auto before = Files();
  EXPECT_EQ(
      Run({"source", "add", "cobol"}),
      (CliRun{1, "",
              "qmrules: cobol/picture.cbl: this is no text file\nNothing was registered; --skip leaves such files "
              "out and takes the others.\n"}));
  EXPECT_EQ(Files(), before);
}

TEST_F(SourceCommands, SkipTakesTheOtherFilesAndTellsOfTheProblems) {
  folder_.Write("cobol/a.cbl", ProgramOfDisplays("FIRST"));
  folder_.Write("cobol/picture.cbl", std::string("\x89PNG\0\0\0\x0D", 8));
  const auto run = Run({"source", "add", "cobol", "--skip", "--json"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "qmrules: cobol/picture.cbl: this is no text file\n");
  EXPECT_EQ(json::parse(run.out)[0]["name"], "FIRST");
}

TEST_F(SourceCommands, AddRefusesAFileOutsideTheWorkspace) {
  const TemporaryFolder elsewhere;
  const std::string path = elsewhere.Write("a.cbl", ProgramOfDisplays("FIRST"));
  EXPECT_EQ(Run({"source", "add", path}), (CliRun{1, "",
                                                  "qmrules: \"" + path + "\" lies outside the workspace " + Root() +
                                                      "; copy it into the workspace and name it there.\n"}));
}

TEST_F(SourceCommands, AddRefusesAFolderWithoutPrograms) {
  folder_.Write("empty/readme.txt", "none");
  EXPECT_EQ(Run({"source", "add", "empty"}),
            (CliRun{1, "", "qmrules: No COBOL program was found; name a file, or a folder with programs.\n"}));
}

TEST_F(SourceCommands, AddNeedsAPath) {
  EXPECT_EQ(Run({"source", "add"}), (CliRun{2, "", "qmrules: PATH is required\nSee \"qmrules source add --help\".\n"}));
}

}  // namespace
}  // namespace qmrules::test
