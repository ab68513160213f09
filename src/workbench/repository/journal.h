#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "workbench/repository/storedvalue.h"

namespace qmrules::workbench::repository {

class StoreSession;

// One attribute's change.
struct AttributeChange {
  const StoreAttribute* attribute = nullptr;
  StoredValue before;
  StoredValue after;
};

enum class JournalAction { Add, Edit, Delete, Link, UnLink };

// The command that writes belong to, and its row in the store.
struct JournalCommand {
  std::string name;
  std::string at;
  std::int64_t id = 0;    // 0: it has no row
  bool isUsed = false;    // an entry belongs to it
  bool isStored = false;  // its row is in the store for good
};

// One line of the journal, made before its change is written, so that nothing can fail between the two.
struct JournalEntry {
  JournalAction action = JournalAction::Add;
  std::string object;
  std::string other;
  std::string changes;
  std::shared_ptr<JournalCommand> command;

  // Completes the key of an added object, whose ID comes with the insert.
  void SetAddedID(std::int32_t id) noexcept;
};

// For an added object `key` is the entity's name alone.
JournalEntry ChangeEntry(JournalAction action, std::string_view key, const std::vector<AttributeChange>& changes);
JournalEntry LinkEntry(JournalAction action, std::string from, std::string to, const StoreRelation& relation);

// The change journal: every transaction appends who changed what, when and by which command, with old and new values,
// in the transaction that changes it. Entries are never altered. Each entry belongs to a command row; the writes of one
// command scope share one, a write outside any scope has one of its own, with an empty name.
//
//   Action   Object   Other    Changes (JSON)
//   ADD      key               {"Name":[null,"..."], ...}
//   EDIT     key               {"Description":["old","new"], ...}
//   DELETE   key               {"Name":["...",null], ...}
//   LINK     from     to       {"Relation":"RuleSetHasRule"}
//   UNLINK   from     to       {"Relation":"RuleSetHasRule"}
//
// Entries are held back and go to the store some hundreds at a time, at the latest before their transaction is
// committed. So a call that changes one row is one statement, which needs no savepoint to take effect whole or not at
// all.
class CommandJournal {
 public:
  explicit CommandJournal(StoreSession& session) : session_(session) {}

  void BeginCommand(std::string_view name);
  void EndCommand();

  // Comes before a change: makes room for its entry, writing those held back when they are many. Throws platform::Error
  // when the store refuses; entries that it has not taken are held on.
  void MakeRoom();
  // Comes after the change.
  void Append(JournalEntry entry) noexcept;
  // Writes the entries held back. Throws as MakeRoom does.
  void WriteHeld();

  // The session tells what became of the transaction, or of the part of it that began after the last WriteHeld.
  void AfterCommit();
  void AfterRollback();
  // `before`: RowOfCommand() when the part that is undone began.
  void AfterPartialRollback(std::int64_t before);
  // The command's row, as far as one has been written; 0 for none.
  std::int64_t RowOfCommand() const { return command_ ? command_->id : 0; }

  // True for a command row that this process has written and committed.
  bool WroteCommand(std::int64_t row) const { return ownRows_.contains(row); }
  // Of the committed rows keeps only the one that more entries may come to.
  void ForgetEndedCommands();

 private:
  // Writes those from `first` on.
  void WriteRows(std::size_t first, std::size_t rows);
  void StoreCommand(JournalCommand& command);

  StoreSession& session_;
  std::shared_ptr<JournalCommand> command_;  // nullptr: none since the last one ended
  bool inCommand_ = false;
  std::vector<JournalEntry> held_;
  std::size_t heldBytes_ = 0;
  std::vector<std::int64_t> openRows_;        // of commands, written in the open transaction
  std::unordered_set<std::int64_t> ownRows_;  // and those that were committed
};

}  // namespace qmrules::workbench::repository
