#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/error.h"
#include "workbench/repository/storedvalue.h"
#include "workbench/repository/storeschema.h"

namespace qmrules::workbench::repository {

class StoreSession;

// An object of the store.
struct ObjectRef {
  const StoreEntity* entity = nullptr;
  std::int32_t id = 0;
  std::string Key() const;
};

// The object that the key names. Throws platform::Error for a malformed key and an unknown entity; whether the object
// stands is not looked at.
ObjectRef ParseRef(const StoreSchema& schema, std::string_view key);
// The same for the key of a project; any other is refused.
ObjectRef ParseProject(const StoreSchema& schema, std::string_view key);

// The object's stored values in the order of the entity's attributes. Throws platform::Error without the object.
std::vector<StoredValue> ReadObject(StoreSession& session, const ObjectRef& object);
bool ObjectExists(StoreSession& session, const ObjectRef& object);
// To be thrown for an object that is gone.
platform::Error NoSuchObject(const ObjectRef& object);

// A new object, with what was stored of it and the session's count of writes right after the insert.
struct InsertedObject {
  ObjectRef object;
  std::vector<StoredValue> values;
  std::uint64_t writes = 0;
};

// A new value for the attribute at a place among the entity's attributes.
using AttributePut = std::pair<std::size_t, StoredValue>;

// Each of these writes, journals and tells as one call: it takes effect whole, or throws and leaves the store as it
// was.
InsertedObject InsertObject(StoreSession& session, const StoreEntity& entity, const std::string& name);
// `known`: the object's stored values, where the caller is sure of them; else nullptr.
void UpdateObject(StoreSession& session, const ObjectRef& object, const std::vector<AttributePut>& puts,
                  const std::vector<StoredValue>* known);
void LinkObjects(StoreSession& session, const ObjectRef& near, std::string_view relation, const ObjectRef& far);
void UnLinkObjects(StoreSession& session, const ObjectRef& near, std::string_view relation, const ObjectRef& far);
// Takes along what the object owns.
void DeleteObject(StoreSession& session, const ObjectRef& object);

}  // namespace qmrules::workbench::repository
