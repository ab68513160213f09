#pragma once

#include <optional>
#include <vector>

#include "workbench/flow/flowlanguage.h"

// How bytes of an argument and of the parameter that it is handed over as correspond.
namespace qmrules::workbench::flow {

struct ProgramBinding {
  Argument argument;   // in the program that calls
  Argument parameter;  // in the called one

  // Bytes of the argument's area as bytes of the parameter's, and the other way round, as far as both go. Where it is
  // not known which occurrence of a table is handed over, each byte may be any.
  ByteSet Inwards(const ByteSet& bytes) const;
  ByteSet Outwards(const ByteSet& bytes) const;
};

// By the argument's operand; nothing when the call has no such argument with storage, or the program takes fewer in.
std::optional<ProgramBinding> BindArgument(const ProgramCall& call, const std::vector<Argument>& parameters,
                                           NodeId operand);

}  // namespace qmrules::workbench::flow
