#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "workbench/repository/connection.h"
#include "workbench/repository/storeschema.h"

namespace qmrules::workbench::repository {

// One step forward in the form of the store; step n brings version n to version n + 1.
//
// To change the form: append a step to StoreMigrations(), and never change one that has been released. A new attribute
// or entity in the schema document needs no step: missing tables and columns are added at every opening.
using Migration = std::function<void(Connection&)>;
std::span<const Migration> StoreMigrations();

// The version that stores of `steps` migrations have.
constexpr std::int64_t StoreVersion(std::size_t steps) {
  return static_cast<std::int64_t>(steps) + 1;
}

// Brings the database to the form that the schema asks for, in one transaction: makes a new store in an empty file,
// moves an older one forward, adds the tables and columns that are missing, and keeps columns that the schema no longer
// has. Writes nothing when all is in place. Throws platform::Error, with nothing changed, for a file of another
// program and for a store of a newer version.
void PrepareLayout(Connection& connection, const StoreSchema& schema,
                   std::span<const Migration> migrations = StoreMigrations());

// The catalogue's tables besides those of entities and relations.
inline constexpr const char* attributeTable = "VekAttributeTbl";            // Entity, Name, Type
inline constexpr const char* journalCommandTable = "VekJournalCommandTbl";  // CommandID, At, UserName, Command
inline constexpr const char* journalTable = "VekJournalTbl";  // EntryID, CommandID, Action, Object, Other, Changes

}  // namespace qmrules::workbench::repository
