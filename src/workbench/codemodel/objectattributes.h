#pragma once

#include <string_view>

#include "platform/value.h"
#include "workbench/codemodel/modelfile.h"

namespace qmrules::workbench::codemodel {

// The attribute of a node, by its name as the vocabulary writes it; absent where the node has none. The text of the
// source is not among them: "Text" is known of a COND only.
platform::Value ReadAttribute(const ModelImage& image, NodeId node, std::string_view attribute);

// "VAR#17".
std::string KeyOf(const ModelImage& image, NodeId node);

}  // namespace qmrules::workbench::codemodel
