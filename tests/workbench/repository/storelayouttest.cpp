// Making, opening and moving forward the store's file.

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/error.h"
#include "support/errortext.h"
#include "support/temporaryfolder.h"
#include "support/teststore.h"
#include "workbench/repository/fetchrows.h"
#include "workbench/repository/sqliteconnection.h"
#include "workbench/repository/store.h"
#include "workbench/repository/storecontent.h"
#include "workbench/repository/storelayout.h"

namespace qmrules::test {
namespace {

namespace repository = workbench::repository;
using platform::Value;
using repository::Connection;
using repository::Migration;

class StoreFile : public ::testing::Test {
 protected:
  std::unique_ptr<platform::Repository> Open() {
    return repository::OpenStore({path, folder.File("User.Repstry.xml"), "analyst", Connect}, clock);
  }
  std::string OpenFailure() {
    return ErrorText([&] { Open(); });
  }
  static std::unique_ptr<Connection> Connect(const std::string& file) {
    return repository::OpenSqliteConnection(file, repository::Durability::Relaxed);
  }
  void Extend(const std::string& attributes) {
    folder.Write("User.Repstry.xml", "<repstry><entities><entity name='RULE'><entityattrs>" + attributes +
                                         "</entityattrs></entity></entities></repstry>");
  }
  // Brings the file to the form that these migrations lead to.
  void Prepare(const std::vector<Migration>& migrations) {
    const auto schema = repository::StoreSchema::Load(std::nullopt, "");
    const auto connection = Connect(path);
    repository::PrepareLayout(*connection, *schema, migrations);
  }
  std::string Version() { return RunSql(path, "PRAGMA user_version", 1); }
  std::size_t Files() {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder.Path()), {}));
  }

  TemporaryFolder folder;
  std::string path = folder.File("catalogue.db");
  platform::FixedClock clock{*platform::ParseTimestamp("2026-01-31 12:00:00")};
};

TEST_F(StoreFile, IsMadeWhenThereIsNone) {
  Open()->NewObject("RULE", "n");
  EXPECT_EQ(Version(), "1");
  EXPECT_EQ(RunSql(path, "PRAGMA application_id", 1), std::to_string(0x514D5263));
  EXPECT_EQ(RunSql(path, "SELECT Name FROM VekRULETbl", 1), "n");
  EXPECT_EQ(IDs(*Open(), "RULE", {}), "1");
}

TEST_F(StoreFile, IsMadeInAnEmptyFile) {
  folder.Write("catalogue.db", "");
  Open()->NewObject("RULE", "n");
  EXPECT_EQ(IDs(*Open(), "RULE", {}), "1");
}

TEST_F(StoreFile, MayBeInMemory) {
  const auto memory = repository::OpenStore({":memory:", "", "analyst", {}}, clock);
  memory->NewObject("RULE", "n");
  EXPECT_EQ(IDs(*memory, "RULE", {}), "1");
}

TEST_F(StoreFile, IsNotWrittenByOpeningIt) {
  Open()->NewObject("RULE", "n");
  const auto bytes = ReadBytes(path);
  EXPECT_EQ(IDs(*Open(), "RULE", {}), "1");
  EXPECT_EQ(ReadBytes(path), bytes);
  EXPECT_EQ(Files(), 1u);
  const auto connection = Connect(path);
  const auto read = [&] {
    const auto statement = connection->Prepare("PRAGMA data_version");
    statement->Step();
    return statement->Integer(0);
  };
  const auto version = read();
  Open();
  EXPECT_EQ(read(), version);
  Open()->NewObject("RULE", "n");
  EXPECT_NE(read(), version);
}

TEST_F(StoreFile, OfANewerVersionIsRefusedUntouched) {
  Open();
  RunSql(path, "PRAGMA user_version = 2");
  const auto bytes = ReadBytes(path);
  EXPECT_EQ(OpenFailure(),
            "\"" + path +
                "\" was written by a newer version of QMRules (store version 2; this one reads up to 1). "
                "Install the newer version to open it.");
  EXPECT_EQ(ReadBytes(path), bytes);
}

TEST_F(StoreFile, WithAnImpossibleVersionIsDamaged) {
  Open();
  RunSql(path, "PRAGMA user_version = 0");
  EXPECT_EQ(OpenFailure(), "\"" + path + "\" is damaged: it has the store version 0. Put back a copy of the file.");
}

