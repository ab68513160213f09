#pragma once

#include "platform/database.h"
#include "workbench/repository/contractstatement.h"
#include "workbench/repository/storesession.h"

namespace qmrules::workbench::repository {

// Direct access to the entities' tables. Execute takes the update statement of ContractStatement and nothing else: it
// is parsed, its values are bound by the type of their column, and each changed object is journaled. No event tells of
// it. An unset value meets neither "in" nor "not in" nor "=".
class StoreDatabase final : public platform::Database {
 public:
  explicit StoreDatabase(StoreSession& session) : session_(session) {}

  // Throws platform::Error always: what the catalogue holds is read through a fetch.
  std::unique_ptr<platform::Recordset> OpenRecordset(std::string_view tableOrQuery) override;
  void Execute(std::string_view statement) override;
  std::int64_t RecordsAffected() const override { return recordsAffected_; }

 private:
  StoreSession& session_;
  std::int64_t recordsAffected_ = 0;
};

}  // namespace qmrules::workbench::repository
