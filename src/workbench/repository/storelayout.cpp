#include "workbench/repository/storelayout.h"

#include <fmt/format.h>

#include <map>
#include <set>
#include <vector>

#include "platform/error.h"
#include "shell/casefold.h"

namespace qmrules::workbench::repository {

namespace {

using platform::AttrType;
using platform::Error;

// Marks the file as a catalogue ("QMRc"), so that another program's database is not taken for one.
constexpr std::int64_t applicationID = 0x514D5263;

std::int64_t ReadNumber(Connection& connection, const std::string& sql) {
  const auto statement = connection.Prepare(sql);
  return statement->Step() ? statement->Integer(0) : 0;
}

std::string_view ColumnType(AttrType type) {
  return type == AttrType::Integer ? "INTEGER" : "TEXT";
}

// The column of a site's own attribute has no type of its own: its attribute may change type, and what was stored under
// the old one must stay to the letter.
std::string ColumnDefinition(const StoreAttribute& attribute) {
  return attribute.IsSiteOwn() ? attribute.Column()
                               : fmt::format("{} {}", attribute.Column(), ColumnType(attribute.Type()));
}

// Long texts go last, so that reading the other columns of a row does not walk through them.
std::string TableDefinition(const StoreEntity& entity) {
  std::string columns = "\"ObjectID\" INTEGER PRIMARY KEY AUTOINCREMENT";
  for (const bool longTexts : {false, true}) {
    for (const auto& attribute : entity.Attributes()) {
      if ((attribute->Type() == AttrType::LongText) == longTexts) {
        columns += ", " + ColumnDefinition(*attribute);
      }
    }
  }
  return fmt::format("CREATE TABLE IF NOT EXISTS {} ({})", entity.Table(), columns);
}

// Which objects the sweep over all sources walks, and through which columns. The rows of such an entity are long, and
// these columns a tenth of them.
bool IsSwept(const StoreEntity& entity) {
  return entity.FindAttr("FileName") != nullptr && entity.FindAttr("Valid") != nullptr &&
         entity.FindAttr("Validated") != nullptr;
}

std::string SweepIndex(const StoreEntity& entity) {
  return "Vek" + entity.Name() + "Sweep";
}

// The ID goes first: unsorted rows come in its order, and no search by another column is drawn to the index.
std::string SweepIndexDefinition(const StoreEntity& entity) {
  return fmt::format("CREATE INDEX IF NOT EXISTS {} ON {} (\"ObjectID\", \"FileName\", \"Valid\", \"Validated\")",
                     QuoteIdentifier(SweepIndex(entity)), entity.Table());
}

class LayoutBuilder {
 public:
  LayoutBuilder(Connection& connection, const StoreSchema& schema) : connection_(connection), schema_(schema) {
    if (!HasTable(attributeTable)) return;
    const auto statement = connection.Prepare(fmt::format("SELECT Entity, Name, Type FROM \"{}\"", attributeTable));
    while (statement->Step()) {
      known_[std::string(statement->Text(0))][shell::FoldCase(statement->Text(1))] = std::string(statement->Text(2));
    }
    const auto present = connection.Prepare("SELECT name FROM sqlite_master WHERE type IN ('table', 'index')");
    while (present->Step()) present_.insert(std::string(present->Text(0)));
  }

  bool IsComplete() const {
    for (const auto& entity : schema_.AllEntities()) {
      const auto known = known_.find(entity->Name());
      if (known == known_.end()) return false;
      for (const auto& attribute : entity->Attributes()) {
        const auto type = known->second.find(shell::FoldCase(attribute->Name()));
        if (type == known->second.end() || type->second != platform::AttrTypeName(attribute->Type())) return false;
      }
      if (IsSwept(*entity) && !present_.contains(SweepIndex(*entity))) return false;
    }
    for (const auto& relation : schema_.Relations()) {
      if (!present_.contains("Vek" + relation->Name() + "Tbl")) return false;
    }
    return true;
  }

