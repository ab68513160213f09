#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace qmrules::workbench::repository {

// One prepared statement. Parameters and columns count from 0.
class Statement {
 public:
  virtual ~Statement() = default;

  virtual void BindNull(int parameter) = 0;
  virtual void BindInteger(int parameter, std::int64_t value) = 0;
  virtual void BindText(int parameter, std::string_view value) = 0;
  // As BindText, for a text that stays where it is until the statement is reset, which spares a copy.
  virtual void BindTextInPlace(int parameter, std::string_view value) { BindText(parameter, value); }

  // Moves to the next row; false past the last one. Throws platform::Error when the store refuses.
  virtual bool Step() = 0;
  // Ready to be run again; forgets the bound values.
  virtual void Reset() = 0;

  virtual bool IsNull(int column) const = 0;
  virtual bool IsInteger(int column) const = 0;
  virtual std::int64_t Integer(int column) const = 0;
  // The column as text, "" for null; good until the next Step or Reset.
  virtual std::string_view Text(int column) const = 0;
};

// What the store asks of an SQL database: portable statements, transactions and savepoints by their SQL words, and the
// few things that databases spell differently. A connection belongs to one thread.
class Connection {
 public:
  virtual ~Connection() = default;

  // Throws platform::Error, naming the database and the statement, when it is refused.
  virtual std::unique_ptr<Statement> Prepare(std::string_view sql) = 0;
  // Runs statements without parameters or rows.
  virtual void Execute(const std::string& sql) = 0;
  // The ObjectID that the last insert was given.
  virtual std::int64_t LastInsertedID() const = 0;
  // Rows changed by the last statement that changes rows.
  virtual std::int64_t ChangedRows() const = 0;
  virtual bool InTransaction() const = 0;
  // A number that is another one once another connection has committed.
  virtual std::int64_t ForeignVersion() = 0;
  // Puts in place what the database keeps in its own file, outside any transaction. Called only for a file that is
  // known to be the store's: another program's stays as it is.
  virtual void TakeOver() = 0;
  // The database's name in messages: its file.
  virtual const std::string& Name() const = 0;
};

using ConnectionFactory = std::function<std::unique_ptr<Connection>(const std::string& path)>;

}  // namespace qmrules::workbench::repository
