#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
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
  bool isFromEarlierCall = false;                  // of the program: its storage is as that call has left it
  workbench::flow::StatementConditions conditions;
  bool seenBefore = false;  // what follows stands where it came up first
  bool cut = false;         // what follows is deeper than was asked for
  std::vector<ChainNode> next;
};

struct ChainTree {
  std::vector<ChainNode> roots;
  std::vector<workbench::flow::NetworkGap> gaps;  // each once
  std::size_t nodes = 0;
  bool isBackward = true;
};

// Follows chains from definition to definition, or from use to use, each of them once.
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
  // the root.
  void Add(workbench::flow::NetworkProgram& program, workbench::flow::NodeId occurrence);
  ChainTree Take() { return std::move(tree_); }

 private:
  using NodeId = workbench::flow::NodeId;
  struct Step {
    NodeId operand = 0;
    std::optional<workbench::flow::ByteSet> bytes;
  };

  bool IsBackward() const { return direction_ == Direction::Backward; }
  ChainNode NodeOf(workbench::flow::NetworkProgram& program, NodeId operand, NodeId statement);
  std::vector<Step> StepsFrom(const ChainNode& node, const workbench::flow::ByteSet* bytes);
  void Follow(workbench::flow::NetworkProgram& program, const Step& step, std::size_t depth,
              std::vector<ChainNode>& nodes);
  void Expand(ChainNode& node, const workbench::flow::ByteSet* bytes, std::size_t depth);

  workbench::flow::ProgramNetwork& network_;
  Direction direction_;
  std::size_t depth_;
  std::set<std::pair<const workbench::flow::NetworkProgram*, std::pair<NodeId, NodeId>>> seen_;
  ChainTree tree_;
};

}  // namespace qmrules::cli
