#pragma once

#include <cstddef>
#include <tuple>
#include <vector>

#include "workbench/codemodel/modelfile.h"

// The calls that a chain is in, so that it comes out of a program where it has gone in.
//
//   PBRATE                     PBRENEW                    PBTAX
//   1  CALL "PBTAX" USING A.   1  CALL "PBTAX" USING B.   1  PROCEDURE DIVISION USING X.
//   2  DISPLAY A.              2  DISPLAY B.              2  ADD 1 TO X.
//
// The A of row 1 is used at row 2 of PBTAX, in the context of row 1 of PBRATE. The X made there is used at row 2 of
// PBRATE, not at that of PBRENEW: in no run does one call come back to another.
namespace qmrules::workbench::flow {

struct NetworkProgram;

// A call that a chain goes through.
struct CallPassed {
  NetworkProgram* program = nullptr;  // that calls
  codemodel::NodeId statement = 0;
  bool operator==(const CallPassed&) const = default;
  // To key a map with: an order that is not that of the program.
  bool operator<(const CallPassed& other) const {
    return std::tie(program, statement) < std::tie(other.program, other.statement);
  }
};

// The calls that are open in a program, outermost first: the last one has called it. Which calls are open around the
// first one is not known; without any, the program can have been called from everywhere.
using CallContext = std::vector<CallPassed>;

inline constexpr std::size_t kMostOpenCalls = 32;
// In which the same question is asked. Beyond that it is asked as if the program were called from everywhere.
inline constexpr std::size_t kMostContexts = 64;

// The context in the called program. Outer calls are forgotten where there are too many, and where the program that
// calls is open already, so that there is an end to programs that call each other.
CallContext Entered(const CallContext& context, const CallPassed& call);
// The context in the program that has called, where it is not empty.
CallContext Left(const CallContext& context);
// Is all that can be in the second context in the first one as well?
bool Covers(const CallContext& wide, const CallContext& narrow);

}  // namespace qmrules::workbench::flow