  void Complete() {
    for (const auto& entity : schema_.AllEntities()) CompleteEntity(*entity);
    for (const auto& relation : schema_.Relations()) {
      connection_.Execute(
          fmt::format("CREATE TABLE IF NOT EXISTS {0} (\"FromID\" INTEGER NOT NULL, \"ToID\" INTEGER NOT "
                      "NULL, PRIMARY KEY (\"FromID\", \"ToID\")) WITHOUT ROWID",
                      relation->Table()));
      connection_.Execute(fmt::format("CREATE INDEX IF NOT EXISTS {} ON {} (\"ToID\", \"FromID\")",
                                      QuoteIdentifier("Vek" + relation->Name() + "Back"), relation->Table()));
    }
  }

  void CreateServiceTables() {
    connection_.Execute(
        fmt::format("CREATE TABLE \"{}\" (Entity TEXT NOT NULL, Name TEXT NOT NULL, Type TEXT NOT NULL, "
                    "PRIMARY KEY (Entity, Name))",
                    attributeTable));
    connection_.Execute(
        fmt::format("CREATE TABLE \"{}\" (CommandID INTEGER PRIMARY KEY AUTOINCREMENT, At TEXT NOT NULL, "
                    "UserName TEXT NOT NULL, Command TEXT NOT NULL)",
                    journalCommandTable));
    connection_.Execute(
        fmt::format("CREATE TABLE \"{}\" (EntryID INTEGER PRIMARY KEY, CommandID INTEGER NOT "
                    "NULL, Action TEXT NOT NULL, Object TEXT NOT NULL, Other TEXT NOT NULL, "
                    "Changes TEXT NOT NULL)",
                    journalTable));
  }

 private:
  bool HasTable(std::string_view name) {
    const auto statement = connection_.Prepare("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?");
    statement->BindText(0, name);
    return statement->Step();
  }

  void CompleteEntity(const StoreEntity& entity) {
    const bool isNew = !known_.contains(entity.Name());
    auto& known = known_[entity.Name()];
    if (isNew) {
      connection_.Execute(TableDefinition(entity));
      connection_.Execute(fmt::format("CREATE {}INDEX {} ON {} (\"Name\")", entity.UniqueNames() ? "UNIQUE " : "",
                                      QuoteIdentifier("Vek" + entity.Name() + "Name"), entity.Table()));
      if (entity.FindAttr("Program") != nullptr) {
        connection_.Execute(
            fmt::format("CREATE INDEX {} ON {} (\"Program\", \"FileName\") WHERE \"Program\" IS NOT NULL",
                        QuoteIdentifier("Vek" + entity.Name() + "Program"), entity.Table()));
      }
    }
    for (const auto& attribute : entity.Attributes()) {
      const auto type = known.find(shell::FoldCase(attribute->Name()));
      if (type == known.end()) {
        if (!isNew) {
          connection_.Execute(
              fmt::format("ALTER TABLE {} ADD COLUMN {}", entity.Table(), ColumnDefinition(*attribute)));
        }
        Register(entity, *attribute);
      } else if (type->second != platform::AttrTypeName(attribute->Type())) {
        ConvertColumn(entity, *attribute);
        Register(entity, *attribute);
      }
    }
    if (IsSwept(entity)) connection_.Execute(SweepIndexDefinition(entity));
  }

  void Register(const StoreEntity& entity, const StoreAttribute& attribute) {
    auto statement = connection_.Prepare(
        fmt::format("DELETE FROM \"{}\" WHERE Entity = ? AND lower(Name) = lower(?)", attributeTable));
    statement->BindText(0, entity.Name());
    statement->BindText(1, attribute.Name());
    statement->Step();
    statement = connection_.Prepare(fmt::format("INSERT INTO \"{}\" VALUES (?, ?, ?)", attributeTable));
    statement->BindText(0, entity.Name());
    statement->BindText(1, attribute.Name());
    statement->BindText(2, platform::AttrTypeName(attribute.Type()));
    statement->Step();
  }

