#include <filesystem>

#include "cli/clifixture.h"

namespace qmrules::test {
namespace {

using nlohmann::json;
namespace fs = std::filesystem;

std::string Program(const std::string& name, const std::string& data = "", const std::string& statements = "") {
  return "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. " + name +
         ".\n       DATA DIVISION.\n       WORKING-STORAGE SECTION.\n" + data +
         "       PROCEDURE DIVISION.\n       MAIN-PART.\n" + statements + "           STOP RUN.\n";
}

class ScanCommand : public CliTest {
 protected:
  ScanCommand() { MakeWorkspace(); }
};

TEST_F(ScanCommand, MakesTheModelsAndRegistersThePrograms) {
  folder_.Write("cobol/a.cbl", Program("FIRST"));
  folder_.Write("cobol/b.cbl", Program("SECOND", "", "           MOVE 1 TO NOWHERE.\n"));
  EXPECT_EQ(Do({"scan"}),
            "Program  File         Lines  Outcome  Gaps  Warnings\n"
            "FIRST    cobol/a.cbl  7      added    0     0\n"
            "SECOND   cobol/b.cbl  8      added    1     0\n"
            "2 programs scanned, 0 unchanged: 1 gap, 0 warnings; see \"qmrules diagnostics\".\n");
  EXPECT_EQ(Do({"source", "list"}),
            "Key      Program  Lines  File\n"
            "COBOL#1  FIRST    7      cobol/a.cbl\n"
            "COBOL#2  SECOND   8      cobol/b.cbl\n");
}

TEST_F(ScanCommand, OnceMoreFindsNothingToDo) {
  folder_.Write("a.cbl", Program("FIRST"));
  Do({"scan"});
  const auto before = Files();
  EXPECT_EQ(Do({"scan"}), "0 programs scanned, 1 unchanged: 0 gaps, 0 warnings.\n");
  EXPECT_EQ(Files(), before);
  EXPECT_EQ(Do({"scan", "--force"}).substr(0, 7), "Program");
}

TEST_F(ScanCommand, TellsAllInJson) {
  folder_.Write("a.cbl", Program("FIRST"));
  EXPECT_EQ(DoJson({"scan", "--jobs", "2"}), json::parse(R"({
    "programs": [{"key":"COBOL#1","name":"FIRST","file":"a.cbl","outcome":"added","lines":7,"gaps":0,"warnings":0}],
    "scanned":1,"unchanged":0,"missing":0,"failed":0,"gaps":0,"warnings":0,"stopped":false})"));
  EXPECT_EQ(DoJson({"scan"})["programs"][0]["outcome"], "unchanged");
}

TEST_F(ScanCommand, ABadFileIsToldAndTheOthersAreTaken) {
  folder_.Write("a.cbl", Program("FIRST"));
  folder_.Write("picture.cbl", std::string("\x89PNG\0\0\0\x0D", 8));
  const auto run = Run({"scan"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, "qmrules: picture.cbl: this is no text file\n");
  EXPECT_EQ(run.out,
            "Program  File         Lines  Outcome  Gaps  Warnings\n"
            "FIRST    a.cbl        7      added    0     0\n"
            "         picture.cbl         failed\n"
            "1 program scanned, 0 unchanged, 1 failed: 0 gaps, 0 warnings.\n");
}

TEST_F(ScanCommand, RemembersTheFoldersOfCopybooks) {
  folder_.Write("cobol/a.cbl", Program("FIRST", "           COPY RECORDS.\n"));
  folder_.Write("one/RECORDS.cpy", "       01  A PIC X.\n");
  folder_.Write("two/RECORDS.cpy", "       01  B PIC X.\n");
  Do({"scan", "cobol", "--copybooks", "two", "one"});
  EXPECT_EQ(DoJson({"xref", "FIRST", "B"})["declarations"][0]["file"], "two/RECORDS.cpy");
  EXPECT_EQ(Do({"scan"}), "0 programs scanned, 1 unchanged: 0 gaps, 0 warnings.\n");
  EXPECT_EQ(DoJson({"scan", "--copybooks", "one"})["scanned"], 1);
  EXPECT_EQ(DoJson({"xref", "FIRST", "A"})["declarations"][0]["file"], "one/RECORDS.cpy");
  // Back to all folders with copybooks, in the order of their paths.
  EXPECT_EQ(DoJson({"scan", "--copybooks", ""})["unchanged"], 1);
}

TEST_F(ScanCommand, TheFolderOfTheOptionIsReadFromTheCurrentFolder) {
  folder_.Write("cobol/a.cbl", Program("FIRST", "           COPY RECORDS.\n"));
  folder_.Write("cobol/copies/RECORDS.cpy", "       01  A PIC X.\n");
  currentFolder_ = folder_.File("cobol");
  EXPECT_EQ(DoJson({"scan", "--copybooks", "copies"})["gaps"], 0);
}

TEST_F(ScanCommand, RefusesAFolderOfCopybooksThatIsNotThereOrOutside) {
  folder_.Write("a.cbl", Program("FIRST"));
  const TemporaryFolder elsewhere;
  const auto before = Files();
  EXPECT_EQ(
      Run({"scan", "--copybooks", "gone"}),
      (CliRun{1, "",
              "qmrules: There is no folder \"" + Root() + "/gone\"; name a folder of copybooks in the workspace.\n"}));
  EXPECT_EQ(Run({"scan", "--copybooks", elsewhere.Path().string()}),
            (CliRun{1, "",
                    "qmrules: \"" + elsewhere.Path().string() + "\" lies outside the workspace " + Root() +
                        "; copy it into the workspace and name it there.\n"}));
  EXPECT_EQ(Files(), before);
}

TEST_F(ScanCommand, ReadsTheSourcesInTheFormatAskedFor) {
  folder_.Write("a.cbl", "IDENTIFICATION DIVISION.\nPROGRAM-ID. FIRST.\nPROCEDURE DIVISION.\nGOBACK.\n");
  EXPECT_EQ(DoJson({"scan", "--format", "free"})["gaps"], 0);
  EXPECT_EQ(DoJson({"scan", "--format", "fixed"})["missing"], 1);
  EXPECT_EQ(DoJson({"scan"})["missing"], 1);
  EXPECT_EQ(DoJson({"scan", "--format", "auto"})["gaps"], 0);
  EXPECT_EQ(Run({"scan", "--format", "card"}).code, 2);
}

TEST_F(ScanCommand, AnOlderProjectGetsTheOptions) {
  folder_.Write("Projects/Demo/ProjectOptions.xml", "<OPTIONS TITLE=\"Project Options\"/>\n");
  folder_.Write("a.cbl", Program("FIRST"));
  EXPECT_EQ(DoJson({"scan"})["scanned"], 1);
  EXPECT_EQ(folder_.Read("Projects/Demo/ProjectOptions.xml"), "<OPTIONS TITLE=\"Project Options\"/>\n");
  EXPECT_EQ(DoJson({"scan", "--format", "wide"})["scanned"], 1);
  EXPECT_NE(folder_.Read("Projects/Demo/ProjectOptions.xml").find("VALUE=\"wide\""), std::string::npos);
}

TEST_F(ScanCommand, RefusesAPathThatIsNotThereAndAWorkspaceWithoutPrograms) {
  EXPECT_EQ(Run({"scan"}),
            (CliRun{1, "", "qmrules: No COBOL program was found; name a file, or a folder with programs.\n"}));
  EXPECT_EQ(Run({"scan", "gone"}).code, 1);
  EXPECT_EQ(Run({"scan", "--jobs", "-1"}).code, 2);
}

TEST_F(ScanCommand, ShowsItsProgressOnATerminalAndWipesIt) {
  folder_.Write("a.cbl", Program("FIRST"));
  errIsTerminal_ = true;
  const auto run = Run({"scan"});
  EXPECT_EQ(run.code, 0);
  EXPECT_TRUE(run.err.starts_with("\r\x1b[KScanning sources:   0 %")) << run.err;
  EXPECT_TRUE(run.err.ends_with("\r\x1b[K")) << run.err;
}

TEST_F(ScanCommand, AnInterruptedScanSaysSoAndGoesOnNextTime) {
  folder_.Write("a.cbl", Program("FIRST"));
  isInterrupted_ = true;
  EXPECT_EQ(Run({"scan"}), (CliRun{1, "0 programs scanned, 0 unchanged: 0 gaps, 0 warnings.\n",
                                   "qmrules: The scan was stopped; run it again to go on.\n"}));
  isInterrupted_ = false;
  EXPECT_EQ(DoJson({"scan"})["scanned"], 1);
}

class DiagnosticsCommand : public CliTest {
 protected:
  DiagnosticsCommand() {
    MakeWorkspace();
    folder_.Write("a.cbl", Program("FIRST", "           COPY BAD.\n"));
    folder_.Write("b.cbl", Program("SECOND", "           COPY BAD.\n", "           MOVE 1 TO NOWHERE.\n"));
    folder_.Write("BAD.cpy", "       01  A PIC X OCCURS.\n");
    Do({"scan"});
  }
};

TEST_F(DiagnosticsCommand, ShowsPlaceSeverityAndText) {
  const std::string second = Do({"diagnostics", "second"});
  EXPECT_NE(second.find("b.cbl:8:22: gap: NOWHERE is not declared.\n"), std::string::npos) << second;
  EXPECT_EQ(Do({"diagnostics", "COBOL#2"}), second);
}

TEST_F(DiagnosticsCommand, TellsOnceWhatIsWrongInACopybook) {
  const std::string all = Do({"diagnostics"});
  const std::size_t found = all.find("BAD.cpy:1:");
  ASSERT_NE(found, std::string::npos) << all;
  EXPECT_EQ(all.find("BAD.cpy:1:", found + 1), std::string::npos) << all;
  std::size_t inCopybook = 0;
  for (const auto& diagnostic : DoJson({"diagnostics"})) inCopybook += diagnostic["file"] == "BAD.cpy" ? 1 : 0;
  EXPECT_EQ(inCopybook, 2U);
}

TEST_F(DiagnosticsCommand, CanBeChosenBySeverity) {
  EXPECT_EQ(Do({"diagnostics", "--severity", "note"}), "");
  for (const auto& diagnostic : DoJson({"diagnostics", "--severity", "gap"})) EXPECT_EQ(diagnostic["severity"], "gap");
  EXPECT_EQ(Run({"diagnostics", "--severity", "bad"}).code, 2);
}

TEST_F(DiagnosticsCommand, OfAProgramThatIsNotScannedSayWhatToDo) {
  folder_.Write("c.cbl", Program("THIRD"));
  Do({"source", "add", "c.cbl"});
  const std::string text = "qmrules: THIRD is not scanned yet; run \"qmrules scan\".\n";
  for (const std::vector<std::string>& args :
       {std::vector<std::string>{"diagnostics", "THIRD"}, {"model", "THIRD"}, {"xref", "THIRD", "A"}}) {
    EXPECT_EQ(Run(args), (CliRun{1, "", text})) << args[0];
  }
  EXPECT_EQ(Run({"diagnostics"}).err, text);
}

TEST_F(DiagnosticsCommand, OfAnUnknownProgramSayWhatToDo) {
  const std::string text =
      "qmrules: There is no program FOURTH in the project; \"qmrules source list\" shows its programs, \"qmrules "
      "scan\" "
      "finds new ones.\n";
  for (const std::vector<std::string>& args :
       {std::vector<std::string>{"diagnostics", "FOURTH"}, {"model", "FOURTH"}, {"xref", "FOURTH", "A"}}) {
    EXPECT_EQ(Run(args), (CliRun{1, "", text})) << args[0];
  }
}

TEST_F(DiagnosticsCommand, ATornModelFileIsToldAndRebuiltByTheNextScan) {
  for (const auto& entry : fs::directory_iterator(folder_.File(".qmrules/models"))) {
    if (entry.path().string().ends_with(".FIRST.qmm")) fs::resize_file(entry.path(), 100);
  }
  EXPECT_EQ(Run({"xref", "FIRST", "A"}).code, 1);
  const auto all = Run({"diagnostics"});
  EXPECT_EQ(all.code, 0);
  EXPECT_NE(all.err.find(".FIRST.qmm"), std::string::npos) << all.err;
  EXPECT_EQ(DoJson({"scan"})["scanned"], 1);
  EXPECT_EQ(Run({"diagnostics"}).err, "");
}

}  // namespace
}  // namespace qmrules::test
