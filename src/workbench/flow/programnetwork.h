#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "workbench/flow/programflow.h"

// Chains that go on in other programs.
//
//   PBMAIN                                     PBSUB
//   1  MOVE 5 TO A.                            1  PROCEDURE DIVISION USING X Y.
//   2  CALL "PBSUB" USING A B.                 2  IF X > 1
//   3  DISPLAY B.                              3     MOVE 7 TO Y.
//
// The B of row 3 gets its value at row 3 of PBSUB, or before row 2, since PBSUB does not always set it. The X of row 2
// gets it at row 1 of PBMAIN.
namespace qmrules::workbench::flow {

struct ProgramBinding;

// A program of the network: one unit of a model.
struct NetworkProgram {
  std::string name;  // in capitals
  std::shared_ptr<const codemodel::ModelImage> model;
  std::uint32_t unit = 0;
  std::unique_ptr<ProgramFlow> flow;
};

// A call that a chain goes through.
struct CallPassed {
  const NetworkProgram* program = nullptr;  // that calls
  NodeId statement = 0;
  bool operator==(const CallPassed&) const = default;
};

// A link whose ends can be in two programs. `link` is as in the program of the end that was not asked about; the other
// end in it is the occurrence there that the way goes through: the parameter, the argument.
struct NetworkLink {
  NetworkProgram* program = nullptr;
  ChainLink link;
  std::vector<CallPassed> calls;  // from the end that was asked about on
  // Backward: an earlier call of the program has left it in storage that keeps its values from call to call.
  bool isFromEarlierCall = false;
};

struct NetworkGap {
  const NetworkProgram* program = nullptr;
  AnswerGap gap;
};

struct NetworkChain {
  std::vector<NetworkLink> links;  // those of the program asked about first
  std::vector<NetworkGap> gaps;
};

class ProgramNetwork {
 public:
  // The model whose outermost program has this name, in any case; nullptr when there is none.
  using Opener = std::function<std::shared_ptr<const codemodel::ModelImage>(std::string_view name)>;
  // The names of the programs that may call this one.
  using Callers = std::function<std::vector<std::string>(std::string_view name)>;

  explicit ProgramNetwork(Opener open, Callers callers = {});
  ~ProgramNetwork();

  // nullptr when there is none, or no dataflow for its language.
  NetworkProgram* Find(std::string_view name);
  // A unit of a model, whoever has opened it.
  NetworkProgram& Add(std::shared_ptr<const codemodel::ModelImage> model, std::uint32_t unit);

  // As those of ProgramFlow. What a call brings that leads to known programs is not among the links: what these leave
  // is in its place. A chain goes through 32 calls at most; a gap says where it has ended so.
  NetworkChain DefinitionsReaching(NetworkProgram& program, NodeId occurrence);
  NetworkChain DefinitionsReaching(NetworkProgram& program, NodeId occurrence, const ByteSet& bytes);
  NetworkChain UsesReached(NetworkProgram& program, NodeId definition);
  NetworkChain UsesReached(NetworkProgram& program, NodeId definition, const ByteSet& bytes);
  // The programs that a call can lead to. Empty when one of them is not known; then `why` is the gap's text.
  std::vector<NetworkProgram*> ProgramsCalled(NetworkProgram& caller, const ProgramCall& call,
                                              std::string* why = nullptr);

  // The calls of the program that are known.
  struct KnownCall {
    NetworkProgram* caller = nullptr;
    const ProgramCall* call = nullptr;
  };
  const std::vector<KnownCall>& CallsOf(NetworkProgram& program);

 private:
  std::optional<CallOutcome> OutcomeOf(NetworkProgram& caller, NodeId statement, NodeId operand,
                                       const StoragePlace& place);
  CallOutcome OutcomeIn(NetworkProgram& called, const ProgramBinding& binding);
  std::vector<std::string> NamesOf(NetworkProgram& caller, const ProgramCall& call);
  NetworkProgram* Resolve(const NetworkProgram& caller, std::string_view name);

  Opener open_;
  Callers callers_;
  std::map<std::pair<const codemodel::ModelImage*, std::uint32_t>, std::unique_ptr<NetworkProgram>> programs_;
  std::map<std::string, NetworkProgram*, std::less<>> byName_;
  std::map<std::pair<const NetworkProgram*, NodeId>, std::vector<NetworkProgram*>> called_;
  std::map<const NetworkProgram*, std::pair<std::size_t, std::vector<KnownCall>>> callsOf_;  // of so many programs
  std::set<const NetworkProgram*> underWay_;  // whose outcome is being found out
};

}  // namespace qmrules::workbench::flow
