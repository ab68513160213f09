#pragma once

#include "workbench/flow/chainarea.h"
#include "workbench/flow/flowlanguage.h"
#include "workbench/flow/programflow.h"

// From the effects at the points of a unit to what the search goes by.
namespace qmrules::workbench::flow {

// The statement or condition of a point, 0 where the unit has none.
NodeId StatementOfPoint(const codemodel::ModelImage& model, const Point& point);
// What the unit does with the area. What calls do to it is taken from the outcomes, as far as they are known.
ChainArea CollectArea(const UnitEffects& effects, const FlowGraph& flow, NodeId area, const CallOutcomes& outcomes);

}  // namespace qmrules::workbench::flow
