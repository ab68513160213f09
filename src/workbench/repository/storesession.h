#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/clock.h"
#include "platform/error.h"
#include "platform/event.h"
#include "platform/schema.h"
#include "workbench/repository/connection.h"
#include "workbench/repository/journal.h"
#include "workbench/repository/storeschema.h"

namespace qmrules::workbench::repository {

class StoreSession;

// Prepared statements of one text that are not in use.
using IdleStatements = std::vector<std::unique_ptr<Statement>>;

// A prepared statement on loan; it goes back, reset, when the loan ends.
class StatementLoan {
 public:
  StatementLoan(std::shared_ptr<IdleStatements> home, std::unique_ptr<Statement> statement);
  ~StatementLoan();
  StatementLoan(StatementLoan&&) noexcept = default;
  StatementLoan& operator=(StatementLoan&&) = delete;
  StatementLoan(const StatementLoan&) = delete;
  StatementLoan& operator=(const StatementLoan&) = delete;
  Statement* operator->() const { return statement_.get(); }
  Statement& operator*() const { return *statement_; }

 private:
  std::shared_ptr<IdleStatements> home_;
  std::unique_ptr<Statement> statement_;
};

// A walk over rows that reads from the database as it goes. It is told before the database changes, and puts the rows
// still to come aside then. When it cannot, it is the walk that fails, at its next step, and not the write.
class RowWalk {
 public:
  virtual ~RowWalk() = default;
  virtual void BeforeWrite() noexcept = 0;
};

// The last few objects that were seen to stand in the transaction that is open. It keeps other processes from writing,
// so they stand until an object is deleted or something is undone.
class StandingObjects {
 public:
  bool Has(const StoreEntity& entity, std::int32_t id) const {
    return std::find(objects_.begin(), objects_.end(), Standing{&entity, id}) != objects_.end();
  }
  void Add(const StoreEntity& entity, std::int32_t id) { objects_[next_++ % objects_.size()] = {&entity, id}; }
  void Clear() { objects_.fill({}); }

 private:
  struct Standing {
    const StoreEntity* entity = nullptr;
    std::int32_t id = 0;
    friend bool operator==(const Standing&, const Standing&) = default;
  };
  std::array<Standing, 16> objects_ = {};
  std::size_t next_ = 0;
};

struct StoreEvents {
  platform::Event<std::string> objectAdded;
  platform::Event<std::string> objectDeleted;
  platform::Event<std::string, std::string, const platform::RelationDef&> linked;
  platform::Event<std::string, std::string, const platform::RelationDef&> unLinked;
};

// What the parts of one opened store share: the connection with its statements, the schema, the walks that are under
// way, the journal and the events.
class StoreSession {
 public:
  StoreSession(std::unique_ptr<Connection> connection, std::unique_ptr<StoreSchema> schema,
               const platform::Clock& clock, std::string userName);

  Connection& Database() { return *connection_; }
  const StoreSchema& Schema() const { return *schema_; }
  StoreEvents& Events() { return events_; }
  const std::string& UserName() const { return userName_; }
  // The present moment as the store keeps moments.
  const std::string& Now();

  // A statement of this text, used before or prepared now.
  StatementLoan Use(const std::string& sql);

  void BeginWalk(RowWalk& walk) { walks_.push_back(&walk); }
  void EndWalk(RowWalk& walk);

  // How often the store was written to or rolled back; what was read at another count may have changed.
  std::uint64_t Writes() const { return writes_; }

  CommandJournal& Journal() { return journal_; }
  StandingObjects& Standing() { return standing_; }

  // Nesting of transactions and commands; see Store.
  void EnterTransaction();
  void CommitTransaction();
  void LeaveTransaction();
  void EnterCommand(std::string_view name);
  void LeaveCommand();

 private:
  friend class WriteScope;

  void PutWalksAside() noexcept;
  platform::Error GivenUp(std::string_view consequence) const;

  std::unique_ptr<Connection> connection_;
  std::unique_ptr<StoreSchema> schema_;
  const platform::Clock& clock_;
  std::string userName_;
  platform::Timestamp moment_;  // that `now_` tells
  std::string now_;
  // Before the journal, which uses statements of its own.
  std::unordered_map<std::string, std::shared_ptr<IdleStatements>> statements_;
  std::vector<RowWalk*> walks_;
  StoreEvents events_;
  CommandJournal journal_;
  StandingObjects standing_;
  std::uint64_t writes_ = 0;
  int transactions_ = 0;
  bool abandoned_ = false;  // an inner transaction was not committed: the outer one, or the call around it, must not be
  int commands_ = 0;
};

// How much a writing call changes besides the journal. One statement takes effect whole or not at all by itself.
enum class WriteSize { OneStatement, Several };

// One writing call. What is written between its making and Complete() takes effect together or, when it is destroyed
// before, not at all: in a transaction of its own, or as part of the one that is open. There is room for one entry of
// the journal. With OneStatement the entry is appended after the statement and nothing fails between it and Complete().
class WriteScope {
 public:
  explicit WriteScope(StoreSession& session, WriteSize size = WriteSize::Several);
  ~WriteScope();
  WriteScope(const WriteScope&) = delete;
  WriteScope& operator=(const WriteScope&) = delete;
  void Complete();

 private:
  enum class Means { Transaction, Savepoint, None };

  StoreSession& session_;
  Means means_;
  std::int64_t commandRow_ = 0;  // the command's row in the journal when the scope began
  bool open_ = true;
};

}  // namespace qmrules::workbench::repository
