#include "workbench/host/embeddedhost.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/error.h"
#include "support/faultyconnection.h"
#include "support/temporaryfolder.h"
#include "workbench/host/workspacescan.h"
#include "workbench/repository/sqliteconnection.h"

namespace qmrules::workbench {
namespace {

using test::TemporaryFolder;

constexpr const char* kSchemaWithList = R"(<repstry><entities><entity name="RULE"><entityattrs>
<entityattr name="Priority" system="false" type="CHAR" default="Low"><const value="Low"/><const value="High"/></entityattr>
</entityattrs></entity></entities></repstry>)";

class EmbeddedHostTest : public ::testing::Test {
 protected:
  HostServices Services() {
    return {.clock = clock_,
            .userName = "analyst",
            .settingsPath = folder_.File("settings.json"),
            .registryPath = folder_.File("registry.json"),
            .connect = [this](const std::string& path) {
              return test::MakeFaulty(repository::OpenSqliteConnection(path, repository::Durability::Relaxed), fault_);
            }};
  }
  void Create() { EmbeddedHost::CreateWorkspace({Root(), "Demo", ""}, Services()); }
  EmbeddedHost Open() { return EmbeddedHost(Root(), Services()); }
  std::string Root() const { return folder_.File("work"); }
  static std::string ErrorOf(const std::function<void()>& call) {
    try {
      call();
    } catch (const platform::Error& error) {
      return error.what();
    }
    return "nothing was thrown";
  }
  void AddRule(EmbeddedHost& host) { host.Repository().NewObject("RULE", "n" + std::to_string(++rules_)); }

