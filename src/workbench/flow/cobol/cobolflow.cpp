#include "workbench/flow/cobol/cobolflow.h"

#include "workbench/flow/cobol/cobolunit.h"
#include "workbench/flow/cobol/flowbuilder.h"

namespace qmrules::workbench::flow::cobol {

FlowGraph CobolFlow::BuildFlow(const codemodel::ModelImage& model, std::uint32_t unit) const {
  return cobol::BuildFlow(model, unit);
}

std::unique_ptr<UnitEffects> CobolFlow::EffectsOf(const codemodel::ModelImage& model, std::uint32_t unit,
                                                  const FlowGraph& flow) const {
  return EffectsOfUnit(model, unit, flow);
}

}  // namespace qmrules::workbench::flow::cobol
