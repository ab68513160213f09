#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "codemodel/programs.h"
#include "workbench/codemodel/modelfile.h"

namespace qmrules::bench {

// The models of a set's programs, in the order of their texts.
struct FlowModels {
  std::string name;
  std::size_t lines = 0;
  std::vector<std::shared_ptr<const workbench::codemodel::ModelImage>> images;
};
FlowModels ModelsOf(const ProgramSet& set);

// Occurrences of variables that the procedures of the program's first unit read, spread evenly over its text; at most
// so many.
std::vector<workbench::codemodel::NodeId> UsesOf(const workbench::codemodel::ModelImage& image, std::size_t most);

}  // namespace qmrules::bench
