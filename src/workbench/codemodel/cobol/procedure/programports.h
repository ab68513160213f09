#pragma once

#include <utility>
#include <vector>

#include "workbench/codemodel/cobol/procedure/operands.h"

namespace qmrules::workbench::codemodel::cobol {

// The entries and exits of a program, and how data passes through them.
//
// Each entry (PROCEDURE DIVISION, ENTRY) has a VAR for each parameter, each exit an implicit VAR for each parameter of
// the entries above it and for the RETURNING item. Which way the data goes is known only at the end, when all
// statements have been seen: a parameter that is read comes in at the entry, one that is written goes out at the exits;
// a VAR whose data does not pass there has no usage.
class ProgramPorts {
 public:
  // `implicitLeft` is how many more implicit nodes there may be; past them, exits have no VARs.
  ProgramPorts(TokenCursor& cursor, ModelBuilder& model, Operands& operands, std::uint64_t& implicitLeft)
      : cursor_(cursor), model_(model), operands_(operands), implicitLeft_(implicitLeft) {}

  // Reads USING and RETURNING with what follows them, as far as they are there; the PORT is open.
  void Enter(NodeId port);
  // Makes the open PORT an exit.
  void Leave(NodeId port);
  // Sets the usages of the VARs by the nodes from `first` to the last one, and forgets the ports.
  void TellDirections(NodeId first);

 private:
  struct Parameter {
    NodeId var = 0;
    NodeId declaration = 0;
    bool returning = false;
  };
  void Parameters();
  void Returning();
  NodeId AreaOf(NodeId declaration) const;
  std::pair<NodeId, NodeId> ItemsOfParameters() const;

  TokenCursor& cursor_;
  ModelBuilder& model_;
  Operands& operands_;
  std::uint64_t& implicitLeft_;
  std::vector<Parameter> parameters_;
  std::vector<NodeId> leaving_;
};

}  // namespace qmrules::workbench::codemodel::cobol