  // Values that the new type can hold take its form; the others stay as they are and read as text.
  void ConvertColumn(const StoreEntity& entity, const StoreAttribute& attribute) {
    const auto& column = attribute.Column();
    if (attribute.Type() == AttrType::Integer) {
      connection_.Execute(
          fmt::format("UPDATE {0} SET {1} = CAST({1} AS INTEGER) WHERE {1} = CAST(CAST({1} AS INTEGER) AS "
                      "TEXT)",
                      entity.Table(), column));
    } else {
      connection_.Execute(
          fmt::format("UPDATE {0} SET {1} = CAST({1} AS TEXT) WHERE {1} IS NOT NULL", entity.Table(), column));
    }
    if (attribute.Type() == AttrType::Boolean) {
      connection_.Execute(
          fmt::format("UPDATE {0} SET {1} = lower({1}) WHERE lower({1}) IN ('true', 'false')", entity.Table(), column));
    }
  }

  Connection& connection_;
  const StoreSchema& schema_;
  std::map<std::string, std::map<std::string, std::string>> known_;
  std::set<std::string> present_;  // tables and indexes
};

// Does the work in one transaction, which a failure undoes.
void Within(Connection& connection, const std::string& begin, const std::function<void()>& work) {
  connection.Execute(begin);
  try {
    work();
    connection.Execute("COMMIT");
  } catch (...) {
    if (connection.InTransaction()) connection.Execute("ROLLBACK");
    throw;
  }
}

enum class FileState { Empty, Foreign, Store };

FileState StateOf(Connection& connection) {
  if (ReadNumber(connection, "PRAGMA application_id") == applicationID) return FileState::Store;
  const bool empty = ReadNumber(connection, "SELECT count(*) FROM sqlite_master") == 0 &&
                     ReadNumber(connection, "PRAGMA user_version") == 0;
  return empty ? FileState::Empty : FileState::Foreign;
}

void CheckState(Connection& connection, std::int64_t newest) {
  if (StateOf(connection) == FileState::Foreign) {
    throw Error(fmt::format("\"{}\" is a database of another program. Name a catalogue, or a file that does not exist.",
                            connection.Name()));
  }
  const std::int64_t version = ReadNumber(connection, "PRAGMA user_version");
  if (version < 1 && StateOf(connection) == FileState::Store) {
    throw Error(fmt::format("\"{}\" is damaged: it has the store version {}. Put back a copy of the file.",
                            connection.Name(), version));
  }
  if (version > newest) {
    throw Error(
        fmt::format("\"{}\" was written by a newer version of QMRules (store version {}; this one reads up to {}). "
                    "Install the newer version to open it.",
                    connection.Name(), version, newest));
  }
}

void Prepare(Connection& connection, const StoreSchema& schema, std::span<const Migration> migrations) {
  const std::int64_t newest = StoreVersion(migrations.size());
  // Another process may have been here between the look outside the transaction and its begin.
  CheckState(connection, newest);
  if (StateOf(connection) == FileState::Empty) {
    LayoutBuilder builder(connection, schema);
    builder.CreateServiceTables();
    connection.Execute(fmt::format("PRAGMA application_id = {}", applicationID));
  } else {
    for (std::int64_t version = ReadNumber(connection, "PRAGMA user_version"); version < newest; ++version) {
      migrations[static_cast<std::size_t>(version - 1)](connection);
    }
  }
  connection.Execute(fmt::format("PRAGMA user_version = {}", newest));
  LayoutBuilder(connection, schema).Complete();
}

}  // namespace

std::span<const Migration> StoreMigrations() {
  return {};
}

void PrepareLayout(Connection& connection, const StoreSchema& schema, std::span<const Migration> migrations) {
  const std::int64_t newest = StoreVersion(migrations.size());
  // Another process may be making the store right now: what is looked at together has to be of one moment.
  Within(connection, "BEGIN", [&] { CheckState(connection, newest); });
  connection.TakeOver();
  bool isComplete = false;
  Within(connection, "BEGIN", [&] {
    isComplete = StateOf(connection) == FileState::Store && ReadNumber(connection, "PRAGMA user_version") == newest &&
                 LayoutBuilder(connection, schema).IsComplete();
  });
  if (!isComplete) Within(connection, "BEGIN IMMEDIATE", [&] { Prepare(connection, schema, migrations); });
}

}  // namespace qmrules::workbench::repository