  TemporaryFolder folder_;
  platform::FixedClock clock_{*platform::ParseTimestamp("2026-01-31 12:00:00")};
  std::shared_ptr<test::Fault> fault_ = std::make_shared<test::Fault>();
  int rules_ = 0;
};

TEST_F(EmbeddedHostTest, HandsOutTheCurrentProjectAndItsOptions) {
  Create();
  EmbeddedHost host(Root(), Services());
  EXPECT_EQ(host.ProjectObject()->ObjectID(), "PROJECT#1");
  EXPECT_EQ(host.ProjectObject()->Attrs("Name").Text(), "Demo");
  EXPECT_EQ(host.UserName(), "analyst");
  EXPECT_EQ(host.GetFerrowoodName(7), "Demo");
  EXPECT_TRUE(host.ProjectOptions().Document().selectSingleNode("//TEXT[@NAME='UnassignedBFName']"));
  EXPECT_TRUE(host.GlobalOptions().Document().selectSingleNode("//CASE[@NAME='QMGlossary']"));
}

TEST_F(EmbeddedHostTest, TheEncodingOfTheSourcesIsSetForAll) {
  Create();
  EmbeddedHost host(Root(), Services());
  folder_.Write("work/a.cbl", "\x83\x65");
  host.SetSourceEncoding("SHIFT_JIS");
  EXPECT_EQ(host.FileSystem().ReadTextFile(host.PathOf("a.cbl")), "\u30c6");
  EXPECT_EQ(Open().Folder().SourceEncoding(), "SHIFT_JIS");
  EXPECT_THROW(host.SetSourceEncoding("KLINGON"), platform::Error);
  EXPECT_EQ(host.Folder().SourceEncoding(), "SHIFT_JIS");
  EXPECT_EQ(host.FileSystem().SourceEncoding(), "SHIFT_JIS");
  host.SetSourceEncoding("");
  EXPECT_EQ(Open().Folder().SourceEncoding(), "");
}

TEST_F(EmbeddedHostTest, OpensTheModelsOfScannedSources) {
  Create();
  folder_.Write("work/a.cbl",
                "       PROGRAM-ID. A.\n       DATA DIVISION.\n       WORKING-STORAGE SECTION.\n"
                "       01  \xDC"
                "BER  PIC X.\n       PROCEDURE DIVISION.\n           MOVE 'X' TO \xDC"
                "BER.\n");
  EmbeddedHost host(Root(), Services());
  platform::SilentProgress progress;
  const auto report = ScanWorkspace(host, {}, progress);
  ASSERT_EQ(report.programs.size(), 1U);
  const auto source = host.Repository().object(report.programs[0].key);
  const auto model = host.Models().OpenModel(host.GetFerrowoodName(4) + "\\" + source->Attrs("Quillmark").Text());
  const auto variables = model->Objects("VAR");
  ASSERT_FALSE(variables->Eof());
  EXPECT_EQ(variables->Item().Text(), "\u00DCBER");
  EXPECT_TRUE(model->Database().OpenRecordset("ExternalRelationships")->Eof());
}

TEST_F(EmbeddedHostTest, PathsStayInTheSourceFolder) {
  Create();
  EmbeddedHost host(Root(), Services());
  EXPECT_EQ(host.PathOf("cobol/a.cbl"), host.Folder().SourceFolder() + "/cobol/a.cbl");
  EXPECT_NE(ErrorOf([&] { host.PathOf("../a.cbl"); }), "nothing was thrown");
}

TEST_F(EmbeddedHostTest, CreationThatFailsLeavesNothing) {
  Create();
  const int writes = fault_->seen;
  std::filesystem::remove_all(Root());
  ASSERT_GT(writes, 10);
  for (int at = 1; at <= writes; ++at) {
    fault_->Arm(at);
    EXPECT_EQ(ErrorOf([&] { Create(); }), test::kFaultText) << "at write " << at;
    EXPECT_FALSE(std::filesystem::exists(Root())) << "at write " << at;
  }
  fault_->Arm(0);
  Create();
  EXPECT_EQ(Open().ProjectObject()->ObjectID(), "PROJECT#1");
}

TEST_F(EmbeddedHostTest, AnotherProjectHasItsOwnOptions) {
  Create();
  EmbeddedHost host(Root(), Services());
  auto node = host.ProjectOptions().Document().selectSingleNode("//TEXT[@NAME='UnassignedBFName']");
  node.setAttribute("VALUE", "Changed");
  host.CreateProject("Claims");
  EXPECT_EQ(host.Folder().CurrentProject(), "Claims");
  EXPECT_EQ(host.ProjectObject()->ObjectID(), "PROJECT#2");
  EXPECT_EQ(
      host.ProjectOptions().Document().selectSingleNode("//TEXT[@NAME='UnassignedBFName']").AttributeOr("VALUE", ""),
      "Unassigned Business Function");
}

TEST_F(EmbeddedHostTest, AProjectThatOnlyTheCatalogueKnowsIsTakenOver) {
  Create();
  EmbeddedHost host(Root(), Services());
  host.Repository().NewObject("PROJECT", "Claims");
  host.CreateProject("Claims");
  EXPECT_EQ(host.ProjectObject()->ObjectID(), "PROJECT#2");
}

TEST_F(EmbeddedHostTest, AProjectThatCannotBeEnteredIsNotMade) {
  Create();
  EmbeddedHost host(Root(), Services());
  fault_->Arm(1);
  EXPECT_EQ(ErrorOf([&] { host.CreateProject("Claims"); }), test::kFaultText);
  fault_->Arm(0);
  EXPECT_EQ(host.Folder().Projects(), std::vector<std::string>{"Demo"});
  EXPECT_EQ(host.Folder().CurrentProject(), "Demo");
}

TEST_F(EmbeddedHostTest, AProjectThatTheCatalogueLacksIsToldAndEnteredByUse) {
  Create();
  EmbeddedHost host(Root(), Services());
  host.ProjectObject()->Delete();
  EXPECT_EQ(ErrorOf([&] { host.ProjectObject(); }),
            "The catalogue " + Root() +
                "/.qmrules/repository.db does not know the project \"Demo\"; make the project the current one again, "
                "which enters it.");
  host.UseProject("Demo");
  EXPECT_EQ(host.ProjectObject()->Attrs("Name").Text(), "Demo");
}

TEST_F(EmbeddedHostTest, UseOfAnUnknownProjectEntersNothing) {
  Create();
  EmbeddedHost host(Root(), Services());
  EXPECT_EQ(ErrorOf([&] { host.UseProject("Other"); }),
            "There is no project \"Other\" in " + Root() + "; the projects are: Demo.");
  EXPECT_EQ(host.Repository().CountObjects("PROJECT", ""), 1);
}

TEST_F(EmbeddedHostTest, AnEmptyCatalogueIsNotMadeAnew) {
  Create();
  folder_.Write("work/.qmrules/repository.db", "");
  EXPECT_EQ(ErrorOf([&] { Open(); }),
            Root() + "/.qmrules/repository.db (the catalogue) is empty; put back a copy of the file.");
  EXPECT_EQ(std::filesystem::file_size(Root() + "/.qmrules/repository.db"), 0U);
}

TEST_F(EmbeddedHostTest, TheMachinesValueNamesTheSchemaDocument) {
  Create();
  const std::string schema = folder_.Write("site.xml", kSchemaWithList);
  folder_.Write("registry.json", R"({"SOFTWARE\\Norvane\\Ferrowood": {"UserExtensions": ")" + schema + "\"}}");
  EmbeddedHost host(Root(), Services());
  EXPECT_NE(host.Repository().Schema().Entity("RULE").FindAttr("Priority"), nullptr);
}

