#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/registeredsources.h"
#include "workbench/codemodel/modelfile.h"
#include "workbench/host/embeddedhost.h"

namespace qmrules::cli {

// The models of the current project's programs, each opened once.
class ProgramLibrary {
 public:
  explicit ProgramLibrary(workbench::EmbeddedHost& host);

  // By the program's name, in any case, or else by that of an ENTRY; nullptr for one that the project does not know or
  // that is not scanned. Throws platform::Error for a model file that cannot be read.
  std::shared_ptr<const workbench::codemodel::ModelImage> Open(std::string_view name);
  // The programs that call the program or ENTRY of this name, or some program by a name that is not in their text.
  std::vector<std::string> CallersOf(std::string_view name);

 private:
  struct Entry {
    catalogue::RegisteredSource source;
    std::shared_ptr<const workbench::codemodel::ModelImage> image;
  };
  const std::shared_ptr<const workbench::codemodel::ModelImage>& ImageOf(Entry& entry);

  workbench::EmbeddedHost& host_;
  void FindEntryNames();
  std::map<std::string, Entry> entries_;  // by name in capitals
  std::optional<std::map<std::string, Entry*>> byEntryName_;
};

}  // namespace qmrules::cli
