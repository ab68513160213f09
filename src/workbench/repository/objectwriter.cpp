#include "workbench/repository/objectwriter.h"

#include <fmt/format.h>

#include <algorithm>

#include "platform/error.h"
#include "platform/objectkey.h"
#include "workbench/repository/storesession.h"

namespace qmrules::workbench::repository {

using platform::Error;

namespace {

DirectedRelation Resolve(const StoreSession& session, const ObjectRef& near, std::string_view relation,
                         const ObjectRef& far) {
  if (const auto found = session.Schema().FindRelation(*near.entity, relation, *far.entity)) return *found;
  throw Error(fmt::format("{} and {} cannot be linked by \"{}\": {} and {} have no such relation.", near.Key(),
                          far.Key(), relation, near.entity->Name(), far.entity->Name()));
}

// The two objects of a link in the relation's own direction.
struct LinkEnds {
  const ObjectRef& from;
  const ObjectRef& to;
};

LinkEnds Order(const DirectedRelation& directed, const ObjectRef& near, const ObjectRef& far) {
  return directed.nearIsFrom ? LinkEnds{near, far} : LinkEnds{far, near};
}

bool ChangeLink(StoreSession& session, const std::string& sql, const LinkEnds& ends) {
  const auto statement = session.Use(sql);
  statement->BindInteger(0, ends.from.id);
  statement->BindInteger(1, ends.to.id);
  statement->Step();
  return session.Database().ChangedRows() > 0;
}

bool RemoveLink(StoreSession& session, const StoreRelation& relation, const LinkEnds& ends) {
  auto entry = LinkEntry(JournalAction::UnLink, ends.from.Key(), ends.to.Key(), relation);
  session.Journal().MakeRoom();
  const bool removed = ChangeLink(session, relation.RemoveStatement(), ends);
  if (removed) session.Journal().Append(std::move(entry));
  return removed;
}

void RefuseTakenName(StoreSession& session, const StoreEntity& entity, const StoredValue& name, std::int32_t ownID) {
  if (!entity.UniqueNames()) return;
  const auto statement = session.Use(entity.Statements().takenName);
  Bind(*statement, 0, name);
  statement->BindInteger(1, ownID);
  if (!statement->Step()) return;
  throw Error(fmt::format("{} \"{}\" exists already as {}; choose another name.", entity.Caption(),
                          std::holds_alternative<std::string>(name) ? std::get<std::string>(name) : "",
                          platform::MakeKey(entity.Name(), static_cast<std::int32_t>(statement->Integer(0)))));
}

void RefuseEmptyName(const StoreEntity& entity, const StoredValue& name) {
  const auto* text = std::get_if<std::string>(&name);
  if (text == nullptr || text->empty()) throw Error(fmt::format("A {} needs a name.", entity.Caption()));
}

}  // namespace

Error NoSuchObject(const ObjectRef& object) {
  return Error(fmt::format("There is no object {}; it may have been deleted.", object.Key()));
}

std::string ObjectRef::Key() const {
  std::string key = entity->Name();
  key += '#';
  key += std::to_string(id);
  return key;
}

ObjectRef ParseRef(const StoreSchema& schema, std::string_view key) {
  const auto parts = platform::SplitKey(key);
  return {&schema.Entity(parts.entity), parts.id};
}

ObjectRef ParseProject(const StoreSchema& schema, std::string_view key) {
  const auto project = ParseRef(schema, key);
  if (project.entity->Name() != "PROJECT") throw Error(fmt::format("{} is no project.", key));
  return project;
}

bool ObjectExists(StoreSession& session, const ObjectRef& object) {
  if (session.Standing().Has(*object.entity, object.id)) return true;
  const auto statement = session.Use(object.entity->Statements().exists);
  statement->BindInteger(0, object.id);
  if (!statement->Step()) return false;
  if (session.Database().InTransaction()) session.Standing().Add(*object.entity, object.id);
  return true;
}

std::vector<StoredValue> ReadObject(StoreSession& session, const ObjectRef& object) {
  const auto statement = session.Use(object.entity->Statements().select);
  statement->BindInteger(0, object.id);
  if (!statement->Step()) throw NoSuchObject(object);
  std::vector<StoredValue> values;
  values.reserve(object.entity->Attributes().size());
  for (int column = 0; column < static_cast<int>(object.entity->Attributes().size()); ++column) {
    values.push_back(ReadStored(*statement, column));
  }
  return values;
}

InsertedObject InsertObject(StoreSession& session, const StoreEntity& entity, const std::string& name) {
  const auto attribute = [&](std::string_view attributeName) {
    return entity.Attributes()[entity.PlaceOf(attributeName)].get();
  };
  const std::string now = session.Now();
  std::vector<AttributeChange> changes;
  changes.reserve(5);
  changes.push_back({attribute("Name"), {}, ToStored(*attribute("Name"), platform::Value(name))});
  changes.push_back({attribute("Created"), {}, now});
  changes.push_back({attribute("CreatedBy"), {}, session.UserName()});
  changes.push_back({attribute("Modified"), {}, now});
  changes.push_back({attribute("ModifiedBy"), {}, session.UserName()});
  RefuseEmptyName(entity, changes.front().after);
  auto entry = ChangeEntry(JournalAction::Add, entity.Name(), changes);

  WriteScope scope(session, WriteSize::OneStatement);
  RefuseTakenName(session, entity, changes.front().after, 0);
  InsertedObject inserted{{&entity, 0}, std::vector<StoredValue>(entity.Attributes().size()), 0};
  for (const auto& change : changes) inserted.values[entity.PlaceOf(change.attribute->Name())] = change.after;
  {
    const auto statement = session.Use(entity.Statements().insert);
    int parameter = 0;
    for (const auto& change : changes) BindInPlace(*statement, parameter++, change.after);
    statement->Step();
    inserted.object.id = static_cast<std::int32_t>(session.Database().LastInsertedID());
  }
  entry.SetAddedID(inserted.object.id);
  session.Journal().Append(std::move(entry));
  scope.Complete();
  inserted.writes = session.Writes();
  if (session.Database().InTransaction()) session.Standing().Add(entity, inserted.object.id);
  if (session.Events().objectAdded.HasObservers()) session.Events().objectAdded.Raise(inserted.object.Key());
  return inserted;
}

namespace {

std::string UpdateSql(const StoreEntity& entity, const std::vector<AttributeChange>& changes) {
  std::string sql = "UPDATE " + entity.Table() + " SET ";
  for (const auto& change : changes) {
    if (&change != &changes.front()) sql += ", ";
    sql += change.attribute->Column();
    sql += " = ?";
  }
  sql += " WHERE \"ObjectID\" = ?";
  return sql;
}

// What the puts change. The write notes who did it and when, unless the caller has put these itself (an import).
std::vector<AttributeChange> ChangesOf(StoreSession& session, const ObjectRef& object,
                                       const std::vector<AttributePut>& puts, const std::vector<StoredValue>& before) {
  const auto& entity = *object.entity;
  std::vector<AttributeChange> changes;
  changes.reserve(puts.size() + 2);
  const auto add = [&](std::size_t place, const StoredValue& value) {
    if (value != before[place]) changes.push_back({entity.Attributes()[place].get(), before[place], value});
  };
  for (const auto& [place, value] : puts) add(place, value);
  for (const auto& change : changes) {
    if (change.attribute->Name() != "Name") continue;
    RefuseEmptyName(entity, change.after);
    RefuseTakenName(session, entity, change.after, object.id);
  }
  const auto addUnlessPut = [&](std::string_view name, const std::string& value) {
    const std::size_t place = entity.PlaceOf(name);
    const bool isPut = std::any_of(puts.begin(), puts.end(), [&](const auto& put) { return put.first == place; });
    if (!isPut) add(place, value);
  };
  addUnlessPut("Modified", session.Now());
  addUnlessPut("ModifiedBy", session.UserName());
  return changes;
}

}  // namespace

void UpdateObject(StoreSession& session, const ObjectRef& object, const std::vector<AttributePut>& puts,
                  const std::vector<StoredValue>* known) {
  if (puts.empty()) {
    if (!ObjectExists(session, object)) throw NoSuchObject(object);
    return;
  }
  const auto& entity = *object.entity;
  WriteScope scope(session, WriteSize::OneStatement);
  const auto read = known == nullptr ? ReadObject(session, object) : std::vector<StoredValue>();
  const auto changes = ChangesOf(session, object, puts, known == nullptr ? read : *known);
  auto entry = ChangeEntry(JournalAction::Edit, object.Key(), changes);
  if (!changes.empty()) {
    const auto statement = session.Use(UpdateSql(entity, changes));
    int parameter = 0;
    for (const auto& change : changes) BindInPlace(*statement, parameter++, change.after);
    statement->BindInteger(parameter, object.id);
    statement->Step();
  }
  session.Journal().Append(std::move(entry));
  scope.Complete();
}

void LinkObjects(StoreSession& session, const ObjectRef& near, std::string_view relation, const ObjectRef& far) {
  const auto directed = Resolve(session, near, relation, far);
  const auto ends = Order(directed, near, far);
  auto entry = LinkEntry(JournalAction::Link, ends.from.Key(), ends.to.Key(), *directed.relation);
  WriteScope scope(session, WriteSize::OneStatement);
  for (const auto* end : {&near, &far}) {
    if (!ObjectExists(session, *end)) throw Error(fmt::format("There is no object {} to link.", end->Key()));
  }
  const bool isNew = ChangeLink(session, directed.relation->InsertStatement(), ends);
  if (isNew) session.Journal().Append(std::move(entry));
  scope.Complete();
  if (!isNew) return;
  if (session.Events().linked.HasObservers()) {
    session.Events().linked.Raise(ends.from.Key(), ends.to.Key(), *directed.relation);
  }
}

void UnLinkObjects(StoreSession& session, const ObjectRef& near, std::string_view relation, const ObjectRef& far) {
  const auto directed = Resolve(session, near, relation, far);
  const auto ends = Order(directed, near, far);
  WriteScope scope(session, WriteSize::OneStatement);
  if (!RemoveLink(session, *directed.relation, ends)) {
    throw Error(fmt::format("{} and {} are not linked by \"{}\".", near.Key(), far.Key(), relation));
  }
  scope.Complete();
  if (session.Events().unLinked.HasObservers()) {
    session.Events().unLinked.Raise(ends.from.Key(), ends.to.Key(), *directed.relation);
  }
}

namespace {

// Deletes one object after another within the one call, owned objects before their owner.
class Deletion {
 public:
  explicit Deletion(StoreSession& session) : session_(session) {}

