#include "workbench/scan/scanner.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "platform/recordingprogress.h"
#include "support/errortext.h"
#include "support/teststore.h"
#include "workbench/codemodel/modelfile.h"
#include "workbench/scan/modelfilename.h"
#include "workbench/scan/plainfrontend.h"
#include "workbench/sources/sourceregistration.h"

namespace qmrules::workbench {
namespace {

namespace fs = std::filesystem;
using test::PlainFrontEnd;
using test::PlainLog;
using test::PlainSources;

std::string_view NameOf(ScannedModel::Outcome outcome) {
  constexpr std::string_view names[] = {"added", "updated", "unchanged", "missing", "failed"};
  return names[static_cast<std::size_t>(outcome)];
}

// "NAME file outcome" for each program, with what is wrong with it.
std::string Told(const ScanReport& report) {
  std::string text;
  for (const auto& program : report.programs) {
    text += fmt::format("{} {} {}", program.name, program.file, NameOf(program.outcome));
    if (program.gaps + program.warnings > 0) text += fmt::format(" {}/{}", program.gaps, program.warnings);
    if (!program.problem.empty()) text += ": " + program.problem;
    text += '\n';
  }
  for (const auto& problem : report.problems) text += fmt::format("{}: {}\n", problem.file, problem.text);
  if (report.cancelled) text += "cancelled\n";
  return text;
}

class ScannerTest : public testing::Test {
 protected:
  void Source(const std::string& file, const std::string& text) { store_.Folder().Write(file, text); }
  void RemoveSource(const std::string& file) { fs::remove(store_.Folder().File(file)); }

  struct Settings {
    std::vector<std::string> paths = {};
    std::string options = "plain 1";
    int jobs = 1;
    bool force = false;
    std::vector<std::string> copybookFolders = {"first", "second"};
  };
  ScanReport Scan(const Settings& settings) {
    PlainSources sources(Root(), settings.copybookFolders);
    log_.translated.clear();
    ScanRequest request{
        .root = Root(),
        .paths = {},
        .sources = sources,
        .makeFrontEnd =
            [this](codemodel::SourceProvider& provider) { return std::make_unique<PlainFrontEnd>(provider, log_); },
        .options = settings.options,
        .jobs = settings.jobs,
        .force = settings.force};
    for (const auto& path : settings.paths) request.paths.push_back(store_.Folder().File(path));
    auto report = ScanPrograms(request, store_.Repository(), store_.ProjectKey(), progress_);
    hashes_ = sources.Hashes();
    std::ranges::sort(log_.translated);
    return report;
  }
  ScanReport Scan() { return Scan(Settings()); }

  std::string Root() { return fs::canonical(store_.Folder().Path()).string(); }
  std::string Get(const std::string& key, const std::string& attribute) { return store_.Get(key, attribute).Text(); }
  // "Quillmark DataView DataRelations DataDepends SourceLinesNum"; the model file must be one if it is named.
  std::string DataOf(const std::string& key) {
    const std::string file = Get(key, "Quillmark");
    if (!file.empty()) codemodel::ModelImage::Open(store_.Folder().File(file));
    return fmt::format("{} {} {} {} {}", file.empty() ? "none" : "model", Get(key, "DataView"),
                       Get(key, "DataRelations"), Get(key, "DataDepends"), Get(key, "SourceLinesNum"));
  }
  std::vector<std::string> ModelFiles() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(store_.Folder().File(std::string(kModelFolder)))) {
      names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
  }
  std::string ModelFile(const std::string& source, const std::string& program) {
    return store_.Folder().File(fmt::format("{}/{}", kModelFolder, ModelFileName(source, program)));
  }
  using Names = std::vector<std::string>;

