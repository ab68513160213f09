#include "workbench/repository/storesession.h"

#include <fmt/format.h>

#include <algorithm>

#include "platform/error.h"

namespace qmrules::workbench::repository {

namespace {

using platform::Error;

// More different statements than this are not worth keeping: a program's own are fewer, and the rest are one-time
// texts.
constexpr std::size_t kKeptStatements = 256;

// Undoing goes on after a failure, and its own failure adds nothing to the one that is already on its way up: the
// database has then undone the transaction itself.
void UndoAfterFailure(Connection& connection, const std::string& sql) {
  if (!connection.InTransaction()) return;
  try {
    connection.Execute(sql);
  } catch (const Error&) {
    if (connection.InTransaction()) std::terminate();
  }
}

}  // namespace

StatementLoan::StatementLoan(std::shared_ptr<IdleStatements> home, std::unique_ptr<Statement> statement)
    : home_(std::move(home)), statement_(std::move(statement)) {}

StatementLoan::~StatementLoan() {
  if (!statement_) return;
  statement_->Reset();
  home_->push_back(std::move(statement_));
}

StoreSession::StoreSession(std::unique_ptr<Connection> connection, std::unique_ptr<StoreSchema> schema,
                           const platform::Clock& clock, std::string userName)
    : connection_(std::move(connection)),
      schema_(std::move(schema)),
      clock_(clock),
      userName_(std::move(userName)),
      journal_(*this) {}

const std::string& StoreSession::Now() {
  const auto moment = clock_.Now();
  if (now_.empty() || moment != moment_) {
    now_ = platform::FormatTimestamp(moment);
    moment_ = moment;
  }
  return now_;
}

StatementLoan StoreSession::Use(const std::string& sql) {
  const auto kept = statements_.find(sql);
  if (kept != statements_.end()) {
    const auto& home = kept->second;
    if (home->empty()) return {home, connection_->Prepare(sql)};
    auto statement = std::move(home->back());
    home->pop_back();
    return {home, std::move(statement)};
  }
  auto statement = connection_->Prepare(sql);
  // Those on loan go back to a home that nobody asks any more, and end with it.
  if (statements_.size() >= kKeptStatements) statements_.clear();
  const auto home = statements_.emplace(sql, std::make_shared<IdleStatements>()).first->second;
  return {home, std::move(statement)};
}

void StoreSession::EndWalk(RowWalk& walk) {
  std::erase(walks_, &walk);
}

void StoreSession::PutWalksAside() noexcept {
  ++writes_;
  for (auto* walk : walks_) walk->BeforeWrite();
  walks_.clear();
}

Error StoreSession::GivenUp(std::string_view consequence) const {
  return Error(
      fmt::format("The transaction on \"{}\" was given up after a failure; {}.", connection_->Name(), consequence));
}

void StoreSession::EnterTransaction() {
  if (transactions_ == 0) {
    PutWalksAside();
    connection_->Execute("BEGIN IMMEDIATE");
    standing_.Clear();
    abandoned_ = false;
  }
  ++transactions_;
}

void StoreSession::CommitTransaction() {
  if (transactions_ > 1) {
    --transactions_;
    return;
  }
  if (abandoned_ || !connection_->InTransaction()) {
    LeaveTransaction();
    throw GivenUp("nothing of it was written");
  }
  PutWalksAside();
  try {
    journal_.WriteHeld();
    connection_->Execute("COMMIT");
  } catch (...) {
    LeaveTransaction();
    throw;
  }
  --transactions_;
  standing_.Clear();
  journal_.AfterCommit();
}

void StoreSession::LeaveTransaction() {
  --transactions_;
  if (transactions_ > 0) {
    abandoned_ = true;
    return;
  }
  PutWalksAside();
  standing_.Clear();
  UndoAfterFailure(*connection_, "ROLLBACK");
  journal_.AfterRollback();
}

void StoreSession::EnterCommand(std::string_view name) {
  if (commands_++ == 0) journal_.BeginCommand(name);
}

void StoreSession::LeaveCommand() {
  if (--commands_ == 0) journal_.EndCommand();
}

WriteScope::WriteScope(StoreSession& session, WriteSize size) : session_(session), means_(Means::Transaction) {
  if (session.transactions_ > 0) means_ = size == WriteSize::Several ? Means::Savepoint : Means::None;
  session_.PutWalksAside();
  if (means_ != Means::Transaction && !session_.connection_->InTransaction()) {
    throw session_.GivenUp("nothing more is written in it");
  }
  // What came before is not to be undone with this call.
  if (means_ == Means::Savepoint) session_.journal_.WriteHeld();
  session_.journal_.MakeRoom();
  commandRow_ = session_.journal_.RowOfCommand();
  if (means_ == Means::Savepoint) session_.Use("SAVEPOINT writing")->Step();
  if (means_ == Means::Transaction) {
    session_.Use("BEGIN IMMEDIATE")->Step();
    session_.abandoned_ = false;
  }
  ++session_.transactions_;
}

WriteScope::~WriteScope() {
  if (!open_) return;
  --session_.transactions_;
  if (means_ == Means::None) return;
  // Observers may have begun walks that read what is now undone.
  session_.PutWalksAside();
  session_.standing_.Clear();
  if (means_ == Means::Savepoint) {
    UndoAfterFailure(*session_.connection_, "ROLLBACK TO writing; RELEASE writing");
    session_.journal_.AfterPartialRollback(commandRow_);
  } else {
    UndoAfterFailure(*session_.connection_, "ROLLBACK");
    session_.journal_.AfterRollback();
  }
}

void WriteScope::Complete() {
  if (means_ == Means::Transaction) {
    if (session_.abandoned_ || !session_.connection_->InTransaction())
      throw session_.GivenUp("nothing of it was written");
    session_.journal_.WriteHeld();
    session_.PutWalksAside();
    session_.Use("COMMIT")->Step();
  } else {
    ++session_.writes_;
    if (means_ == Means::Savepoint) session_.Use("RELEASE writing")->Step();
  }
  open_ = false;
  --session_.transactions_;
  if (means_ != Means::Transaction) return;
  session_.standing_.Clear();
  session_.journal_.AfterCommit();
}

}  // namespace qmrules::workbench::repository
