#pragma once

#include "platform/dialogs.h"
#include "platform/filesystem.h"
#include "platform/repository.h"
#include "platform/tesselglobals.h"
#include "platform/workspace.h"
#include "segments/rulesegments.h"
#include "shell/messages.h"

// The selection in the source viewer as the segment of a rule.
namespace qmrules::segments {

// The component of the workspace that shows the sources.
inline constexpr std::string_view kSourceViewer = "QMSource";

// What the selection is read with. All of it outlives the call.
struct SelectionServices {
  platform::Workspace& QMWS;
  platform::Repository& repository;
  const platform::FileSystem& fileSystem;
  platform::Dialogs& dialogs;
  const shell::StringTable& texts;
  const platform::TesselGlobals& globals;
};

// The rows that are selected in the source viewer or, without such, the workspace's own selection of text; their lines
// are read from the file. The selection in the viewer becomes one that runs downwards from the first row.
//
// Without a selection the segment is empty; `showMessage` tells the user so. Lines of more than kLongestSegment
// characters are not taken, and the user is told in any case: of the six values only the rows are set then. Whether a
// segment was captured tells IsCaptured() and nothing else. Throws Error when the file cannot be read and when no
// program stands behind it, with the viewer as it was.
[[nodiscard]] Segment GetSourceSegment(const SelectionServices& services, bool showMessage);

}  // namespace qmrules::segments
