#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/event.h"
#include "platform/fetch.h"
#include "platform/keyedcollection.h"
#include "platform/schema.h"
#include "platform/value.h"

namespace qmrules::platform {

class Database;

// The handle of one repository object. Taken for one step and dropped. Every writing call either takes effect whole,
// with its journal entry, or throws Error and leaves the store as it was.
class Object {
 public:
  virtual ~Object() = default;

  // Entity name, "#", decimal ID, as "RULE#1234".
  virtual std::string Key() const = 0;
  // The same text, under the name by which the current project is asked for it.
  std::string ObjectID() const { return Key(); }

  virtual const platform::EntityDef& EntityDef() const = 0;

  // Reads an attribute, named in any case: the value last put on this handle, else the stored one. Absent when unset.
  // Throws Error for a name that the entity does not have.
  virtual Value Attrs(std::string_view name) const = 0;

  // Changes an attribute; allowed between Edit and Post. Throws Error elsewhere, for an unknown name, and for a value
  // that the attribute's type does not take. An absent value makes the attribute unset, and so does an empty text where
  // the type is no text.
  virtual void Attrs(std::string_view name, const Value& value) = 0;

  virtual void Edit() = 0;

  // Writes the attributes put since Edit and no others, so that a change of other attributes by another process
  // stands. Throws Error when the object is gone or a natural name is taken.
  virtual void Post() = 0;

  // Adds a relation from this object, named in either direction, to the other object. A link that exists stays as it
  // is, without an event.
  virtual void Link(std::string_view relation, std::string_view otherKey) = 0;

  // Removes that relation. Throws Error when the two are not linked so.
  virtual void UnLink(std::string_view relation, std::string_view otherKey) = 0;

  // Deletes the object, its links and all that it owns.
  virtual void Delete() = 0;

  // True when the object is in the project: by its own link, or through the rule set or business function that holds
  // it.
  virtual bool BelongsToProject(std::string_view projectKey) const = 0;
};

// The writes of one command, grouped for the change journal from its making to its end. Scopes nest: an inner one
// counts as part of the outer.
class CommandScope {
 public:
  virtual ~CommandScope() = default;
};

// Writes that take effect together: with Commit, or not at all when it is destroyed before.
class Transaction {
 public:
  virtual ~Transaction() = default;
  // Throws Error when the store refuses; nothing of the transaction has taken effect then.
  virtual void Commit() = 0;
};

// The most changes of other processes that are told one by one.
inline constexpr std::size_t kMostForeignChanges = 500;

// What other processes have changed.
struct ForeignChanges {
  // Keys of the objects that were added, changed, deleted, linked or unlinked, each once, in the order of the changes.
  std::vector<std::string> objects;
  // There were more changes than kMostForeignChanges: none of them is told, everything may have changed.
  bool areTooMany = false;
};

// The catalogue's store. One thread. Events are raised on the calling thread, after the change that they tell of;
// observers may write while they run.
class Repository {
 public:
  virtual ~Repository() = default;

  // Opens the object. Throws Error, naming the key, when it is malformed or names no object.
  virtual std::unique_ptr<Object> object(std::string_view key) = 0;

  // Creates an object of the entity. Throws Error when the entity's natural names are unique and this one is taken,
  // or when the name is empty.
  virtual std::unique_ptr<Object> NewObject(std::string_view entity, std::string_view name) = 0;

  // The object of this entity and exactly this name, in any project; the oldest when there are several; or nullptr.
  virtual std::unique_ptr<Object> FindObject(std::string_view entity, std::string_view name) = 0;

  virtual const platform::Schema& Schema() const = 0;

  // Direct access to the tables by the statements `update T set A=V where C [not] in (...) [and B=W]`, and no others.
  // Writes are journaled; no event tells of them.
  virtual platform::Database& Database() = 0;

  virtual std::unique_ptr<Fetch> NewFetch() = 0;

  // Number of objects of the entity that pass the filter; an empty filter counts all.
  virtual std::int32_t CountObjects(std::string_view entity, const Filter& filter) = 0;

  // Told once, with all keys of a mass deletion, before each object gets Delete. Throws Error for a malformed key.
  virtual void PrepareDelete(const KeyedCollection<std::string>& keys) = 0;

  [[nodiscard]] virtual std::unique_ptr<CommandScope> BeginCommand(std::string_view name) = 0;

  // Begins a transaction; one inside another is part of it, and only the outer Commit writes.
  [[nodiscard]] virtual std::unique_ptr<Transaction> BeginTransaction() = 0;

  // Tells of what other processes have committed since the last call or, for the first one, since the store was opened:
  // raises the events of what they added, deleted, linked and unlinked, in their order, and gives the objects
  // concerned. The store may have moved on meanwhile, so an event's object need not be there any more. Gives nothing
  // while a transaction is open. Costs next to nothing when nothing has changed. Throws Error, with nothing told, when
  // the store cannot be read.
  virtual ForeignChanges TakeForeignChanges() = 0;

  using ObjectObserver = std::function<void(const std::string& objectKey)>;
  using RelationObserver =
      std::function<void(const std::string& fromKey, const std::string& toKey, const RelationDef& relation)>;
  [[nodiscard]] virtual Subscription OnObjectAdded(ObjectObserver observer) = 0;
  [[nodiscard]] virtual Subscription OnObjectDeleted(ObjectObserver observer) = 0;
  [[nodiscard]] virtual Subscription OnLinked(RelationObserver observer) = 0;
  [[nodiscard]] virtual Subscription OnUnLinked(RelationObserver observer) = 0;
};

}  // namespace qmrules::platform
