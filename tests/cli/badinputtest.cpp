#include <filesystem>

#include "cli/clifixture.h"

namespace qmrules::test {
namespace {

// A piece of the workspace is spoiled; the command tells which one, and leaves every byte as it was.
class BadInput : public CliTest {
 protected:
  BadInput() { MakeCatalogue(); }

  CliRun RunUnchanged(const std::vector<std::string>& args) {
    const auto before = Files();
    auto run = Run(args);
    EXPECT_EQ(Files(), before);
    return run;
  }
  void ExpectRefused(const std::vector<std::string>& args, const std::string& file, const std::string& reason) {
    const auto run = RunUnchanged(args);
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_TRUE(run.err.starts_with("qmrules: ")) << run.err;
    EXPECT_NE(run.err.find(folder_.File(file)), std::string::npos) << run.err;
    EXPECT_NE(run.err.find(reason), std::string::npos) << run.err;
  }
  void Replace(const std::string& file, const std::string& text, const std::string& by) {
    std::string content = ReadBytes(folder_.File(file));
    const std::size_t at = content.find(text);
    ASSERT_NE(at, std::string::npos) << file;
    folder_.Write(file, content.replace(at, text.size(), by));
  }
};

const std::vector<std::string> kWriting{"function", "create", "New"};

TEST_F(BadInput, NewerWorkspace) {
  Replace(".qmrules/workspace.json", "1", "2");
  ExpectRefused({"list"}, ".qmrules/workspace.json", "newer");
  ExpectRefused(kWriting, ".qmrules/workspace.json", "newer");
}

TEST_F(BadInput, BrokenWorkspaceFile) {
  folder_.Write(".qmrules/workspace.json", "{\"version\": ");
  ExpectRefused({"list"}, ".qmrules/workspace.json", "");
}

TEST_F(BadInput, MissingCatalogue) {
  std::filesystem::remove(folder_.File(".qmrules/repository.db"));
  EXPECT_EQ(RunUnchanged({"list"}), (CliRun{1, "",
                                            "qmrules: " + folder_.File(".qmrules/repository.db") +
                                                " (the catalogue) is missing; put back a copy of the file.\n"}));
}

TEST_F(BadInput, EmptyCatalogue) {
  folder_.Write(".qmrules/repository.db", "");
  EXPECT_EQ(RunUnchanged({"list"}), (CliRun{1, "",
                                            "qmrules: " + folder_.File(".qmrules/repository.db") +
                                                " (the catalogue) is empty; put back a copy of the file.\n"}));
}

TEST_F(BadInput, TruncatedCatalogue) {
  const std::string bytes = ReadBytes(folder_.File(".qmrules/repository.db"));
  folder_.Write(".qmrules/repository.db", bytes.substr(0, bytes.size() / 2));
  ExpectRefused({"list"}, ".qmrules/repository.db", "damaged");
  ExpectRefused(kWriting, ".qmrules/repository.db", "damaged");
}

TEST_F(BadInput, CatalogueThatIsText) {
  folder_.Write(".qmrules/repository.db", "This is no catalogue, but a text long enough to be looked at.\n");
  ExpectRefused({"list"}, ".qmrules/repository.db", "not a catalogue");
}

TEST_F(BadInput, CatalogueOfAnotherProgram) {
  // The glossary is a database as well, and of another program as far as the catalogue is concerned.
  folder_.Write(".qmrules/repository.db", ReadBytes(folder_.File("Glossary.mdb")));
  ExpectRefused({"list"}, ".qmrules/repository.db", "");
}

TEST_F(BadInput, ProjectOptionsThatAreNoXml) {
  folder_.Write("Projects/Demo/ProjectOptions.xml", "not XML");
  ExpectRefused({"show", "RULE#1"}, "Projects/Demo/ProjectOptions.xml:1:1", "");
  ExpectRefused(kWriting, "Projects/Demo/ProjectOptions.xml:1:1", "");
}

TEST_F(BadInput, ProjectOptionsThatLackANode) {
  Replace("Projects/Demo/ProjectOptions.xml", "UnassignedBFName", "Other");
  const auto run = RunUnchanged(kWriting);
  EXPECT_EQ(run, (CliRun{1, "",
                         "qmrules: The project options have no text UnassignedBFName. Restore the project's options "
                         "file.\n"}));
}

TEST_F(BadInput, SchemaDocumentThatIsNoXml) {
  folder_.Write(".qmrules/User.Repstry.xml", "<repstry>");
  ExpectRefused({"list"}, ".qmrules/User.Repstry.xml:1:", "");
}

TEST_F(BadInput, SchemaDocumentWithAnUnknownType) {
  folder_.Write(".qmrules/User.Repstry.xml",
                "<repstry><entities><entity name=\"RULE\"><entityattrs><entityattr name=\"Price\" system=\"false\" "
                "type=\"MONEY\"/></entityattrs></entity></entities></repstry>");
  ExpectRefused({"list"}, ".qmrules/User.Repstry.xml", "MONEY");
}

TEST_F(BadInput, SchemaDocumentWithoutRules) {
  folder_.Write(".qmrules/User.Repstry.xml", "<repstry/>");
  const auto run = RunUnchanged({"show", "RULE#1"});
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("User.Repstry.xml"), std::string::npos) << run.err;
}

TEST_F(BadInput, RegistryThatIsNoJson) {
  folder_.Write("home/registry.json", "{");
  ExpectRefused({"show", "RULE#1"}, "home/registry.json:1:", "");
}

TEST_F(BadInput, CurrentProjectWithoutItsOptions) {
  std::filesystem::remove(folder_.File("Projects/Demo/ProjectOptions.xml"));
  EXPECT_EQ(RunUnchanged({"list"}),
            (CliRun{1, "",
                    "qmrules: " + folder_.File("Projects/Demo/ProjectOptions.xml") +
                        " (the current project's options) is missing; put back a copy of the file.\n"}));
}

TEST_F(BadInput, SourceThatIsBinary) {
  folder_.Write("program.cbl", std::string("\x7F"
                                           "ELF\0\0\0\1",
                                           8));
  EXPECT_EQ(RunUnchanged({"source", "add", "program.cbl"}),
            (CliRun{1, "",
                    "qmrules: program.cbl: this is no text file\nNothing was registered; --skip leaves such files out "
                    "and takes the others.\n"}));
}

TEST_F(BadInput, SourceThatIsMissing) {
  const auto run = RunUnchanged({"source", "add", "nothing.cbl"});
  EXPECT_EQ(run, (CliRun{1, "",
                         "qmrules: The source \"" + folder_.File("nothing.cbl") +
                             "\" cannot be read: No such file or directory.\n"}));
}

TEST_F(BadInput, SegmentOfASourceThatHasVanished) {
  folder_.Write("one.cbl", "       PROGRAM-ID. ONE.\n");
  Do({"source", "add", "one.cbl"});
  std::filesystem::remove(folder_.File("one.cbl"));
  ExpectRefused({"rule", "create", "New", "--ruleset", "Lapse", "--segment", "one.cbl:1"}, "one.cbl", "");
}

TEST_F(BadInput, ANameThatIsNoTextIsRefused) {
  const auto run = RunUnchanged({"project", "create", "caf\xE9"});
  EXPECT_EQ(run.code, 1);
}

}  // namespace
}  // namespace qmrules::test
