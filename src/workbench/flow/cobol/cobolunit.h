#pragma once

#include <memory>

#include "workbench/flow/flowlanguage.h"

namespace qmrules::workbench::flow::cobol {

// What a COBOL program does with storage. Times as UnitEffects tells; the model and the graph have to outlive it.
std::unique_ptr<UnitEffects> EffectsOfUnit(const codemodel::ModelImage& model, std::uint32_t unit,
                                           const FlowGraph& flow);

}  // namespace qmrules::workbench::flow::cobol