TEST_F(StoreFile, OfAnotherProgramIsRefusedUntouched) {
  RunSql(path, "CREATE TABLE customers (name); INSERT INTO customers VALUES ('x')");
  const auto bytes = ReadBytes(path);
  const std::string text =
      "\"" + path + "\" is a database of another program. Name a catalogue, or a file that does not exist.";
  EXPECT_EQ(OpenFailure(), text);
  EXPECT_EQ(ReadBytes(path), bytes);
  EXPECT_EQ(Files(), 1u);
  RunSql(path, "DROP TABLE customers; PRAGMA user_version = 7");
  EXPECT_EQ(OpenFailure(), text);
}

TEST_F(StoreFile, ThatIsATextIsRefusedUntouched) {
  const std::string content(5000, 'x');
  folder.Write("catalogue.db", content);
  EXPECT_EQ(OpenFailure(),
            "\"" + path +
                "\" is not a catalogue, or it is damaged (file is not a database). Put back a copy of the "
                "file.");
  EXPECT_EQ(ReadBytes(path), content);
}

TEST_F(StoreFile, ThatIsCutShortIsRefusedUntouched) {
  Open()->NewObject("RULE", "n");
  const auto bytes = ReadBytes(path);
  const auto half = bytes.substr(0, bytes.size() / 2);
  folder.Write("catalogue.db", half);
  EXPECT_EQ(OpenFailure(),
            "\"" + path +
                "\" is not a catalogue, or it is damaged (database disk image is malformed). Put back a copy "
                "of the file.");
  EXPECT_EQ(ReadBytes(path), half);
}

TEST_F(StoreFile, InAFolderThatIsMissingIsRefused) {
  path = folder.File("missing/catalogue.db");
  EXPECT_EQ(OpenFailure(), "\"" + path + "\" cannot be opened; check that its folder exists and may be written.");
}

TEST_F(StoreFile, IsMovedForwardStepByStep) {
  Prepare({});
  RunSql(path, "INSERT INTO VekRULETbl (Name) VALUES ('kept')");
  std::string order;
  const std::vector<Migration> migrations = {[&](Connection& connection) {
                                               order += "1";
                                               connection.Execute("ALTER TABLE VekRULETbl ADD COLUMN Added TEXT");
                                             },
                                             [&](Connection& connection) {
                                               order += "2";
                                               connection.Execute("UPDATE VekRULETbl SET Added = Name");
                                             }};
  Prepare(migrations);
  EXPECT_EQ(order, "12");
  EXPECT_EQ(Version(), "3");
  EXPECT_EQ(RunSql(path, "SELECT Added FROM VekRULETbl", 1), "kept");
  Prepare(migrations);
  EXPECT_EQ(order, "12");
}

TEST_F(StoreFile, IsMovedForwardFromTheVersionThatItHas) {
  std::string order;
  const Migration first = [&](Connection&) { order += "1"; };
  const Migration second = [&](Connection&) { order += "2"; };
  Prepare({first});
  EXPECT_EQ(order, "");  // a new store is made in the newest form
  EXPECT_EQ(Version(), "2");
  Prepare({first, second});
  EXPECT_EQ(order, "2");
  EXPECT_EQ(Version(), "3");
}

TEST_F(StoreFile, StaysWholeInItsOldVersionWhenAStepFails) {
  Prepare({});
  RunSql(path, "INSERT INTO VekRULETbl (Name) VALUES ('kept')");
  const auto before = ReadContent(path);
  const Migration good = [](Connection& connection) {
    connection.Execute("UPDATE VekRULETbl SET Name = 'lost'; CREATE TABLE extra (a, b)");
  };
  const Migration bad = [](Connection&) { throw platform::Error("The step failed."); };
  EXPECT_EQ(ErrorText([&] { Prepare({good, bad}); }), "The step failed.");
  EXPECT_EQ(Version(), "1");
  EXPECT_EQ(ReadContent(path), before);
  const Migration wrong = [](Connection& connection) { connection.Execute("UPDATE missing SET a = 1"); };
  EXPECT_EQ(
      ErrorText([&] {
        Prepare({good, wrong});
      }),
      "The catalogue \"" + path + "\" refused the statement \"UPDATE missing SET a = 1\": no such table: missing.");
  EXPECT_EQ(ReadContent(path), before);
  Prepare({good});
  EXPECT_EQ(RunSql(path, "SELECT Name FROM VekRULETbl", 1), "lost");
}

