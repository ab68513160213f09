#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qmrules::workbench::repository {

// A literal of a statement: 'text' with each quote in it doubled, a number, or a bare word such as true.
struct StatementLiteral {
  std::string text;
  bool isQuoted = false;
};

// The one kind of statement that the logic writes tables with:
//
//   update VekRULETbl set Priority='Low' where Priority not in ('Low','High')
//   update VekRULETbl set Billable=true where ObjectID in (0,17,42) and Billable=false
//
// Names may begin with a digit and may be words of SQL.
struct ContractStatement {
  std::string table;
  std::string setColumn;
  StatementLiteral setValue;
  std::string listColumn;
  bool isNegated = false;  // "not in"
  std::vector<StatementLiteral> list;
  struct Equality {
    std::string column;
    StatementLiteral value;
  };
  std::optional<Equality> extra;
};

// Throws platform::Error, naming the statement and the column, for any other text.
ContractStatement ParseContractStatement(std::string_view text);

}  // namespace qmrules::workbench::repository
