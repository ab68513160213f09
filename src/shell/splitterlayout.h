#pragma once

#include "platform/settings.h"
#include "platform/widgets/splitter.h"

// The layout of the control's panes: "Objects", "Descriptions", "FirstArea" and "SecondArea".
namespace qmrules::shell {

// Makes the splitter refuse every layout that does not end in these four panes.
void RequirePanes(platform::widgets::Splitter& splitter);

// Gives the splitter the layout that the user saved, or the default one where there is none that it takes, and switches
// it on. Throws Error when the settings cannot be read.
void LayOutPanes(platform::widgets::Splitter& splitter, const platform::UserSettings& settings);

// Throws Error when the settings cannot be written.
void SaveSplitterLayout(const platform::widgets::Splitter& splitter, platform::UserSettings& settings);

}  // namespace qmrules::shell
