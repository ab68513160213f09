#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/repository.h"

namespace qmrules::workbench {

// What the catalogue holds of one program's source.
struct KnownSource {
  std::string key;
  std::string name;       // of the program
  std::string file;       // relative to the source folder, with "/"
  std::string modelFile;  // Quillmark
  std::int64_t rows = 0;
  bool hasData = false;    // DataView, DataRelations and DataDepends are all set
  bool lacksData = false;  // none of them is

  bool IsWithdrawn() const { return modelFile.empty() && lacksData; }
};

// The COBOL sources of the project, or of all projects for "", in the order of their keys.
std::vector<KnownSource> ReadKnownSources(platform::Repository& repository, std::string_view projectKey);

}  // namespace qmrules::workbench
