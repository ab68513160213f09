#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace qmrules::platform {

enum class AttrType { LongText, Boolean, Integer, Char, Timestamp };

// "LONGTEXT", "BOOLEAN", "INTEGER", "CHAR", "TIMESTAMP".
std::string_view AttrTypeName(AttrType type);

// One attribute of an entity. `ID` is no attribute: every object has one besides.
class AttrDef {
 public:
  virtual ~AttrDef() = default;
  virtual const std::string& Name() const = 0;
  virtual AttrType Type() const = 0;
  // The label shown to the user and used in activity texts.
  virtual const std::string& Caption() const = 0;
};

class EntityDef {
 public:
  virtual ~EntityDef() = default;
  virtual const std::string& Name() const = 0;
  virtual const std::string& Caption() const = 0;
  // File name of the entity's picture, within the folder "Icons"; "" for none.
  virtual const std::string& Icon() const = 0;
  // Bits that class entities together: two entities are of a kind when their flags have a common bit.
  virtual std::int32_t KindFlags() const = 0;
  // In schema order: the product's attributes first, then the site's own.
  virtual std::span<const AttrDef* const> Attrs() const = 0;
  // The attribute of this name, in any case, or nullptr.
  virtual const AttrDef* FindAttr(std::string_view name) const = 0;
};

// A directed relation between two entities. It has one name in each direction.
class RelationDef {
 public:
  virtual ~RelationDef() = default;
  // The name by which events tell of the relation, such as "RuleSetHasRule".
  virtual const std::string& Name() const = 0;
  virtual const std::string& DirectedName() const = 0;  // "Has"
  virtual const std::string& InverseName() const = 0;   // "BelongsToRuleSet"
  virtual const EntityDef& From() const = 0;
  virtual const EntityDef& To() const = 0;
};

class Schema {
 public:
  virtual ~Schema() = default;
  virtual std::span<const EntityDef* const> Entities() const = 0;
  // The entity of this name, in any case. Throws Error without one.
  virtual const EntityDef& Entity(std::string_view name) const = 0;
  // The same, or nullptr.
  virtual const EntityDef* FindEntity(std::string_view name) const = 0;
};

}  // namespace qmrules::platform
