#include "workbench/repository/storeschema.h"

#include <fmt/format.h>

#include <algorithm>

#include "platform/error.h"
#include "shell/casefold.h"

namespace qmrules::workbench::repository {

using platform::Error;

std::string QuoteIdentifier(std::string_view name) {
  std::string quoted = "\"";
  for (const char character : name) {
    if (character == '"') quoted += '"';
    quoted += character;
  }
  return quoted + '"';
}

StoreAttribute::StoreAttribute(std::string name, platform::AttrType type, std::string caption, bool isSiteOwn)
    : name_(std::move(name)),
      type_(type),
      caption_(std::move(caption)),
      column_(QuoteIdentifier(name_)),
      isSiteOwn_(isSiteOwn) {}

namespace {

EntityStatements MakeStatements(const std::string& table,
                                const std::vector<std::unique_ptr<StoreAttribute>>& attributes) {
  std::string columns;
  for (const auto& attribute : attributes) {
    if (!columns.empty()) columns += ", ";
    columns += attribute->Column();
  }
  EntityStatements statements;
  statements.select = fmt::format("SELECT {} FROM {} WHERE \"ObjectID\" = ?", columns, table);
  statements.exists = fmt::format("SELECT 1 FROM {} WHERE \"ObjectID\" = ?", table);
  statements.insert = fmt::format(
      "INSERT INTO {} (\"Name\", \"Created\", \"CreatedBy\", \"Modified\", \"ModifiedBy\") VALUES (?, ?, ?, ?, ?)",
      table);
  statements.remove = fmt::format("DELETE FROM {} WHERE \"ObjectID\" = ?", table);
  statements.findByName = fmt::format("SELECT MIN(\"ObjectID\") FROM {} WHERE \"Name\" = ?", table);
  statements.takenName = fmt::format("SELECT \"ObjectID\" FROM {} WHERE \"Name\" = ? AND \"ObjectID\" <> ?", table);
  return statements;
}

}  // namespace

StoreEntity::StoreEntity(EntityTraits traits, std::vector<std::unique_ptr<StoreAttribute>> attributes)
    : traits_(std::move(traits)), attributes_(std::move(attributes)) {
  for (const auto& attribute : attributes_) views_.push_back(attribute.get());
  tableName_ = "Vek" + traits_.name + "Tbl";
  table_ = QuoteIdentifier(tableName_);
  statements_ = MakeStatements(table_, attributes_);
}

const StoreAttribute* StoreEntity::FindAttr(std::string_view name) const {
  for (const auto& attribute : attributes_) {
    if (attribute->Name() == name) return attribute.get();
  }
  for (const auto& attribute : attributes_) {
    if (shell::EqualIgnoringCase(attribute->Name(), name)) return attribute.get();
  }
  return nullptr;
}

std::size_t StoreEntity::PlaceOf(std::string_view name) const {
  for (std::size_t place = 0; place < attributes_.size(); ++place) {
    if (attributes_[place]->Name() == name) return place;
  }
  for (std::size_t place = 0; place < attributes_.size(); ++place) {
    if (shell::EqualIgnoringCase(attributes_[place]->Name(), name)) return place;
  }
  throw Error(fmt::format("The entity {} has no attribute \"{}\".", traits_.name, name));
}

StoreRelation::StoreRelation(Traits traits, const StoreEntity& from, const StoreEntity& to)
    : traits_(std::move(traits)), from_(from), to_(to), table_(QuoteIdentifier("Vek" + traits_.name + "Tbl")) {
  insert_ = fmt::format("INSERT INTO {} (\"FromID\", \"ToID\") VALUES (?, ?) ON CONFLICT DO NOTHING", table_);
  remove_ = fmt::format("DELETE FROM {} WHERE \"FromID\" = ? AND \"ToID\" = ?", table_);
}

bool StoreRelation::IsNamed(std::string_view name) const {
  return shell::EqualIgnoringCase(traits_.directed, name) || shell::EqualIgnoringCase(traits_.inverse, name);
}

const StoreEntity* StoreSchema::FindEntity(std::string_view name) const {
  for (const auto& entity : entities_) {
    if (entity->Name() == name) return entity.get();
  }
  for (const auto& entity : entities_) {
    if (shell::EqualIgnoringCase(entity->Name(), name)) return entity.get();
  }
  return nullptr;
}

const StoreEntity& StoreSchema::Entity(std::string_view name) const {
  if (const auto* entity = FindEntity(name)) return *entity;
  throw Error(fmt::format("The repository has no entity \"{}\".", name));
}

std::optional<DirectedRelation> StoreSchema::FindRelation(const StoreEntity& near, std::string_view name,
                                                          const StoreEntity& far) const {
  for (const auto& relation : relations_) {
    const bool nearIsFrom = &relation->From() == &near && &relation->To() == &far;
    const bool nearIsTo = &relation->To() == &near && &relation->From() == &far;
    if ((nearIsFrom || nearIsTo) && relation->IsNamed(name)) return DirectedRelation{relation.get(), nearIsFrom};
  }
  return std::nullopt;
}

std::vector<DirectedRelation> StoreSchema::FindRelations(const StoreEntity& near, std::string_view name) const {
  std::vector<DirectedRelation> found;
  for (const auto& relation : relations_) {
    if (!relation->IsNamed(name)) continue;
    if (&relation->From() == &near) found.push_back({relation.get(), true});
    if (&relation->To() == &near) found.push_back({relation.get(), false});
  }
  return found;
}

}  // namespace qmrules::workbench::repository
