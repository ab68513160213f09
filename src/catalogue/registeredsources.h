#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/frontend.h"

namespace qmrules::catalogue {

// A source that the catalogue knows.
struct RegisteredSource {
  std::string key;
  std::string language;  // entity of its object
  std::string name;      // of the program
  std::string file;      // relative to the source folder, with "/"
  std::int64_t lines = 0;
  std::string modelFile = {};  // likewise; "" where there is no model of it
};

// The sources of the current project, by language and name. With a file, only the programs of this file. Throws Error
// when no project is chosen.
std::vector<RegisteredSource> RegisteredSources(platform::FrontEnd& FE, const std::string& file = {});

}  // namespace qmrules::catalogue