  void Delete(const ObjectRef& object) {
    const auto before = ReadObject(session_, object);
    for (const auto& relation : session_.Schema().Relations()) {
      if (&relation->From() == object.entity) RemoveLinks(object, {relation.get(), true});
      if (&relation->To() == object.entity) RemoveLinks(object, {relation.get(), false});
    }
    std::vector<AttributeChange> changes;
    for (std::size_t place = 0; place < before.size(); ++place) {
      if (!std::holds_alternative<std::monostate>(before[place])) {
        changes.push_back({object.entity->Attributes()[place].get(), before[place], {}});
      }
    }
    session_.Standing().Clear();
    auto entry = ChangeEntry(JournalAction::Delete, object.Key(), changes);
    session_.Journal().MakeRoom();
    {
      const auto statement = session_.Use(object.entity->Statements().remove);
      statement->BindInteger(0, object.id);
      statement->Step();
    }
    session_.Journal().Append(std::move(entry));
    deleted_.push_back(object.Key());
  }

  const std::vector<std::string>& Deleted() const { return deleted_; }

 private:
  // An observer of a removed link may have to ask what the object is still linked to, so it is told while the object
  // and the links that come later stand.
  void RemoveLinks(const ObjectRef& object, const DirectedRelation& directed) {
    const auto& relation = *directed.relation;
    const bool owns = relation.Owner() == (directed.nearIsFrom ? OwningEnd::From : OwningEnd::To);
    for (const auto& far : LinkedObjects(object, directed)) {
      const auto ends = Order(directed, object, far);
      if (RemoveLink(session_, relation, ends) && session_.Events().unLinked.HasObservers()) {
        session_.Events().unLinked.Raise(ends.from.Key(), ends.to.Key(), relation);
      }
      // The observer may have deleted it already.
      if (owns && ObjectExists(session_, far)) Delete(far);
    }
  }

  std::vector<ObjectRef> LinkedObjects(const ObjectRef& object, const DirectedRelation& directed) {
    const auto statement = session_.Use(fmt::format("SELECT \"{}\" FROM {} WHERE \"{}\" = ?", directed.FarColumn(),
                                                    directed.relation->Table(), directed.NearColumn()));
    statement->BindInteger(0, object.id);
    std::vector<ObjectRef> linked;
    while (statement->Step()) linked.push_back({&directed.Far(), static_cast<std::int32_t>(statement->Integer(0))});
    return linked;
  }

  StoreSession& session_;
  std::vector<std::string> deleted_;
};

}  // namespace

void DeleteObject(StoreSession& session, const ObjectRef& object) {
  WriteScope scope(session);
  Deletion deletion(session);
  deletion.Delete(object);
  scope.Complete();
  for (const auto& key : deletion.Deleted()) session.Events().objectDeleted.Raise(key);
}

}  // namespace qmrules::workbench::repository
