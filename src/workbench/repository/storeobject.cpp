#include "workbench/repository/storeobject.h"

#include <fmt/format.h>

#include <algorithm>

#include "platform/error.h"
#include "workbench/repository/membership.h"
#include "workbench/repository/storesession.h"

namespace qmrules::workbench::repository {

using platform::Error;
using platform::Value;

StoreObject::StoreObject(StoreSession& session, const ObjectRef& object) : session_(session), object_(object) {}

StoreObject::StoreObject(StoreSession& session, InsertedObject inserted)
    : session_(session), object_(inserted.object), read_(std::move(inserted.values)), readAt_(inserted.writes) {}

const std::vector<StoredValue>* StoreObject::Known() const {
  const bool isSure = read_ && readAt_ == session_.Writes() && session_.Database().InTransaction();
  return isSure ? &*read_ : nullptr;
}

Value StoreObject::Attrs(std::string_view name) const {
  const std::size_t place = object_.entity->PlaceOf(name);
  const auto type = object_.entity->Attributes()[place]->Type();
  const auto put = std::find_if(puts_.rbegin(), puts_.rend(), [&](const auto& item) { return item.first == place; });
  if (put != puts_.rend()) return FromStored(type, put->second);
  if (!read_ || readAt_ != session_.Writes()) {
    read_ = ReadObject(session_, object_);
    readAt_ = session_.Writes();
  }
  return FromStored(type, (*read_)[place]);
}

void StoreObject::Attrs(std::string_view name, const Value& value) {
  const std::size_t place = object_.entity->PlaceOf(name);
  if (!editing_) throw Error(fmt::format("{} is not open for change: Edit comes before a change of {}.", Key(), name));
  StoredValue stored;
  try {
    stored = ToStored(*object_.entity->Attributes()[place], value);
  } catch (const Error& failure) {
    throw Error(fmt::format("{}, attribute {}", Key(), failure.what()));
  }
  const auto put = std::find_if(puts_.begin(), puts_.end(), [&](const auto& item) { return item.first == place; });
  if (put != puts_.end()) {
    put->second = std::move(stored);
  } else {
    puts_.emplace_back(place, std::move(stored));
  }
}

void StoreObject::Edit() {
  editing_ = true;
}

void StoreObject::Post() {
  if (!editing_) throw Error(fmt::format("{} is not open for change: Edit comes before Post.", Key()));
  UpdateObject(session_, object_, puts_, Known());
  puts_.clear();
  editing_ = false;
  read_.reset();
}

void StoreObject::Link(std::string_view relation, std::string_view otherKey) {
  LinkObjects(session_, object_, relation, ParseRef(session_.Schema(), otherKey));
}

void StoreObject::UnLink(std::string_view relation, std::string_view otherKey) {
  UnLinkObjects(session_, object_, relation, ParseRef(session_.Schema(), otherKey));
}

void StoreObject::Delete() {
  DeleteObject(session_, object_);
}

bool StoreObject::BelongsToProject(std::string_view projectKey) const {
  const auto project = ParseProject(session_.Schema(), projectKey);
  const std::string membership = MembershipSql(session_.Schema(), *object_.entity, "?");
  if (membership.empty()) return false;
  const auto statement = session_.Use("SELECT 1 WHERE " + membership);
  statement->BindInteger(0, object_.id);
  statement->BindInteger(1, project.id);
  return statement->Step();
}

}  // namespace qmrules::workbench::repository
