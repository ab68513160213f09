#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/schema.h"
#include "platform/xml.h"

namespace qmrules::workbench::repository {

class StoreAttribute final : public platform::AttrDef {
 public:
  StoreAttribute(std::string name, platform::AttrType type, std::string caption, bool isSiteOwn);
  const std::string& Name() const override { return name_; }
  platform::AttrType Type() const override { return type_; }
  const std::string& Caption() const override { return caption_; }
  // The column, quoted for SQL.
  const std::string& Column() const { return column_; }
  // True for an attribute of the site's extension.
  bool IsSiteOwn() const { return isSiteOwn_; }

 private:
  std::string name_;
  platform::AttrType type_;
  std::string caption_;
  std::string column_;
  bool isSiteOwn_;
};

struct EntityTraits {
  std::string name;
  std::string caption;
  std::string icon;
  std::int32_t kindFlags = 0;
  bool uniqueNames = false;
  std::string projectRelation;  // "" when objects of the entity are in no project
};

// The statements on an object's row that do not depend on what is written.
struct EntityStatements {
  std::string select;      // all attributes of the object ?
  std::string exists;      // a row when the object ? stands
  std::string insert;      // Name, Created, CreatedBy, Modified, ModifiedBy
  std::string remove;      // of the object ?
  std::string findByName;  // the oldest object of the name ?, null without one
  std::string takenName;   // another object of the name ? than ?
};

class StoreEntity final : public platform::EntityDef {
 public:
  StoreEntity(EntityTraits traits, std::vector<std::unique_ptr<StoreAttribute>> attributes);
  const std::string& Name() const override { return traits_.name; }
  const std::string& Caption() const override { return traits_.caption; }
  const std::string& Icon() const override { return traits_.icon; }
  std::int32_t KindFlags() const override { return traits_.kindFlags; }
  std::span<const platform::AttrDef* const> Attrs() const override { return views_; }
  const StoreAttribute* FindAttr(std::string_view name) const override;

  const std::vector<std::unique_ptr<StoreAttribute>>& Attributes() const { return attributes_; }
  // Place of the attribute among Attributes(). Throws Error, naming entity and attribute, without it.
  std::size_t PlaceOf(std::string_view name) const;
  bool UniqueNames() const { return traits_.uniqueNames; }
  const std::string& ProjectRelation() const { return traits_.projectRelation; }
  // "VekRULETbl", and the same quoted for SQL.
  const std::string& TableName() const { return tableName_; }
  const std::string& Table() const { return table_; }
  const EntityStatements& Statements() const { return statements_; }

 private:
  EntityTraits traits_;
  std::vector<std::unique_ptr<StoreAttribute>> attributes_;
  std::vector<const platform::AttrDef*> views_;
  std::string tableName_;
  std::string table_;
  EntityStatements statements_;
};

enum class OwningEnd { None, From, To };

class StoreRelation final : public platform::RelationDef {
 public:
  struct Traits {
    std::string name;
    std::string directed;
    std::string inverse;
    std::string className;
    OwningEnd owner = OwningEnd::None;
  };
  StoreRelation(Traits traits, const StoreEntity& from, const StoreEntity& to);
  const std::string& Name() const override { return traits_.name; }
  const std::string& DirectedName() const override { return traits_.directed; }
  const std::string& InverseName() const override { return traits_.inverse; }
  const StoreEntity& From() const override { return from_; }
  const StoreEntity& To() const override { return to_; }
  const std::string& ClassName() const { return traits_.className; }
  OwningEnd Owner() const { return traits_.owner; }
  // The table of links, quoted for SQL; its columns are FromID and ToID.
  const std::string& Table() const { return table_; }
  // Statements that make and remove the link from object ? to object ?.
  const std::string& InsertStatement() const { return insert_; }
  const std::string& RemoveStatement() const { return remove_; }
  // True when the name is one of the relation's two, in any case.
  bool IsNamed(std::string_view name) const;

 private:
  Traits traits_;
  const StoreEntity& from_;
  const StoreEntity& to_;
  std::string table_;
  std::string insert_;
  std::string remove_;
};

// A relation as seen from one of its ends, the near one.
struct DirectedRelation {
  const StoreRelation* relation = nullptr;
  bool nearIsFrom = true;
  const StoreEntity& Far() const { return nearIsFrom ? relation->To() : relation->From(); }
  std::string_view NearColumn() const { return nearIsFrom ? "FromID" : "ToID"; }
  std::string_view FarColumn() const { return nearIsFrom ? "ToID" : "FromID"; }
};

// The entities, attributes and relations of a store. Objects of the schema live as long as it does.
class StoreSchema final : public platform::Schema {
 public:
  // The product's schema, with the site's own attributes from `extension` behind it. `extensionName` is the extension's
  // file in messages. Throws Error, naming file, entity and attribute, for an attribute of an unknown type, without a
  // name, or of a name that is taken.
  static std::unique_ptr<StoreSchema> Load(const std::optional<platform::XmlDocument>& extension,
                                           const std::string& extensionName);

  std::span<const platform::EntityDef* const> Entities() const override { return views_; }
  const StoreEntity& Entity(std::string_view name) const override;
  const StoreEntity* FindEntity(std::string_view name) const override;

  const std::vector<std::unique_ptr<StoreEntity>>& AllEntities() const { return entities_; }
  const std::vector<std::unique_ptr<StoreRelation>>& Relations() const { return relations_; }

  // The relation of this name, in either spelling, between the two entities; nothing without one.
  std::optional<DirectedRelation> FindRelation(const StoreEntity& near, std::string_view name,
                                               const StoreEntity& far) const;
  // Every relation of this name that has the entity at one end.
  std::vector<DirectedRelation> FindRelations(const StoreEntity& near, std::string_view name) const;

 private:
  StoreSchema() = default;
  friend class SchemaReader;

  std::vector<std::unique_ptr<StoreEntity>> entities_;
  std::vector<const platform::EntityDef*> views_;
  std::vector<std::unique_ptr<StoreRelation>> relations_;
};

// The name in double quotes, for use as an SQL identifier.
std::string QuoteIdentifier(std::string_view name);

}  // namespace qmrules::workbench::repository
