#include "workbench/flow/flowlanguage.h"

#include "workbench/flow/cobol/cobolflow.h"

namespace qmrules::workbench::flow {

const FlowLanguage* FlowLanguageOf(const codemodel::ModelImage& model) {
  static const cobol::CobolFlow cobolFlow;
  return model.Language() == "COBOL" ? &cobolFlow : nullptr;
}

}  // namespace qmrules::workbench::flow
