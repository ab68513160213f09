#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "workbench/flow/flowgraph.h"
#include "workbench/flow/storageplace.h"

// What a point of the flow does with storage.
namespace qmrules::workbench::flow {

enum class DefinitionKind : std::uint8_t {
  Move,          // data of other variables as it is, converted or not
  ConstantMove,  // literals and figurative constants only: MOVE, SET, INITIALIZE
  Computation,   // a new value from others: ADD, COMPUTE, STRING, INSPECT, functions
  Input,         // from outside: READ, ACCEPT, RECEIVE, FETCH INTO
  Parameter,     // what the caller of the program handed over
  InitialValue,  // VALUE clause, or nothing, when the program starts
  Call,          // by another program, by reference
  Unknown,       // by a statement that is not understood
};
inline constexpr std::size_t kDefinitionKinds = static_cast<std::size_t>(DefinitionKind::Unknown) + 1;
std::string_view NameOf(DefinitionKind kind);  // "move", "constant move", "initial value"

enum class EffectKind : std::uint8_t {
  Use,        // reads the bytes
  Define,     // writes them all, whenever the point is passed: what they held before is gone
  MayDefine,  // writes all, some or none of them
};

// Uses that no definition of the statement takes its value from: subscripts, keys, what a condition tests.
inline constexpr std::uint16_t kNoFeed = 0xffff;

struct Effect {
  EffectKind kind = EffectKind::Use;
  DefinitionKind definition = DefinitionKind::Move;  // not for uses
  // A definition takes its value from the uses with the same number, at the points of the same statement (a Completed
  // point defines from what the Statement point used). MOVE CORRESPONDING has a number for each pair, and an operand
  // that several definitions take their value from is used once for each; most statements have 0 only. A definition
  // with kNoFeed takes its value from none.
  std::uint16_t feed = 0;
  bool copies = false;   // definition: byte n of its place gets byte n of its one use's, as far as both go
  bool partial = false;  // the exact bytes within the place are not known: reference modification with variables
  NodeId operand = 0;    // VAR; DECL for InitialValue and Parameter; the statement where it has none of its own
  StoragePlace place;
};

enum class EffectGapKind : std::uint8_t {
  UnknownStatement,   // may read and write what it names, and more
  UnresolvedName,     // an operand whose declaration is not known
  VariableSubscript,  // taken for every occurrence
  VariableReference,  // reference modification taken for the whole item
  AddressTaken,       // SET ADDRESS OF, pointers: the item's storage may be another's
  SharedStorage,      // EXTERNAL or GLOBAL: others may write it
  MovingItem,         // behind a table of variable size: taken for all places where it can lie
};
inline constexpr std::size_t kEffectGapKinds = static_cast<std::size_t>(EffectGapKind::MovingItem) + 1;
std::string_view NameOf(EffectGapKind kind);
struct EffectGap {
  EffectGapKind kind;
  NodeId node = 0;
};

// At one point all uses come before all definitions.
struct Effects {
  std::vector<Effect> all;
  std::vector<EffectGap> gaps;
};

}  // namespace qmrules::workbench::flow
