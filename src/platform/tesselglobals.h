#pragma once

#include <memory>
#include <string>

#include "platform/database.h"

namespace qmrules::platform {

// The state that the control and its dialogs share in one process. Owned by the host's application object and handed
// in by reference; lasts as long as the application.
struct TesselGlobals {
  std::string internalName;  // aIntName: the name by which the workspace knows the control
  std::string externalName;  // aExtName: the caption of its menu and of its message boxes

  // Names and descriptions of the objects that hold rules without a home, from the project's options.
  std::string UnassignedBFName;
  std::string UnassignedBFDescr;
  std::string UnassignedRSName;
  std::string UnassignedRSDescr;

  // The number of a rule passes through 16 bits on its way to a log record of validation and of export: a run then ends
  // at a number above 32767, as it always did for catalogues that were never meant to grow so large. Off, any number is
  // taken.
  bool NarrowLogIds = false;

  bool eventsSilenced = false;         // set around a bulk load: the tree is then filled again at the end
  bool glossaryAvailable = false;      // the host has the glossary component
  std::unique_ptr<Database> glossary;  // open while the glossary is available
};

}  // namespace qmrules::platform
