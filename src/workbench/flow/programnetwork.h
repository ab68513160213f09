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

#include "workbench/flow/callcontext.h"
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

// Where a call leads: the beginning of a program, or another entry of it.
struct CallTarget {
  NetworkProgram* program = nullptr;
  NodeId entry = 0;  // PORT

  const std::vector<Argument>& Parameters() const { return program->flow->ParametersAt(entry); }
};

// A link whose ends can be in two programs. `link` is as in the program of the end that was not asked about; the other
// end in it is the occurrence there that the way goes through: the parameter, the argument.
struct NetworkLink {
  NetworkProgram* program = nullptr;
  ChainLink link;
  std::vector<CallPassed> calls;  // from the end that was asked about on
  CallContext context;            // of the program at the end that was not asked about
  // The program keeps it in its storage from one call to another: backward from an earlier one, forward to a later one.
  bool isOfOtherCall = false;
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
  // The model whose outermost program has this name, in any case, or else one in which an ENTRY has it; nullptr when
  // there is none.
  using Opener = std::function<std::shared_ptr<const codemodel::ModelImage>(std::string_view name)>;
  // The names of the programs that may call the one, or the ENTRY, of this name.
  using Callers = std::function<std::vector<std::string>(std::string_view name)>;

  explicit ProgramNetwork(Opener open, Callers callers = {});
  ~ProgramNetwork();

  // nullptr when there is none, or no dataflow for its language.
  NetworkProgram* Find(std::string_view name);
  // A unit of a model, whoever has opened it.
  NetworkProgram& Add(std::shared_ptr<const codemodel::ModelImage> model, std::uint32_t unit);

  // As those of ProgramFlow. What a call brings that leads to known programs is not among the links: what these leave
  // is in its place. A chain goes through 32 calls at most; a gap says where it has ended so. A link to which calls
  // lead in several ways is there for each. With a context, whose last call has to be one of the program, a chain comes
  // out of the program at that call only, except by what it keeps from one call to another.
  NetworkChain DefinitionsReaching(NetworkProgram& program, NodeId occurrence, const ByteSet& bytes = ByteSet::All(),
                                   const CallContext& context = {});
  NetworkChain UsesReached(NetworkProgram& program, NodeId definition, const ByteSet& bytes = ByteSet::All(),
                           const CallContext& context = {});
  // The programs that a call can lead to. Empty when one of them is not known; then `why` is the gap's text.
  std::vector<CallTarget> ProgramsCalled(NetworkProgram& caller, const ProgramCall& call, std::string* why = nullptr);

  // The calls of the program that are known, by the names of the programs that call.
  struct KnownCall {
    NetworkProgram* caller = nullptr;
    const ProgramCall* call = nullptr;
    NodeId entry = 0;  // where it comes in, as CallTarget::entry
  };
  const std::vector<KnownCall>& CallsOf(NetworkProgram& program) { return FindCalls(program).calls; }
  // Calls of those that may call it of which it is not known what they call: each may be one of it.
  const std::vector<KnownCall>& OpenCalls(NetworkProgram& program) { return FindCalls(program).open; }

 private:
  struct KnownCalls {
    std::size_t programs = 0;  // that were looked at; 0 before the first time
    std::vector<KnownCall> calls, open;
  };
  const KnownCalls& FindCalls(NetworkProgram& program);
  std::optional<CallOutcome> OutcomeOf(NetworkProgram& caller, NodeId statement, NodeId operand,
                                       const StoragePlace& place);
  CallOutcome OutcomeIn(NetworkProgram& called, const ProgramBinding& binding);
  std::vector<std::string> NamesOf(NetworkProgram& caller, const ProgramCall& call);
  CallTarget Resolve(const NetworkProgram& caller, std::string_view name);
  CallTarget FindEntry(const std::shared_ptr<const codemodel::ModelImage>& model, std::string_view name);

  Opener open_;
  Callers callers_;
  std::vector<std::unique_ptr<NetworkProgram>> programs_;  // in the order in which they came up
  std::map<std::pair<const codemodel::ModelImage*, std::uint32_t>, NetworkProgram*> byUnit_;
  std::map<std::string, NetworkProgram*, std::less<>> byName_;
  std::map<std::string, CallTarget, std::less<>> entries_;  // by name
  std::map<std::pair<const NetworkProgram*, NodeId>, std::vector<CallTarget>> called_;
  std::map<const NetworkProgram*, KnownCalls> callsOf_;
  std::set<const NetworkProgram*> underWay_;  // whose outcome is being found out
};

}  // namespace qmrules::workbench::flow