class RepairMarkTest : public EmbeddedHostTest {
 protected:
  RepairMarkTest() { Create(); }
  void UseList() { folder_.Write("work/.qmrules/User.Repstry.xml", kSchemaWithList); }
};

TEST_F(RepairMarkTest, NothingIsEverDueWithoutAListOfValues) {
  EmbeddedHost host(Root(), Services());
  AddRule(host);
  EXPECT_FALSE(host.RepairIsDue());
}

TEST_F(RepairMarkTest, IsDueUntilItIsDoneAndForAnotherHostToo) {
  UseList();
  EmbeddedHost host(Root(), Services());
  EXPECT_TRUE(host.RepairIsDue());
  host.RepairIsDone();
  EXPECT_FALSE(host.RepairIsDue());
  EXPECT_FALSE(EmbeddedHost(Root(), Services()).RepairIsDue());
}

TEST_F(RepairMarkTest, IsDueAfterAChangeOfTheSchemaDocument) {
  UseList();
  EmbeddedHost(Root(), Services()).RepairIsDone();
  std::string changed = kSchemaWithList;
  changed.replace(changed.find("High"), 4, "Hype");
  folder_.Write("work/.qmrules/User.Repstry.xml", changed);
  EXPECT_TRUE(EmbeddedHost(Root(), Services()).RepairIsDue());
}

TEST_F(RepairMarkTest, IsDueAfterARuleWasWrittenAndOnlyThen) {
  UseList();
  EmbeddedHost host(Root(), Services());
  host.RepairIsDone();
  host.Repository().NewObject("RULESET", "Fees");
  EXPECT_FALSE(host.RepairIsDue());
  AddRule(host);
  EXPECT_TRUE(host.RepairIsDue());
}

TEST_F(RepairMarkTest, ABrokenMarkIsNone) {
  UseList();
  EmbeddedHost host(Root(), Services());
  host.RepairIsDone();
  for (const char* broken : {"", "{", "[]", R"({"schema": 1, "entry": 2})", R"({"schema": "x"})"}) {
    folder_.Write("work/.qmrules/AttributeRepair.json", broken);
    EXPECT_TRUE(host.RepairIsDue()) << broken;
  }
}

}  // namespace
}  // namespace qmrules::workbench
