#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "workbench/codemodel/modelfile.h"

namespace qmrules::test {

// How all chains of a unit, asked one by one in both directions, compare with what the plain solver finds at once.
struct ReferenceComparison {
  std::size_t links = 0;                             // of uses and definitions, in all areas
  std::size_t questions = 0;                         // asked backward
  std::string difference;                            // the first one; "" when all are equal
  double referenceSeconds = 0, questionSeconds = 0;  // processor time: the plain solver's, the questions' backward
};
ReferenceComparison CompareWithReference(const workbench::codemodel::ModelImage& model, std::uint32_t unit);

}  // namespace qmrules::test
