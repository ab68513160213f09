#pragma once

#include <optional>
#include <span>
#include <string>

#include "workbench/codemodel/records.h"

namespace qmrules::workbench::codemodel {

// The records of a model, and how many texts and files there are that they can lead to.
struct ModelRecords {
  std::span<const NodeRecord> nodes;
  std::span<const DeclRecord> decls;
  std::span<const FileRecord> fileRecords;
  std::span<const UnitRecord> units;
  std::size_t texts = 0;
  std::size_t files = 0;
};

// What is wrong with the records: a number that leads to nothing, or to something of another kind, or nodes that are no
// tree. Nothing when any walk over them stays within them and comes to an end.
std::optional<std::string> FindDefect(const ModelRecords& records);

}  // namespace qmrules::workbench::codemodel
