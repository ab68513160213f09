#include "workbench/codemodel/entitytable.h"

#include <fmt/format.h>

#include "shell/casefold.h"
#include "shell/text.h"

namespace qmrules::workbench::codemodel {

const platform::ModelEntity& CodeRelation::Target() const {
  return table_.Of(spec_.target);
}

CodeEntity::CodeEntity(const EntityTable& table, Entity entity) : entity_(entity) {
  for (const RelationSpec& spec : RelationsOf(entity)) relations_.emplace_back(table, spec);
}

std::vector<const platform::ModelRelation*> CodeEntity::Relations() const {
  std::vector<const platform::ModelRelation*> relations;
  for (const CodeRelation& relation : relations_) relations.push_back(&relation);
  return relations;
}

const CodeRelation* CodeEntity::Relation(std::string_view name) const {
  for (const CodeRelation& relation : relations_) {
    if (shell::EqualIgnoringCase(relation.Name(), name)) return &relation;
  }
  return nullptr;
}

std::vector<std::string> CodeEntity::Attributes() const {
  const auto attributes = AttributesOf(entity_);
  return {attributes.begin(), attributes.end()};
}

std::string_view CodeEntity::Attribute(std::string_view name) const {
  for (const std::string_view attribute : AttributesOf(entity_)) {
    if (shell::EqualIgnoringCase(attribute, name)) return attribute;
  }
  return {};
}

EntityTable::EntityTable() {
  for (std::size_t entity = 0; entity < kEntities; ++entity) {
    entities_[entity] = std::make_unique<const CodeEntity>(*this, static_cast<Entity>(entity));
  }
}

const EntityTable& EntityTable::Get() {
  static const EntityTable table;
  return table;
}

std::string EntityTable::Definition(std::string_view modelName) const {
  std::string text = fmt::format("<model name=\"{}\">\n", shell::HtmlText(modelName));
  for (std::size_t number = 0; number < kEntities; ++number) {
    const auto entity = static_cast<Entity>(number);
    text += fmt::format("  <entity name=\"{}\">\n", NameOf(entity));
    for (const std::string_view attribute : AttributesOf(entity)) {
      text += fmt::format("    <attribute name=\"{}\"/>\n", attribute);
    }
    for (const RelationSpec& relation : RelationsOf(entity)) {
      text += fmt::format("    <relation name=\"{}\" kind=\"{}\" target=\"{}\"/>\n", relation.name, relation.kind,
                          NameOf(relation.target));
    }
    text += "  </entity>\n";
  }
  return text + "</model>\n";
}

}  // namespace qmrules::workbench::codemodel