  test::TestStore store_;
  platform::RecordingProgress progress_;
  PlainLog log_;
  std::map<std::string, int> hashes_;
};

TEST_F(ScannerTest, EveryProgramGetsItsModelAndItsObjects) {
  Source("cobol/a.cbl", "PROGRAM A\nGAP\nWARNING\nWARNING\n");
  Source("cobol/deep/b.cob", "PROGRAM B\n");
  Source("cobol/none.cbl", "only a copybook\n");
  EXPECT_EQ(Told(Scan()), "A cobol/a.cbl added 1/2\nB cobol/deep/b.cob added\n");
  EXPECT_EQ(DataOf("COBOL#1"), "model true true true 4");
  EXPECT_EQ(DataOf("COBOL#2"), "model true true true 1");
  EXPECT_EQ(Get("COBOL#1", "Quillmark"), ".qmrules/models/" + ModelFileName("cobol/a.cbl", "A"));
  EXPECT_EQ(Get("PROGRAM#1", "Name"), "A");
  EXPECT_TRUE(store_.Repository().object("COBOL#1")->BelongsToProject(store_.ProjectKey()));
  EXPECT_TRUE(store_.Repository().object("PROGRAM#2")->BelongsToProject(store_.ProjectKey()));
}

TEST_F(ScannerTest, NothingIsDoneTwice) {
  Source("a.cbl", "PROGRAM A\nCOPY C\nGAP\n");
  Source("b.cbl", "PROGRAM B\nCOPY C\n");
  Source("none.cbl", "only a copybook\n");
  Source("first/C.cpy", "data\n");
  Scan();
  const auto store = [&] { return test::ReadBytes(store_.StorePath()) + test::ReadBytes(store_.StorePath() + "-wal"); };
  const auto before = store();
  EXPECT_EQ(Told(Scan()), "A a.cbl unchanged 1/0\nB b.cbl unchanged\n");
  EXPECT_EQ(log_.translated, Names{});
  EXPECT_EQ(store(), before);
  const std::map<std::string, int> once{{"a.cbl", 1}, {"b.cbl", 1}, {"first/C.cpy", 1}, {"none.cbl", 1}};
  EXPECT_EQ(hashes_, once);
}

TEST_F(ScannerTest, AChangedSourceIsTranslatedAnew) {
  Source("a.cbl", "PROGRAM A\n");
  Source("b.cbl", "PROGRAM B\n");
  Scan();
  Source("a.cbl", "PROGRAM A\nGAP\n");
  EXPECT_EQ(Told(Scan()), "A a.cbl updated 1/0\nB b.cbl unchanged\n");
  EXPECT_EQ(log_.translated, Names{"a.cbl"});
  EXPECT_EQ(DataOf("COBOL#1"), "model true true true 2");
}

TEST_F(ScannerTest, AChangedCopybookConcernsThePrograms) {
  Source("a.cbl", "PROGRAM A\nCOPY C\n");
  Source("b.cbl", "PROGRAM B\n");
  Source("second/C.cpy", "data\n");
  Scan();
  Source("second/C.cpy", "other data\n");
  EXPECT_EQ(Told(Scan()), "A a.cbl updated\nB b.cbl unchanged\n");
}

TEST_F(ScannerTest, ACopybookThatAppearsInAnEarlierFolderConcernsThePrograms) {
  Source("a.cbl", "PROGRAM A\nCOPY C\n");
  Source("second/C.cpy", "data\n");
  Scan();
  Source("first/C.cpy", "data\n");
  EXPECT_EQ(Told(Scan()), "A a.cbl updated\n");
  EXPECT_EQ(Told(Scan()), "A a.cbl unchanged\n");
  Settings other;
  other.copybookFolders = {"second"};
  EXPECT_EQ(Told(Scan(other)), "A a.cbl updated\n");
}

TEST_F(ScannerTest, AMissingCopybookThatAppearsConcernsThePrograms) {
  Source("a.cbl", "PROGRAM A\nCOPY C\n");
  Scan();
  EXPECT_EQ(Told(Scan()), "A a.cbl unchanged\n");
  Source("second/C.cpy", "data\n");
  EXPECT_EQ(Told(Scan()), "A a.cbl updated\n");
  RemoveSource("second/C.cpy");
  EXPECT_EQ(Told(Scan()), "A a.cbl updated\n");
}

TEST_F(ScannerTest, OtherOptionsAndForceMakeEveryModelAnew) {
  Source("a.cbl", "PROGRAM A\n");
  Scan();
  Settings other;
  other.options = "plain 2";
  EXPECT_EQ(Told(Scan(other)), "A a.cbl updated\n");
  EXPECT_EQ(Told(Scan(other)), "A a.cbl unchanged\n");
  other.force = true;
  EXPECT_EQ(Told(Scan(other)), "A a.cbl updated\n");
}

TEST_F(ScannerTest, ATornForeignOrMissingModelFileIsReplaced) {
  Source("a.cbl", "PROGRAM A\nWARNING\n");
  Scan();
  const std::string file = ModelFile("a.cbl", "A");
  const std::string whole = test::ReadBytes(file);
  for (const std::string& bytes : {whole.substr(0, whole.size() - 1), std::string("no model"), std::string()}) {
    store_.Folder().Write(fmt::format("{}/{}", kModelFolder, ModelFileName("a.cbl", "A")), bytes);
    EXPECT_EQ(Told(Scan()), "A a.cbl updated 0/1\n");
    EXPECT_EQ(test::ReadBytes(file), whole);
  }
  fs::remove(file);
  EXPECT_EQ(Told(Scan()), "A a.cbl updated 0/1\n");
  EXPECT_EQ(test::ReadBytes(file), whole);
}

TEST_F(ScannerTest, ARenamedProgramKeepsItsObjectAndLosesItsOldModelFile) {
  Source("a.cbl", "PROGRAM A\n");
  Scan();
  Source("a.cbl", "PROGRAM NEW\n");
  EXPECT_EQ(Told(Scan()), "A a.cbl updated\n");
  EXPECT_EQ(ModelFiles(), Names{ModelFileName("a.cbl", "NEW")});
  EXPECT_EQ(DataOf("COBOL#1"), "model true true true 1");
  EXPECT_EQ(Told(Scan()), "A a.cbl unchanged\n");
}

TEST_F(ScannerTest, ProgramsOneAfterTheOtherEachHaveAModel) {
  Source("a.cbl", "PROGRAM A\nPROGRAM B\nGAP\n");
  EXPECT_EQ(Told(Scan()), "A a.cbl added\nB a.cbl added 1/0\n");
  EXPECT_EQ(Told(Scan()), "A a.cbl unchanged\nB a.cbl unchanged 1/0\n");
  Source("a.cbl", "PROGRAM B\n");
  EXPECT_EQ(Told(Scan()), "B a.cbl updated\nA a.cbl missing\n");
  EXPECT_EQ(ModelFiles(), Names{ModelFileName("a.cbl", "B")});
  EXPECT_EQ(DataOf("COBOL#1"), "none false false false 3");
  EXPECT_EQ(Told(Scan()), "A a.cbl missing\nB a.cbl unchanged\n");
}

TEST_F(ScannerTest, ASecondProgramOfOneNameIsAGapOfTheFirst) {
  Source("a.cbl", "PROGRAM A\nPROGRAM B\nPROGRAM A\n");
  EXPECT_EQ(Told(Scan()), "A a.cbl added 1/0\nB a.cbl added\n");
  const auto image = codemodel::ModelImage::Open(ModelFile("a.cbl", "A"));
  EXPECT_EQ(image->ListDiagnostics().at(0).text,
            "Another program A of the same file is left out; give it another PROGRAM-ID.");
}

TEST_F(ScannerTest, AProgramWithoutANameIsCalledAfterItsFile) {
  Source("cobol/noname.cbl", "PROGRAM\n");
  EXPECT_EQ(Told(Scan()), "NONAME cobol/noname.cbl added\n");
  EXPECT_EQ(Told(Scan()), "NONAME cobol/noname.cbl unchanged\n");
}

TEST_F(ScannerTest, ASourceThatIsGoneKeepsItsObjectAndLosesItsModel) {
  Source("a.cbl", "PROGRAM A\n");
  Source("b.cbl", "PROGRAM B\n");
  Scan();
  RemoveSource("a.cbl");
  EXPECT_EQ(Told(Scan()), "A a.cbl missing\nB b.cbl unchanged\n");
  EXPECT_EQ(DataOf("COBOL#1"), "none false false false 1");
  EXPECT_EQ(ModelFiles(), Names{ModelFileName("b.cbl", "B")});
  Source("a.cbl", "PROGRAM A\n");
  EXPECT_EQ(Told(Scan()), "A a.cbl updated\nB b.cbl unchanged\n");
  EXPECT_EQ(DataOf("COBOL#1"), "model true true true 1");
}

TEST_F(ScannerTest, ASourceThatHoldsNoProgramAnyMoreLosesItsModel) {
  Source("a.cbl", "PROGRAM A\n");
  Scan();
  Source("a.cbl", "nothing\n");
  EXPECT_EQ(Told(Scan()), "A a.cbl missing\n");
  EXPECT_EQ(DataOf("COBOL#1"), "none false false false 1");
  EXPECT_EQ(Told(Scan()), "A a.cbl missing\n");
  EXPECT_EQ(log_.translated, Names{});
}

TEST_F(ScannerTest, ABadSourceAmongGoodOnesIsTold) {
  Source("a.cbl", "PROGRAM A\n");
  Source("b.cbl", "PROGRAM B\n");
  Source("c.cbl", "PROGRAM C\n");
  Scan();
  Source("a.cbl", "PROGRAM A\nGAP\n");
  Source("b.cbl", "THROW\n");
  Source("c.cbl", "PROGRAM C\nGAP\n");
  Source("new.cbl", "THROW\n");
  EXPECT_EQ(Told(Scan()),
            "A a.cbl updated 1/0\nB b.cbl failed: the front end is broken\nC c.cbl updated 1/0\n"
            " new.cbl failed: the front end is broken\n");
  EXPECT_EQ(DataOf("COBOL#2"), "none false false false 1");
  EXPECT_FALSE(fs::exists(ModelFile("b.cbl", "B")));
  EXPECT_GE(log_.frontEnds, 3);  // one that has thrown is not used again
}

TEST_F(ScannerTest, ANameThatAnotherFileHasIsToldEachTime) {
  Source("a.cbl", "PROGRAM SAME\n");
  Source("b.cbl", "PROGRAM SAME\n");
  const std::string refused =
      "SAME b.cbl failed: The program SAME of b.cbl is known already from a.cbl; register it under another name with "
      "--as NAME.\n";
  EXPECT_EQ(Told(Scan()), "SAME a.cbl added\n" + refused);
  EXPECT_EQ(Told(Scan()), "SAME a.cbl unchanged\n" + refused);
  EXPECT_EQ(log_.translated, Names{});
  ScannedProgram program;
  program.programId = "SAME";
  program.file = "b.cbl";
  program.lines = 1;
  RegisterSource(store_.Repository(), store_.ProjectKey(), program, "OTHER");
  EXPECT_EQ(Told(Scan()), "SAME a.cbl unchanged\nOTHER b.cbl updated\n");
  EXPECT_EQ(DataOf("COBOL#2"), "model true true true 1");
  EXPECT_EQ(Told(Scan()), "SAME a.cbl unchanged\nOTHER b.cbl unchanged\n");
}

TEST_F(ScannerTest, TheCatalogueIsBroughtIntoLineWithAModelThatIsThere) {
  Source("a.cbl", "PROGRAM A\n");
  Scan();
  store_.Put("COBOL#1", "DataDepends", false);
  EXPECT_EQ(Told(Scan()), "A a.cbl updated\n");
  EXPECT_EQ(log_.translated, Names{});
  EXPECT_EQ(DataOf("COBOL#1"), "model true true true 1");
  store_.Put("COBOL#1", "SourceLinesNum", 7);
  EXPECT_EQ(Told(Scan()), "A a.cbl updated\n");
  store_.Repository().object("COBOL#1")->Delete();
  EXPECT_EQ(Told(Scan()), "A a.cbl added\n");
  EXPECT_EQ(log_.translated, Names{});
}

TEST_F(ScannerTest, PathsChooseWhatIsScanned) {
  Source("one/a.cbl", "PROGRAM A\n");
  Source("two/b.cbl", "PROGRAM B\n");
  Source("two/c.txt", "PROGRAM C\n");
  Source("two/d.txt", "nothing\n");
  Settings settings;
  settings.paths = {"two", "two/c.txt", "two/d.txt"};
  EXPECT_EQ(Told(Scan(settings)),
            "B two/b.cbl added\nC two/c.txt added\n"
            "two/d.txt: the file holds no program; a copybook is read with the programs that copy it\n");
  // A known source is scanned whatever its suffix; what was not asked for is left alone.
  RemoveSource("two/b.cbl");
  settings.paths = {"one"};
  EXPECT_EQ(Told(Scan(settings)), "A one/a.cbl added\n");
  EXPECT_EQ(ModelFiles().size(), 4U);
  EXPECT_EQ(Told(Scan()), "A one/a.cbl unchanged\nB two/b.cbl missing\nC two/c.txt unchanged\n");
  EXPECT_EQ(ModelFiles().size(), 2U);
}

TEST_F(ScannerTest, APathThatIsNotThereEndsTheScanBeforeItBegins) {
  Source("a.cbl", "PROGRAM A\n");
  Settings settings;
  settings.paths = {"a.cbl", "gone"};
  EXPECT_EQ(test::ErrorText([&] { Scan(settings); }),
            "The source \"" + store_.Folder().File("gone") + "\" cannot be read: No such file or directory.");
  EXPECT_EQ(store_.Repository().CountObjects("COBOL", {}), 0);
}

TEST_F(ScannerTest, ModelsOfAnotherProjectStay) {
  Source("a.txt", "PROGRAM A\n");
  Settings settings;
  settings.paths = {"a.txt"};
  Scan(settings);
  auto object = store_.Repository().object("COBOL#1");
  object->UnLink("BelongsTo", store_.ProjectKey());
  object->Link("BelongsTo", store_.OtherProjectKey());
  EXPECT_EQ(Told(Scan()), "");
  EXPECT_EQ(ModelFiles(), Names{ModelFileName("a.txt", "A")});
  store_.Repository().object("COBOL#1")->Delete();
  EXPECT_EQ(Told(Scan()), "");
  EXPECT_EQ(ModelFiles(), Names{});
}

TEST_F(ScannerTest, SeveralThreadsGiveTheSameAsOne) {
  for (int at = 0; at < 40; ++at) {
    Source(fmt::format("p{:02}.cbl", at), fmt::format("PROGRAM P{}\nCOPY C\n{}", at, at % 3 == 0 ? "GAP\n" : ""));
  }
  Source("first/C.cpy", "data\n");
  const std::string told = Told(Scan());
  std::map<std::string, std::string> models;
  for (const auto& name : ModelFiles()) models[name] = store_.Folder().Read(fmt::format("{}/{}", kModelFolder, name));
  test::TestStore other;
  for (int at = 0; at < 40; ++at) {
    const std::string file = fmt::format("p{:02}.cbl", at);
    other.Folder().Write(file, store_.Folder().Read(file));
  }
  other.Folder().Write("first/C.cpy", "data\n");
  PlainSources sources(other.Folder().Path().string());
  const ScanRequest request{
      .root = fs::canonical(other.Folder().Path()).string(),
      .paths = {},
      .sources = sources,
      .makeFrontEnd =
          [this](codemodel::SourceProvider& provider) { return std::make_unique<PlainFrontEnd>(provider, log_); },
      .options = "plain 1",
      .jobs = 4};
  EXPECT_EQ(Told(ScanPrograms(request, other.Repository(), other.ProjectKey(), progress_)), told);
  for (const auto& [name, bytes] : models) {
    EXPECT_EQ(other.Folder().Read(fmt::format("{}/{}", kModelFolder, name)), bytes) << name;
  }
  for (int at = 1; at <= 40; ++at) {
    const std::string key = fmt::format("COBOL#{}", at);
    EXPECT_EQ(other.Get(key, "Name"), store_.Get(key, "Name"));
  }
}

TEST_F(ScannerTest, TheProgressTellsOfEveryFile) {
  Source("a.cbl", "PROGRAM A\n");
  Scan();
  Source("b.cbl", "PROGRAM B\n");
  progress_ = platform::RecordingProgress();
  Scan();
  using Call = platform::RecordingProgress::Call;
  const std::vector<platform::RecordingProgress::Entry> expected{
      {Call::StartProgress, "Scanning sources", 2, true},
      {Call::StartStep, "1 unchanged", 0, false},
      {Call::FinishStep, "", 1, false},
      {Call::StartStep, "b.cbl", 0, false},
      {Call::FinishStep, "", 1, false},
      {Call::FinishProgress, "", 0, false},
      {Call::StartProgress, "Updating the catalogue", 1, false},
      {Call::StartStep, "b.cbl", 0, false},
      {Call::FinishStep, "", 1, false},
      {Call::FinishProgress, "", 0, false}};
  EXPECT_EQ(progress_.Entries(), expected);
}

TEST_F(ScannerTest, AScanThatWritesNothingShowsNoUpdate) {
  Source("a.cbl", "PROGRAM A\n");
  Scan();
  progress_ = platform::RecordingProgress();
  Scan();
  for (const auto& entry : progress_.Entries()) EXPECT_NE(entry.text, "Updating the catalogue");
}

TEST_F(ScannerTest, ACancelledScanKeepsWhatIsDone) {
  for (int at = 0; at < 6; ++at) Source(fmt::format("p{}.cbl", at), fmt::format("PROGRAM P{}\n", at));
  log_.waitsAt = "p2.cbl";
  progress_.CancelAfterSteps(2);
  EXPECT_EQ(Told(Scan()), "P0 p0.cbl added\nP1 p1.cbl added\ncancelled\n");
  EXPECT_FALSE(progress_.IsOpen());
  EXPECT_EQ(store_.Repository().CountObjects("COBOL", {}), 2);
  EXPECT_EQ(ModelFiles().size(), 2U);
  progress_ = platform::RecordingProgress();
  log_.waitsAt.clear();
  EXPECT_EQ(Told(Scan()),
            "P0 p0.cbl unchanged\nP1 p1.cbl unchanged\nP2 p2.cbl added\nP3 p3.cbl added\nP4 p4.cbl added\n"
            "P5 p5.cbl added\n");
}

TEST_F(ScannerTest, CancellingReachesATranslationThatIsUnderWay) {
  Source("a.cbl", "PROGRAM A\n");
  Source("gone.cbl", "PROGRAM GONE\n");
  Scan();
  Source("a.cbl", "PROGRAM A\nGAP\n");
  log_.waitsAt = "a.cbl";
  progress_.CancelAfterQuestions(3);
  EXPECT_EQ(Told(Scan()), "GONE gone.cbl unchanged\ncancelled\n");
  EXPECT_EQ(DataOf("COBOL#1"), "model true true true 1");
  log_.waitsAt.clear();
  progress_ = platform::RecordingProgress();
  EXPECT_EQ(Told(Scan()), "A a.cbl updated 1/0\nGONE gone.cbl unchanged\n");
}

TEST_F(ScannerTest, AWorkspaceWithoutSourcesHasNothingToScan) {
  EXPECT_EQ(Told(Scan()), "");
  EXPECT_FALSE(fs::exists(store_.Folder().File(std::string(kModelFolder))));
}

}  // namespace
}  // namespace qmrules::workbench
