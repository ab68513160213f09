#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sourcemodel.h"
#include "workbench/codemodel/vocabulary.h"

namespace qmrules::workbench::codemodel {

class EntityTable;

class CodeRelation final : public platform::ModelRelation {
 public:
  CodeRelation(const EntityTable& table, const RelationSpec& spec) : table_(table), spec_(spec) {}
  std::string_view Name() const override { return spec_.name; }
  int Kind() const override { return spec_.kind; }
  const platform::ModelEntity& Target() const override;
  const RelationSpec& Spec() const { return spec_; }

 private:
  const EntityTable& table_;
  const RelationSpec& spec_;
};

class CodeEntity final : public platform::ModelEntity {
 public:
  CodeEntity(const EntityTable& table, Entity entity);
  std::string_view Name() const override { return NameOf(entity_); }
  std::vector<const platform::ModelRelation*> Relations() const override;
  const CodeRelation* Relation(std::string_view name) const override;
  std::vector<std::string> Attributes() const override;
  bool HasAttribute(std::string_view name) const override { return !Attribute(name).empty(); }
  // The attribute as the vocabulary writes it, or "".
  std::string_view Attribute(std::string_view name) const;

 private:
  Entity entity_;
  std::vector<CodeRelation> relations_;
};

// The vocabulary as the rule manager asks for it. It never changes and is the same for all models.
class EntityTable {
 public:
  static const EntityTable& Get();

  const CodeEntity& Of(Entity entity) const { return *entities_[static_cast<std::size_t>(entity)]; }
  // All of it as an XML text:
  //   <model name="COBOL"><entity name="STAT"><attribute name="Verb"/><relation name="IF" kind="1"
  //   target="IF"/></entity>
  std::string Definition(std::string_view modelName) const;

 private:
  EntityTable();
  std::array<std::unique_ptr<const CodeEntity>, kEntities> entities_;
};

}  // namespace qmrules::workbench::codemodel
