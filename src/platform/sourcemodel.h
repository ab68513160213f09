#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/value.h"

namespace qmrules::platform {

class Database;
class ModelEntity;
class ModelObject;

// A relation that the objects of a model entity may have.
class ModelRelation {
 public:
  virtual ~ModelRelation() = default;
  virtual std::string_view Name() const = 0;
  // What kind of relation it is: 1 for "is also one of", which leads from STAT, DECL and VAR to their special kinds.
  virtual int Kind() const = 0;
  virtual const ModelEntity& Target() const = 0;
};

// A kind of object in a code model, such as STAT, PAR, VAR, COND. Lives as long as its model.
class ModelEntity {
 public:
  virtual ~ModelEntity() = default;
  virtual std::string_view Name() const = 0;
  // In the order of the model's definition.
  virtual std::vector<const ModelRelation*> Relations() const = 0;
  // The relation of this name, in any case, or nullptr.
  virtual const ModelRelation* Relation(std::string_view name) const = 0;
  // The names of the attributes, in the order of the model's definition.
  virtual std::vector<std::string> Attributes() const = 0;
  // True when the entity defines the attribute, named in any case.
  virtual bool HasAttribute(std::string_view name) const = 0;
};

// Where an object stands in the source.
struct ModelLocation {
  std::string FileName;  // relative to the source folder
  int FileID = 0;        // tells the files of one model apart
  int FirstRow = 0;      // from 1
  int LastRow = 0;       // inclusive
  int Position = 0;      // the object's characters in the file, from 0,
  int EndPosition = 0;   // up to and without this one
  int Order = 0;  // its beginning's place in the flow of the program's text, copybooks put in where they are asked
                  // for: of two objects the one that the program reaches first has the lower one
};

// Objects of a model, walked once.
class ModelCursor {
 public:
  virtual ~ModelCursor() = default;
  virtual bool Eof() const = 0;
  // The current object. Throws Error past the last one.
  virtual const ModelObject& Item() const = 0;
  virtual void MoveNext() = 0;
};

// A node of a code model: a declaration, a statement, a condition, an occurrence of a variable. Lives as long as its
// model. Entities and relations are named in any case.
class ModelObject {
 public:
  virtual ~ModelObject() = default;
  // Entity name, "#", decimal ID, as "VAR#17".
  virtual std::string Key() const = 0;
  virtual std::int64_t ID() const = 0;
  virtual const ModelEntity& EntityDef() const = 0;
  // The object's own text in the source.
  virtual std::string Text() const = 0;
  // The attribute, named in any case; absent when this object has none. Throws Error for one that its entity does not
  // define.
  virtual Value Attr(std::string_view name) const = 0;
  virtual ModelLocation Location() const = 0;
  // The object around this one; nullptr at the top.
  virtual const ModelObject* Parent() const = 0;
  // The next object within the same parent; nullptr for the last one.
  virtual const ModelObject* NextSibling() const = 0;
  // The objects directly within this one, in the order of the source.
  virtual std::unique_ptr<ModelCursor> Children() const = 0;
  // The objects of an entity, its special kinds included, within this one at any depth, in the order of the source.
  // Without this object. Throws Error for an entity that the model does not define.
  virtual std::unique_ptr<ModelCursor> Objects(std::string_view entity) const = 0;
  // The objects at the end of the relation. Empty for a relation that this object's entity does not define.
  virtual std::unique_ptr<ModelCursor> Related(std::string_view relation) const = 0;
};

// An entry of one of the list tool's lists, found again in a model.
struct ModelMatch {
  std::string QMID;  // the object's key
  ModelLocation location;
};

// The code model of one program. Its entities and objects go with it.
class SourceModel {
 public:
  virtual ~SourceModel() = default;
  // The kind of model, which is the entity name of the program: models of one name have the same entities.
  virtual std::string ModelName() const = 0;
  // The text of the model's definition, for TracingLibrary::LoadProgram.
  virtual std::string DefinitionText() const = 0;
  // The entity of this name, in any case, or nullptr.
  virtual const ModelEntity* EntityDef(std::string_view name) const = 0;
  // All objects of an entity, its special kinds included, in the order of the source. Throws Error for an entity that
  // the model does not define.
  virtual std::unique_ptr<ModelCursor> Objects(std::string_view entity) const = 0;
  // The object by its ID, or by its key. Throws Error, naming it, when there is none.
  virtual const ModelObject& object(std::int64_t id) const = 0;
  virtual const ModelObject& object(std::string_view key) const = 0;
  // The first object of the top level, or nullptr in an empty model.
  virtual const ModelObject* FirstNode() const = 0;
  // The model's database, with the table ExternalRelationships. Throws Error when there is none.
  virtual platform::Database& Database() const = 0;
  // What the list of this category holds of this program, by the lists kept for the project folder of this name, in
  // the order of the source. Empty for an unknown list.
  virtual std::vector<ModelMatch> Matches(std::string_view category, std::string_view list,
                                          std::string_view projectFolder) const = 0;
};

// Opens code models.
class SourceModelFactory {
 public:
  virtual ~SourceModelFactory() = default;
  // The model in the file of this full path. Throws Error, naming the file, when it cannot be read.
  virtual std::unique_ptr<SourceModel> OpenModel(std::string_view path) = 0;
};

}  // namespace qmrules::platform
