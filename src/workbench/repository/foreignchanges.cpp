#include "workbench/repository/foreignchanges.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "workbench/repository/storelayout.h"
#include "workbench/repository/storesession.h"

namespace qmrules::workbench::repository {

struct ForeignEntry {
  std::string action;
  std::string object;
  std::string other;
  std::string relation;
};

namespace {

std::int64_t LastEntry(StoreSession& session) {
  static const std::string sql = fmt::format("SELECT COALESCE(MAX(EntryID), 0) FROM \"{}\"", journalTable);
  const auto statement = session.Use(sql);
  statement->Step();
  return statement->Integer(0);
}

std::string RelationIn(std::string_view changes) {
  const auto told = nlohmann::json::parse(changes, nullptr, false);
  if (!told.is_object() || !told.contains("Relation") || !told["Relation"].is_string()) return {};
  return told["Relation"].get<std::string>();
}

// nullptr for an entry of another kind, and for a relation of a newer form of the store.
const StoreRelation* RelationOf(const StoreSchema& schema, const ForeignEntry& entry) {
  const auto& relations = schema.Relations();
  const auto found = std::find_if(relations.begin(), relations.end(),
                                  [&](const auto& relation) { return relation->Name() == entry.relation; });
  return found == relations.end() ? nullptr : found->get();
}

void Tell(StoreSession& session, const ForeignEntry& entry) {
  if (entry.action == "ADD") {
    session.Events().objectAdded.Raise(entry.object);
  } else if (entry.action == "DELETE") {
    session.Events().objectDeleted.Raise(entry.object);
  } else if (const StoreRelation* const relation = RelationOf(session.Schema(), entry)) {
    auto& event = entry.action == "LINK" ? session.Events().linked : session.Events().unLinked;
    event.Raise(entry.object, entry.other, *relation);
  }
}

}  // namespace

struct ForeignChangeReader::Entries {
  std::vector<ForeignEntry> entries;
  bool areTooMany = false;
};

ForeignChangeReader::ForeignChangeReader(StoreSession& session)
    : session_(session), version_(session.Database().ForeignVersion()), lastEntry_(LastEntry(session)) {}

platform::ForeignChanges ForeignChangeReader::Take() {
  if (session_.Database().InTransaction()) return {};
  const std::int64_t version = session_.Database().ForeignVersion();
  if (version == version_) return {};
  const Entries read = ReadEntries();
  version_ = version;

  platform::ForeignChanges changes;
  changes.areTooMany = read.areTooMany;
  if (read.areTooMany) return changes;
  std::unordered_set<std::string> known;
  const auto note = [&](const std::string& key) {
    if (!key.empty() && known.insert(key).second) changes.objects.push_back(key);
  };
  for (const ForeignEntry& entry : read.entries) {
    note(entry.object);
    note(entry.other);
  }
  for (const ForeignEntry& entry : read.entries) Tell(session_, entry);
  return changes;
}

// All that is read, whether it is told or not, counts as known from here on.
ForeignChangeReader::Entries ForeignChangeReader::ReadEntries() {
  static const std::string sql = fmt::format(
      "SELECT EntryID, CommandID, Action, Object, Other, Changes FROM \"{}\" WHERE EntryID > ? ORDER BY EntryID",
      journalTable);
  Entries read;
  std::int64_t last = lastEntry_;
  {
    const auto statement = session_.Use(sql);
    statement->BindInteger(0, lastEntry_);
    while (statement->Step()) {
      last = statement->Integer(0);
      if (session_.Journal().WroteCommand(statement->Integer(1))) continue;
      if (read.entries.size() == platform::kMostForeignChanges) {
        read.areTooMany = true;
        break;
      }
      read.entries.push_back({std::string(statement->Text(2)), std::string(statement->Text(3)),
                              std::string(statement->Text(4)), RelationIn(statement->Text(5))});
    }
  }
  lastEntry_ = read.areTooMany ? LastEntry(session_) : last;
  session_.Journal().ForgetEndedCommands();
  return read;
}

}  // namespace qmrules::workbench::repository
