#pragma once

#include <cctype>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/error.h"
#include "workbench/repository/connection.h"
#include "workbench/repository/sqliteconnection.h"

// A disk that fails at one chosen write: a connection around a real one.
namespace qmrules::test {

// Which write fails, counted from 1 and from now on; nothing: none.
struct WriteFault {
  std::optional<int> failsAt;

  void BeforeWrite() {
    if (failsAt && --*failsAt == 0) {
      failsAt.reset();
      throw platform::Error("repository.db: disk I/O error");
    }
  }
};

class FailingStatement final : public workbench::repository::Statement {
 public:
  FailingStatement(std::unique_ptr<Statement> statement, WriteFault* fault)
      : statement_(std::move(statement)), fault_(fault) {}
  void BindNull(int parameter) override { statement_->BindNull(parameter); }
  void BindInteger(int parameter, std::int64_t value) override { statement_->BindInteger(parameter, value); }
  void BindText(int parameter, std::string_view value) override { statement_->BindText(parameter, value); }
  bool Step() override {
    if (fault_ != nullptr) fault_->BeforeWrite();
    return statement_->Step();
  }
  void Reset() override { statement_->Reset(); }
  bool IsNull(int column) const override { return statement_->IsNull(column); }
  bool IsInteger(int column) const override { return statement_->IsInteger(column); }
  std::int64_t Integer(int column) const override { return statement_->Integer(column); }
  std::string_view Text(int column) const override { return statement_->Text(column); }

 private:
  std::unique_ptr<Statement> statement_;
  WriteFault* fault_;  // null for a statement that writes nothing
};

class FailingConnection final : public workbench::repository::Connection {
 public:
  FailingConnection(std::unique_ptr<Connection> connection, WriteFault& fault)
      : connection_(std::move(connection)), fault_(fault) {}
  std::unique_ptr<workbench::repository::Statement> Prepare(std::string_view sql) override {
    return std::make_unique<FailingStatement>(connection_->Prepare(sql), IsWrite(sql) ? &fault_ : nullptr);
  }
  void Execute(const std::string& sql) override {
    if (IsWrite(sql)) fault_.BeforeWrite();
    connection_->Execute(sql);
  }
  std::int64_t LastInsertedID() const override { return connection_->LastInsertedID(); }
  std::int64_t ChangedRows() const override { return connection_->ChangedRows(); }
  bool InTransaction() const override { return connection_->InTransaction(); }
  void TakeOver() override { connection_->TakeOver(); }
  const std::string& Name() const override { return connection_->Name(); }

 private:
  static bool IsWrite(std::string_view sql) {
    std::string word;
    for (const char character : sql.substr(0, 6)) {
      word += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    }
    return word == "insert" || word == "update" || word == "delete";
  }

  std::unique_ptr<Connection> connection_;
  WriteFault& fault_;
};

// A factory of such connections; the fault outlives them.
inline workbench::repository::ConnectionFactory FailingConnections(WriteFault& fault) {
  return [&fault](const std::string& path) -> std::unique_ptr<workbench::repository::Connection> {
    namespace repository = workbench::repository;
    return std::make_unique<FailingConnection>(repository::OpenSqliteConnection(path, repository::Durability::Relaxed),
                                               fault);
  };
}

}  // namespace qmrules::test
