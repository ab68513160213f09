#pragma once

#include <functional>

#include "platform/clock.h"
#include "platform/filesystem.h"
#include "platform/frontend.h"
#include "platform/tesselglobals.h"
#include "shell/messages.h"

namespace qmrules::validation {

// What validation works on. Everything outlives it.
struct ValidationServices {
  platform::FrontEnd& FE;
  const platform::FileSystem& fileSystem;
  const platform::Clock& clock;
  const shell::StringTable& texts;
  const platform::TesselGlobals& globals;
  std::function<void()> processEvents;  // lets the host take pending events during long computing; empty for none
};

}  // namespace qmrules::validation
