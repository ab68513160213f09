#pragma once

#include <string>
#include <vector>

#include "workbench/host/embeddedhost.h"

namespace qmrules::cli {

// A source that the catalogue knows.
struct RegisteredSource {
  std::string key;
  std::string language;  // entity of its object
  std::string name;      // of the program
  std::string file;      // relative to the source folder, with "/"
  std::int64_t lines = 0;
  std::string modelFile = {};  // likewise; "" where there is no model of it
};

// The sources of the current project, by language and name. With a file, only the programs of this file.
std::vector<RegisteredSource> RegisteredSources(workbench::EmbeddedHost& host, const std::string& file = {});

}  // namespace qmrules::cli
