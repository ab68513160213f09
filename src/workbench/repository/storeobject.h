#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/repository.h"
#include "workbench/repository/objectwriter.h"

namespace qmrules::workbench::repository {

class StoreObject final : public platform::Object {
 public:
  // The object stands.
  StoreObject(StoreSession& session, const ObjectRef& object);
  StoreObject(StoreSession& session, InsertedObject inserted);

  std::string Key() const override { return object_.Key(); }
  const platform::EntityDef& EntityDef() const override { return *object_.entity; }
  platform::Value Attrs(std::string_view name) const override;
  void Attrs(std::string_view name, const platform::Value& value) override;
  void Edit() override;
  void Post() override;
  void Link(std::string_view relation, std::string_view otherKey) override;
  void UnLink(std::string_view relation, std::string_view otherKey) override;
  void Delete() override;
  bool BelongsToProject(std::string_view projectKey) const override;

 private:
  // The stored values while they cannot have changed: read within the transaction that is open, and nothing was written
  // since. Else nullptr.
  const std::vector<StoredValue>* Known() const;

  StoreSession& session_;
  ObjectRef object_;
  mutable std::optional<std::vector<StoredValue>> read_;
  mutable std::uint64_t readAt_ = 0;  // the session's writes when `read_` was read
  std::vector<AttributePut> puts_;
  bool editing_ = false;
};

}  // namespace qmrules::workbench::repository
