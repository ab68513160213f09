#pragma once

#include "workbench/codemodel/cobol/data/headcontext.h"
#include "workbench/codemodel/cobol/data/itemstack.h"

namespace qmrules::workbench::codemodel::cobol {

// True for a word that is a usage by itself: COMP-3.
bool IsUsageWord(Word word);
// USAGE IS …, GROUP-USAGE IS …, or the usage alone. Consumes nothing and gives false for anything else.
bool ParseUsage(HeadContext& context, ItemDescription& item);

}  // namespace qmrules::workbench::codemodel::cobol
