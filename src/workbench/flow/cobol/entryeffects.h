#pragma once

#include "workbench/flow/cobol/effectlist.h"
#include "workbench/flow/cobol/unitfacts.h"

namespace qmrules::workbench::flow::cobol {

// What the bytes of an area hold when the unit starts. An item with a VALUE is a definition of its own; what is left of
// an area is defined by its item at level 01.
void EntryEffects(const UnitFacts& facts, NodeId area, EffectList& list);

}  // namespace qmrules::workbench::flow::cobol
