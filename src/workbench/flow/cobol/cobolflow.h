#pragma once

#include "workbench/flow/flowlanguage.h"

namespace qmrules::workbench::flow::cobol {

class CobolFlow final : public FlowLanguage {
 public:
  FlowGraph BuildFlow(const codemodel::ModelImage& model, std::uint32_t unit) const override;
  std::unique_ptr<UnitEffects> EffectsOf(const codemodel::ModelImage& model, std::uint32_t unit,
                                         const FlowGraph& flow) const override;
};

}  // namespace qmrules::workbench::flow::cobol
