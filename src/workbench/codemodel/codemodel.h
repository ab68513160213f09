#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/sourcemodel.h"
#include "workbench/codemodel/modelfile.h"

namespace qmrules::workbench::codemodel {

// What a model needs of the workspace besides its own file.
struct ModelSurroundings {
  // The text of a source file, UTF-8, by the name relative to the source folder. Throws platform::Error when it cannot
  // be read. For the texts of objects; read once and kept as long as the model.
  std::function<std::string(std::string_view file)> readSource;
  // The project's dataflow database; empty, or giving nullptr, when there is none.
  std::function<platform::Database*()> database;
};

// The numbers of objects. An object of the tree has the number of its node. Above them lies room for objects that stand
// for the same node in another role, one for each role: they have the node's number in the low 32 bits and their own
// above. SourceModel::object takes them for the node, by number and by key.
inline constexpr int kVirtualShift = 32;

// The model for the rule manager: objects over the records of an image, made when they are first asked for. Used by one
// thread. No lists are kept yet, so SourceModel::Matches finds nothing in any.
std::unique_ptr<platform::SourceModel> OpenCodeModel(std::shared_ptr<const ModelImage> image,
                                                     ModelSurroundings surroundings);

// The interface of platform::SourceModelFactory over files.
class CodeModelFactory final : public platform::SourceModelFactory {
 public:
  explicit CodeModelFactory(ModelSurroundings surroundings) : surroundings_(std::move(surroundings)) {}
  std::unique_ptr<platform::SourceModel> OpenModel(std::string_view path) override;

 private:
  ModelSurroundings surroundings_;
};

}  // namespace qmrules::workbench::codemodel
