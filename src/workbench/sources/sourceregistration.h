#pragma once

#include <string>
#include <string_view>

#include "platform/repository.h"
#include "workbench/sources/sourcefolder.h"

namespace qmrules::workbench {

struct Registration {
  enum class Outcome {
    Added,      // new objects were made
    Updated,    // the source was known; its number of lines has changed, or it is new to the project
    Unchanged,  // the source was known as it is
  };
  Outcome outcome = Outcome::Added;
  std::string name;  // under which the program is known
  std::string key;   // of the source's object
};

// Makes a program known to the catalogue, as part of the project: an object of the program's language, with the file
// and its number of lines and as yet without dataflow, and the object PROGRAM that "Produces" it. The name is `asName`,
// in upper case, or the PROGRAM-ID when that is empty. A file that was registered under a name of its own keeps it.
//
// Throws platform::Error, naming both files and with nothing written, when another file has the name; and when a name
// is given to a file that is known under another one.
Registration RegisterSource(platform::Repository& repository, std::string_view projectKey,
                            const ScannedProgram& program, std::string_view asName = {});

}  // namespace qmrules::workbench
