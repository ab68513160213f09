#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "workbench/flow/programnetwork.h"

namespace qmrules::cli {

// One definition of a chain backward, or one use of a chain forward, with what follows from it.
struct ChainNode {
  workbench::flow::NetworkProgram* program = nullptr;
  workbench::flow::NodeId operand = 0;    // VAR, DECL, CONST, or the statement
  workbench::flow::NodeId statement = 0;  // 0 or the DIVISION where the program starts
  std::string name;  // the variable that it defines (uses), as it is called where the chain comes from
  std::optional<workbench::flow::DefinitionKind> kind;  // of a definition
  std::optional<workbench::flow::ByteInterval> bytes;   // of that variable, where it is not all of it
  bool overlaps = false;                                // through another name for the same bytes
  bool mayDefine = false;
  std::vector<workbench::flow::CallPassed> calls;  // between the one above and this
  workbench::flow::CallContext context;            // in which the chain is in the program
  bool isOfOtherCall = false;                      // an earlier call of the program left it, or a later one finds it
  workbench::flow::StatementConditions conditions;
  bool seenBefore = false;  // all that follows stands where it came up first
  bool insideSeen = false;  // it came up first by another call: what follows here is what is different from there
  bool cut = false;         // what follows is deeper than was asked for
  std::vector<ChainNode> next;
};

struct ChainTree {
  std::vector<ChainNode> roots;
  std::vector<workbench::flow::NetworkGap> gaps;  // each once
  std::size_t nodes = 0;
  bool isBackward = true;
};

// Follows chains from definition to definition, or from use to use. Each byte of an occurrence is asked about once in
// each context: a chain that comes to a group move again, for other bytes of it, goes on for these, and one that comes
// to a called program again by another call comes out at that call; what it goes through inside is not shown again.
class ChainTreeBuilder {
 public:
  enum class Direction : std::uint8_t { Backward, Forward };
  static constexpr std::size_t kDeepest = 200;
  static constexpr std::size_t kMostNodes = 20'000;

  // No deeper than `depth` links.
  ChainTreeBuilder(workbench::flow::ProgramNetwork& network, Direction direction, std::size_t depth)
      : network_(network), direction_(direction), depth_(depth) {
    tree_.isBackward = IsBackward();
  }

  // Roots are the definitions (uses) of the occurrence. Where the statement that it stands in is one itself, that is
  // the root. There is none for a value that nothing uses.
  void Add(workbench::flow::NetworkProgram& program, workbench::flow::NodeId occurrence);
  ChainTree Take() { return std::move(tree_); }

 private:
  using NodeId = workbench::flow::NodeId;
  // A question that follows from a node.
  struct Step {
    NodeId operand = 0;
    workbench::flow::ByteSet bytes;  // of the operand's area
  };

  bool IsBackward() const { return direction_ == Direction::Backward; }
  ChainNode NodeOf(workbench::flow::NetworkProgram& program, NodeId operand, NodeId statement);
  std::vector<Step> StepsFrom(const ChainNode& node, const workbench::flow::ByteSet& bytes);
  // What was asked of an operand, in one context.
  struct Asked {
    workbench::flow::CallContext context;
    workbench::flow::ByteSet bytes;
  };
  // An operand of a program.
  using Place = std::pair<const workbench::flow::NetworkProgram*, NodeId>;
  // From the operand asked about to the one found, with how it was found.
  using Edge =
      std::tuple<Place, Place, workbench::flow::DefinitionKind, std::vector<workbench::flow::CallPassed>, bool>;
  std::vector<Step> NotYetAsked(const ChainNode& node, const std::vector<Step>& steps) const;
  bool AreAskedSomewhere(const workbench::flow::NetworkProgram& program, const std::vector<Step>& steps) const;
  void Follow(const ChainNode& from, const Step& step, std::size_t depth, std::vector<ChainNode>& nodes);
  ChainNode NodeOf(const workbench::flow::NetworkLink& found);
  bool IsShown(const Place& asked, const workbench::flow::NetworkLink& found);
  void Expand(ChainNode& node, const workbench::flow::ByteSet& bytes, std::size_t depth);
  void AddGap(workbench::flow::NetworkGap gap);

  workbench::flow::ProgramNetwork& network_;
  Direction direction_;
  std::size_t depth_;
  std::map<Place, std::vector<Asked>> asked_;
  std::map<Edge, workbench::flow::ByteSet> shown_;
  ChainTree tree_;
};

}  // namespace qmrules::cli
