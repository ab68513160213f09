#pragma once

#include "workbench/flow/cobol/operandplace.h"

namespace qmrules::workbench::flow::cobol {

// The storage that all records of a file share. `certain` is what every one of them has; nowhere for a file without
// records.
OperandPlace RecordArea(const StorageLayout& layout, const codemodel::ModelImage& model, NodeId file);

}  // namespace qmrules::workbench::flow::cobol
