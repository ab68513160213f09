#include "support/faultyconnection.h"

#include <algorithm>
#include <array>

#include "platform/error.h"

namespace qmrules::test {

namespace {

using workbench::repository::Connection;
using workbench::repository::Statement;

bool IsWriting(std::string_view sql) {
  constexpr std::array<std::string_view, 7> words = {"INSERT", "UPDATE",    "DELETE", "BEGIN",
                                                     "COMMIT", "SAVEPOINT", "RELEASE"};
  return std::any_of(words.begin(), words.end(), [&](auto word) { return sql.starts_with(word); });
}

void Count(Fault& fault) {
  if (++fault.seen == fault.at) throw platform::Error(kFaultText);
}

class FaultyStatement final : public Statement {
 public:
  FaultyStatement(std::unique_ptr<Statement> statement, std::shared_ptr<Fault> fault)
      : statement_(std::move(statement)), fault_(std::move(fault)) {}
  void BindNull(int parameter) override { statement_->BindNull(parameter); }
  void BindInteger(int parameter, std::int64_t value) override { statement_->BindInteger(parameter, value); }
  void BindText(int parameter, std::string_view value) override { statement_->BindText(parameter, value); }
  bool Step() override {
    Count(*fault_);
    return statement_->Step();
  }
  void Reset() override { statement_->Reset(); }
  bool IsNull(int column) const override { return statement_->IsNull(column); }
  bool IsInteger(int column) const override { return statement_->IsInteger(column); }
  std::int64_t Integer(int column) const override { return statement_->Integer(column); }
  std::string_view Text(int column) const override { return statement_->Text(column); }

 private:
  std::unique_ptr<Statement> statement_;
  std::shared_ptr<Fault> fault_;
};

class FaultyConnection final : public Connection {
 public:
  FaultyConnection(std::unique_ptr<Connection> connection, std::shared_ptr<Fault> fault)
      : connection_(std::move(connection)), fault_(std::move(fault)) {}
  std::unique_ptr<Statement> Prepare(std::string_view sql) override {
    auto statement = connection_->Prepare(sql);
    if (!IsWriting(sql)) return statement;
    return std::make_unique<FaultyStatement>(std::move(statement), fault_);
  }
  void Execute(const std::string& sql) override {
    if (!sql.starts_with("ROLLBACK")) Count(*fault_);
    connection_->Execute(sql);
  }
  std::int64_t LastInsertedID() const override { return connection_->LastInsertedID(); }
  std::int64_t ChangedRows() const override { return connection_->ChangedRows(); }
  std::int64_t ForeignVersion() override { return connection_->ForeignVersion(); }
  bool InTransaction() const override { return connection_->InTransaction(); }
  void TakeOver() override { connection_->TakeOver(); }
  const std::string& Name() const override { return connection_->Name(); }

 private:
  std::unique_ptr<Connection> connection_;
  std::shared_ptr<Fault> fault_;
};

}  // namespace

std::unique_ptr<Connection> MakeFaulty(std::unique_ptr<Connection> connection, std::shared_ptr<Fault> fault) {
  return std::make_unique<FaultyConnection>(std::move(connection), std::move(fault));
}

}  // namespace qmrules::test
