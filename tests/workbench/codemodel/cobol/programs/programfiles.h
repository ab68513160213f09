#pragma once

#include <string>
#include <vector>

#include "support/memorysources.h"

namespace qmrules::test {

// The demo programs with their copybooks, and the NIST programs.
struct ProgramFiles {
  MemorySources sources;
  std::vector<std::string> programs;  // names in `sources`, in order
};
ProgramFiles SampleFiles();
ProgramFiles NistFiles();

// The folder that NistFiles reads.
std::string NistFolder();

}  // namespace qmrules::test
