#pragma once

#include <string>
#include <string_view>

#include "platform/error.h"
#include "platform/repository.h"
#include "workbench/sources/sourcefolder.h"

namespace qmrules::workbench {

struct Registration {
  enum class Outcome {
    Added,      // new objects were made
    Updated,    // the source was known; its number of lines or its model has changed, or it is new to the project
    Unchanged,  // the source was known as it is
  };
  Outcome outcome = Outcome::Added;
  std::string name;  // under which the program is known
  std::string key;   // of the source's object
};

// A program cannot be made known under its name. Nothing was written.
class RegistrationRefused : public platform::Error {
 public:
  using Error::Error;
};

// Makes a program known to the catalogue, as part of the project: an object of the program's language, with the file
// and its number of lines, and the object PROGRAM that "Produces" it. The name is `asName`, in upper case, or the
// PROGRAM-ID when that is empty. A file that was registered under a name of its own keeps it. Where the program comes
// with a model, its data are told to be there and Quillmark names the model file; a new object without one has no data.
//
// Throws RegistrationRefused, naming both files, when another file has the name; and when a name is given to a file
// that is known under another one.
Registration RegisterSource(platform::Repository& repository, std::string_view projectKey,
                            const ScannedProgram& program, std::string_view asName = {});

// Tells of a known source that there is no model of it any more. False when that was known already.
bool WithdrawModel(platform::Repository& repository, std::string_view sourceKey);

}  // namespace qmrules::workbench
