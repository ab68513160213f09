#pragma once

#include <memory>
#include <string>

#include "platform/options.h"
#include "platform/repository.h"

namespace qmrules::platform {

// What GetFerrowoodName tells, by the numbers of its contract.
enum class FerrowoodName : int {
  ProductFolder = 2,      // pictures (in "Icons") and the schema document "User.Repstry.xml"
  SourceFolder = 4,       // source file names are relative to it; holds "Glossary.mdb" and the folder "Projects"
  ExportFileStem = 6,     // stem of the default export file name
  ProjectFolderName = 7,  // name of the project's folder under "Projects"
};

// The front-end object `FE` of the workspace: the repository, the current project, the options and the user.
class FrontEnd {
 public:
  virtual ~FrontEnd() = default;
  virtual platform::Repository& Repository() = 0;
  // The current project's object; its ObjectID() is the project's key. Throws Error when no project is chosen.
  virtual std::unique_ptr<Object> ProjectObject() = 0;
  virtual Options& ProjectOptions() = 0;
  virtual Options& GlobalOptions() = 0;
  virtual std::string UserName() const = 0;
  // Folders come without a separator at the end. Throws Error for a number that the contract does not know.
  virtual std::string GetFerrowoodName(int number) const = 0;
  std::string GetFerrowoodName(FerrowoodName name) const { return GetFerrowoodName(static_cast<int>(name)); }
  // The host's help file; "" for none.
  virtual std::string HelpFile() const = 0;
};

}  // namespace qmrules::platform
