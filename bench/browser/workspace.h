#pragma once

#include <memory>
#include <string>

#include "catalogue/catalogue.h"
#include "workbench/host/embeddedhost.h"

namespace qmrules::bench {

// The host of a workspace whose catalogue is the generated one, with a small source for each program, which is older
// than the rules' last validation. The workspace lies in a folder beside the catalogue; what is missing of it is made.
std::unique_ptr<workbench::EmbeddedHost> OpenWorkspace(const std::string& folder, const Catalogue& catalogue);

}  // namespace qmrules::bench
