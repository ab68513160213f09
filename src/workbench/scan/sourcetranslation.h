#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/frontend.h"
#include "workbench/scan/changecheck.h"

namespace qmrules::workbench {

struct TranslationTarget {
  std::string modelFolder;  // full path; must be there
  std::string options;      // that the models are marked with
};

// Makes the models of a source's programs and writes their files; for a source without a program, the file that notes
// this. Of several programs of one name in a file the first is taken, and its model tells of the others in a gap. Gives
// what was written. Throws platform::Error when the source cannot be read or a file not be written, and when
// `cancelled` answers true.
std::vector<KnownModel> TranslateSource(std::string_view source, codemodel::FrontEnd& frontEnd,
                                        codemodel::SourceProvider& sources, const TranslationTarget& target,
                                        const std::function<bool()>& cancelled);

}  // namespace qmrules::workbench
