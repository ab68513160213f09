#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/fetch.h"
#include "workbench/repository/fetchcompiler.h"
#include "workbench/repository/rowspool.h"
#include "workbench/repository/storesession.h"

namespace qmrules::workbench::repository {

// A fetch over the store. While nothing is written, rows are read from the database one by one. The first write that
// happens during the walk finds it registered with the session: the current row and those still to come are then put
// aside in a spool, and the walk goes on there. So it shows the store as at Execute without holding the rows in memory,
// and a walk that is not written into pays nothing for it.
class StoreFetch final : public platform::Fetch,
                         private platform::RowValues,
                         private platform::FetchRow,
                         private RowWalk {
 public:
  explicit StoreFetch(StoreSession& session) : session_(session) {}
  ~StoreFetch() override;
  StoreFetch(const StoreFetch&) = delete;
  StoreFetch& operator=(const StoreFetch&) = delete;

  platform::ObjectNode AddObject(bool inProject, std::optional<std::string_view> entity, std::string_view fetchList,
                                 const platform::Filter& filter,
                                 std::optional<platform::RelationNode> related) override;
  platform::RelationNode AddRelation(std::string_view relation, bool inProject, std::string_view fetchList,
                                     platform::ObjectNode target) override;
  platform::RelationNode AddCount(std::string_view relation, bool inProject, std::string_view alias) override;
  void SetRoot(platform::ObjectNode node) override;
  bool Execute(std::string_view projectKey) override;
  bool Eof() const override { return state_ == State::End; }
  const FetchRow& Row() const override;
  void MoveNext() override;
  void Reset() override;

 private:
  enum class State { End, Live, Spooled, Broken };

  platform::FetchField Item(std::string_view name) const override;
  platform::Value ValueAt(std::size_t column) const override;
  std::string TextAt(std::size_t column) const override;
  void BeforeWrite() noexcept override;
  void PutAside();

  void StopLiveWalk();
  void ReadLiveRow(std::vector<StoredValue>& row) const;

  StoreSession& session_;
  FetchPath path_;
  std::vector<OutputColumn> columns_;
  State state_ = State::End;
  std::optional<StatementLoan> statement_;
  std::unique_ptr<RowSpool> spool_;
  std::vector<StoredValue> spooledRow_;
  std::exception_ptr failure_;  // why the walk is broken
};

// A filter as it is declared on a node: parsed, with its text. Throws platform::Error for a malformed one.
void DeclareFilter(DeclaredNode& node, const platform::Filter& filter);

}  // namespace qmrules::workbench::repository