TEST_F(StoreFile, GetsTheIndexThatIsMissing) {
  Open()->NewObject("RULE", "n");
  const std::string definition = "SELECT sql FROM sqlite_master WHERE name = 'VekRULESweep'";
  const auto made = RunSql(path, definition, 1);
  EXPECT_NE(made, "");
  RunSql(path, "DROP INDEX VekRULESweep");
  EXPECT_EQ(IDs(*Open(), "RULE", {}), "1");
  EXPECT_EQ(RunSql(path, definition, 1), made);
}

// A walk over all rules for the sake of their files reads no rule.
TEST_F(StoreFile, HasAnIndexThatTheSweepWalksIn) {
  Open();
  const auto plan = RunSql(path,
                           "EXPLAIN QUERY PLAN SELECT ObjectID, FileName, Valid, Validated FROM VekRULETbl "
                           "WHERE Valid = 'Valid' ORDER BY ObjectID",
                           4);
  EXPECT_NE(plan.find("COVERING INDEX VekRULESweep"), std::string::npos) << plan;
  EXPECT_EQ(plan.find("ORDER BY"), std::string::npos) << plan;
}

TEST_F(StoreFile, GetsTheColumnsOfTheSitesAttributes) {
  Open()->NewObject("RULE", "n");
  Extend(
      "<entityattr name='Priority' type='CHAR'/><entityattr name='1A' type='BOOLEAN'/>"
      "<entityattr name='Product' type='CHAR' system='true'/>");
  {
    const auto store = Open();
    const auto rule = store->object("RULE#1");
    rule->Edit();
    rule->Attrs("Priority", "Low");
    rule->Attrs("1A", true);
    rule->Post();
    EXPECT_EQ(store->Schema().Entity("RULE").FindAttr("Product"), nullptr);
  }
  EXPECT_EQ(Select(*Open(), "RULE", "Name,Priority,1A", {}, {"Name", "Priority", "1A"}), "n|Low|true");
}

TEST_F(StoreFile, KeepsTheColumnOfAnAttributeThatWasRemoved) {
  Extend("<entityattr name='Priority' type='CHAR'/>");
  {
    const auto rule = Open()->NewObject("RULE", "n");
    static_cast<void>(rule);
  }
  RunSql(path, "UPDATE VekRULETbl SET Priority = 'Low'");
  Extend("");
  EXPECT_EQ(Open()->Schema().Entity("RULE").FindAttr("Priority"), nullptr);
  Extend("<entityattr name='priority' type='CHAR'/>");
  EXPECT_EQ(Select(*Open(), "RULE", "Priority", "Priority=Low", {"Priority"}), "Low");
}

// Each chain of types starts in a store that is made with the first of them, and in one to which it is added.
TEST_F(StoreFile, LosesNoValueWhenAnAttributeChangesItsType) {
  const auto typed = [&](const std::string& type) { Extend("<entityattr name='X' type='" + type + "'/>"); };
  const auto values = [&] { return Select(*Open(), "RULE", ">ID,X", {}, {"X"}); };
  const std::string texts[] = {"5",        "007", "true", "FALSE", " 5", "5 ", "1e3", "99999999999999999999",
                               "\xC3\xA4", "-3",  ""};
  std::string all;
  for (const auto& text : texts) all += text + ";";
  for (const bool madeWithIt : {true, false}) {
    std::filesystem::remove(path);
    std::filesystem::remove(folder.Path() / "User.Repstry.xml");
    if (!madeWithIt) Open();
    typed("CHAR");
    {
      const auto store = Open();
      for (const auto& text : texts) {
        const auto rule = store->NewObject("RULE", "n");
        rule->Edit();
        rule->Attrs("X", text);
        rule->Post();
      }
      store->NewObject("RULE", "unset");
    }
    for (const auto* type : {"INTEGER", "CHAR", "LONGTEXT", "INTEGER", "TIMESTAMP", "CHAR"}) {
      typed(type);
      EXPECT_EQ(values(), all) << type;
    }
    typed("INTEGER");
    {
      const auto store = Open();
      EXPECT_EQ(store->object("RULE#1")->Attrs("X"), Value(5));
      EXPECT_EQ(store->object("RULE#2")->Attrs("X"), Value("007"));
      EXPECT_TRUE(store->object("RULE#12")->Attrs("X").IsAbsent());
      EXPECT_EQ(IDs(*store, "RULE", "X=5"), "1");
      EXPECT_EQ(IDs(*store, "RULE", "ID in 1,10&X<40"), "1;10");
    }
  }
}

