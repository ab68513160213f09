#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/modelfile.h"

namespace qmrules::workbench::codemodel {

// Where a name of a program is declared and where it occurs.
struct CrossReference {
  std::vector<NodeId> declarations;  // DECLs, FILEs, SECTIONs, PARs of this name, in the order of the text
  // VARs and REFs that mean one of them, and those of this name of which it is not known what they mean.
  std::vector<NodeId> occurrences;
};

// The name is that of a data item, condition name, index, file, paragraph or section, alone or with the names of some
// of the groups, files or sections around it: "A", "A OF B IN C". Case does not count.
CrossReference FindCrossReference(const ModelImage& model, std::string_view name);

// Declared names that are much like this one, the closest first; at most so many.
std::vector<std::string> FindSimilarNames(const ModelImage& model, std::string_view name, std::size_t most);

// The statement that a node stands in, or the node itself where it is one; 0 for none.
NodeId StatementAround(const ModelImage& model, NodeId node);

}  // namespace qmrules::workbench::codemodel
