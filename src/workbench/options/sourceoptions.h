#pragma once

#include <string>
#include <vector>

#include "platform/xml.h"

namespace qmrules::workbench {

// How the COBOL sources of a project are read.
struct SourceOptions {
  std::string format = "auto";               // "auto", "fixed", "wide", "free"
  std::vector<std::string> copybookFolders;  // relative to the source folder, in the order of the search; none: every
                                             // folder with copybooks
  friend bool operator==(const SourceOptions&, const SourceOptions&) = default;
};

// What a project's options hold of them; for a document that is older than these options, as at first.
SourceOptions ReadSourceOptions(const platform::XmlDocument& options);

// Puts them into the document, with the nodes that it lacks. Throws platform::Error for a document that is none of
// options, and for a text that XML cannot hold.
void PutSourceOptions(platform::XmlDocument& options, const SourceOptions& values);

}  // namespace qmrules::workbench
