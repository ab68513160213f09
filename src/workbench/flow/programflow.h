#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/modelfile.h"
#include "workbench/flow/controllingconditions.h"
#include "workbench/flow/effects.h"
#include "workbench/flow/flowlanguage.h"
#include "workbench/flow/rangebodies.h"
#include "workbench/flow/storageplace.h"

// Where the value of a variable comes from, and where it goes.
//
//   1  MOVE 5 TO A.
//   2  IF X > 1
//   3     MOVE B TO A.
//   4  MOVE 7 TO A OF OTHER.
//   5  DISPLAY A.
//   6  MOVE 9 TO A.
//   7  DISPLAY A.
//
// The A of row 5 gets its value at row 1 or at row 3; never at row 4, whose A is of another group, and not at row 6,
// which runs later. Row 3 runs when X > 1. What row 3 defines is used at row 5 only, since row 6 overwrites it. All of
// it is about bytes: A is also defined by a MOVE to its group, to what redefines or renames it, and to any element of a
// table where the subscript is not constant.
//
// Storage is as the program finds it at its first call; ProgramNetwork knows about more calls, and other programs.
//
// Where too much of the program runs through itself for returns to be matched to their calls (rangebodies.h), each
// answer has a gap that says so.
//
// A question costs the part of the program that lies between: the flow graph of the unit is built at the first one,
// and kept; nothing is ever solved for the whole program.
namespace qmrules::workbench::flow {

enum class LinkReason : std::uint8_t {
  Direct,   // the same data item, or a group that it lies in or that lies in it
  Overlap,  // other names for the same bytes: REDEFINES, RENAMES, records of one file
};

// One element of a chain from uses to definitions, or the other way round: a definition and a use of the same bytes,
// with a path between them on which none of `bytes` is overwritten for sure.
struct ChainLink {
  NodeId definition = 0;  // VAR or DECL, or the statement: Effect::operand
  NodeId definedAt = 0;   // its statement; the DIVISION for what comes in when the program starts
  NodeId use = 0;         // VAR
  NodeId usedAt = 0;      // its statement or COND
  NodeId area = 0;
  ByteSet bytes;  // of the area
  DefinitionKind kind = DefinitionKind::Move;
  LinkReason reason = LinkReason::Direct;
  bool mayDefine = false;  // does not overwrite all of them for sure: what was there before is in the chain as well
  bool operator==(const ChainLink&) const = default;
};

// Why an answer may not be the whole truth.
struct AnswerGap {
  NodeId node = 0;
  std::string text;  // for the reader: "The statement is not understood; it may change A."
};

struct Chain {
  std::vector<ChainLink> links;  // by the place of the other end in the program; each pair and kind once
  // That lie on the ways followed; of a question backward also the jumps to names that are not declared, wherever they
  // stand.
  std::vector<AnswerGap> gaps;
};

// What a call does to an argument that it can change, where the called program is known.
struct CallOutcome {
  ByteSet surely;   // overwritten on every way through the program
  ByteSet perhaps;  // on some
};
// Of the statement and operand of a call; nothing where it is not known, and any byte of the place may be changed.
using CallOutcomes = std::function<std::optional<CallOutcome>(NodeId statement, NodeId operand, const StoragePlace&)>;

// The questions about one unit of a model. Not for two threads at a time.
class ProgramFlow {
 public:
  // Throws platform::Error when there is no dataflow for the language of the model. Returns are matched to their calls
  // as far as `mostPoints` allows (RangeBodies).
  ProgramFlow(std::shared_ptr<const codemodel::ModelImage> model, std::uint32_t unit, CallOutcomes outcomes = {},
              std::size_t mostPoints = RangeBodies::kMostPoints);
  ~ProgramFlow();

  const codemodel::ModelImage& Model() const;
  std::uint32_t Unit() const;
  // Made when first asked for.
  const FlowGraph& Flow();
  const RangeBodies& Bodies();

  // The definitions that reach an occurrence (VAR) which is used there; of all its bytes, or of these ones of its area.
  // An occurrence that is not used, or never runs, has none.
  Chain DefinitionsReaching(NodeId occurrence, const ByteSet& bytes = ByteSet::All());
  // What an area holds when the unit comes to its end: at its GOBACKs and the like, and the end of its text.
  Chain DefinitionsAtEnd(NodeId area, const ByteSet& bytes);
  // The uses that a definition (VAR, or DECL for what the program starts with) reaches; `atEnd` tells those bytes that
  // still hold it where the unit ends.
  Chain UsesReached(NodeId definition, const ByteSet& bytes = ByteSet::All(), ByteSet* atEnd = nullptr);
  // The uses of what an area holds when the unit starts.
  Chain UsesOfStart(NodeId area, const ByteSet& bytes, ByteSet* atEnd = nullptr);
  // The uses that a definition of the statement with this operand takes its value from, and the other way round.
  // With bytes, of what goes into these (comes from these): a group that is moved as it is feeds byte by byte, and the
  // places are narrowed to the bytes concerned.
  std::vector<Effect> FeedsOf(NodeId definition, const ByteSet& bytes = ByteSet::All());
  std::vector<Effect> FedBy(NodeId use, const ByteSet& bytes = ByteSet::All());
  StatementConditions ConditionsOf(NodeId statement);
  // As UnitEffects tells them.
  const std::vector<ProgramCall>& Calls();
  const std::vector<Argument>& Parameters();
  // With entry 0, those at the beginning.
  const std::vector<Argument>& ParametersAt(NodeId entry);
  std::size_t Bytes() const;  // that the answers so far hold in memory, about

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace qmrules::workbench::flow
