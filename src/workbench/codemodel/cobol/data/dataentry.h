#pragma once

#include "workbench/codemodel/cobol/data/headcontext.h"
#include "workbench/codemodel/cobol/data/itemstack.h"

// Data description entries: a level number, a name, clauses, a full stop.
namespace qmrules::workbench::codemodel::cobol {

// True at a level number with something behind it that can go on an entry.
bool AtEntry(const HeadContext& context);
// True at the clauses of an entry whose level number or name is lost.
bool AtBrokenEntry(const HeadContext& context);

// Parses the entry at the cursor, its full stop included. An error costs the clause in which it is; the item is
// declared with what is known.
void ParseDataEntry(HeadContext& context, ItemStack& items);

}  // namespace qmrules::workbench::codemodel::cobol