TEST_F(StoreFile, KeepsTextsOfDigitsInAnAttributeThatWasANumber) {
  for (const bool madeWithIt : {true, false}) {
    std::filesystem::remove(path);
    std::filesystem::remove(folder.Path() / "User.Repstry.xml");
    if (!madeWithIt) Open();
    Extend("<entityattr name='X' type='INTEGER'/>");
    Open()->NewObject("RULE", "n");
    Extend("<entityattr name='X' type='CHAR'/>");
    const auto store = Open();
    const auto rule = store->object("RULE#1");
    rule->Edit();
    rule->Attrs("X", "007");
    rule->Post();
    EXPECT_EQ(store->object("RULE#1")->Attrs("X"), Value("007"));
    EXPECT_EQ(IDs(*store, "RULE", "X=007"), "1");
    EXPECT_EQ(IDs(*store, "RULE", "X=7"), "");
  }
}

TEST_F(StoreFile, TakesTruthValuesOverBetweenTextAndBoolean) {
  Extend("<entityattr name='X' type='CHAR'/>");
  {
    const auto store = Open();
    for (const auto* text : {"true", "FALSE", "maybe"}) {
      const auto rule = store->NewObject("RULE", "n");
      rule->Edit();
      rule->Attrs("X", text);
      rule->Post();
    }
  }
  Extend("<entityattr name='X' type='BOOLEAN'/>");
  const auto store = Open();
  EXPECT_EQ(store->object("RULE#1")->Attrs("X"), Value(true));
  EXPECT_EQ(store->object("RULE#2")->Attrs("X"), Value(false));
  EXPECT_EQ(store->object("RULE#3")->Attrs("X"), Value("maybe"));
  EXPECT_EQ(IDs(*store, "RULE", "X=false"), "2");
  EXPECT_EQ(IDs(*store, "RULE", "~X=true"), "2;3");
}

TEST_F(StoreFile, IsNotTouchedWhenTheSitesAttributesAreWrong) {
  Open()->NewObject("RULE", "n");
  const auto bytes = ReadBytes(path);
  const std::string place = folder.File("User.Repstry.xml") + ": the attribute ";
  const std::string bad = " is not admissible; a name has letters, digits and \"_\", 64 at most.";
  const std::string taken = " stands there already; give it another name.";
  const std::pair<std::string, std::string> wrong[] = {
      {"<entityattr name='X' type='NUMBER'/>",
       "\"X\" of RULE has the unknown type \"NUMBER\"; the types are LONGTEXT, BOOLEAN, INTEGER, CHAR and TIMESTAMP."},
      {"<entityattr name='X'/>",
       "\"X\" of RULE has the unknown type \"\"; the types are LONGTEXT, BOOLEAN, INTEGER, CHAR and TIMESTAMP."},
      {"<entityattr type='CHAR'/>", "\"\" of RULE" + bad},
      {"<entityattr name='A B' type='CHAR'/>", "\"A B\" of RULE" + bad},
      {"<entityattr name='a&quot;b' type='CHAR'/>", "\"a\"b\" of RULE" + bad},
      {"<entityattr name='" + std::string(65, 'a') + "' type='CHAR'/>",
       "\"" + std::string(65, 'a') + "\" of RULE" + bad},
      {"<entityattr name='id' type='CHAR'/>", "\"id\" of RULE" + taken},
      {"<entityattr name='objectid' type='CHAR'/>", "\"objectid\" of RULE" + taken},
      {"<entityattr name='rulename' type='CHAR'/>", "\"rulename\" of RULE" + taken},
      {"<entityattr name='sid' type='CHAR'/>", "\"sid\" of RULE" + taken},
      {"<entityattr name='X' type='CHAR'/><entityattr name='x' type='CHAR'/>", "\"x\" of RULE" + taken},
  };
  for (const auto& [attributes, text] : wrong) {
    Extend(attributes);
    EXPECT_EQ(OpenFailure(), place + text);
  }
  folder.Write("User.Repstry.xml", "<repstry>\n<entities>");
  EXPECT_EQ(OpenFailure().substr(0, folder.File("User.Repstry.xml:2:").size()), folder.File("User.Repstry.xml:2:"));
  EXPECT_EQ(ReadBytes(path), bytes);
}

}  // namespace
}  // namespace qmrules::test
