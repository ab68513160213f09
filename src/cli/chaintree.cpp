#include "cli/chaintree.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "workbench/codemodel/crossreference.h"

namespace qmrules::cli {

using workbench::codemodel::Entity;
using workbench::codemodel::VarUsage;
using workbench::flow::ByteInterval;
using workbench::flow::ByteSet;
using workbench::flow::CallContext;
using workbench::flow::ChainLink;
using workbench::flow::Effect;
using workbench::flow::kMostContexts;
using workbench::flow::LinkReason;
using workbench::flow::NetworkChain;
using workbench::flow::NetworkGap;
using workbench::flow::NetworkLink;
using workbench::flow::NetworkProgram;
using workbench::flow::NodeId;

namespace {

NodeId ItemOf(const NetworkProgram& program, NodeId operand) {
  const auto& record = program.model->Nodes()[operand];
  const NodeId item = record.entity == Entity::Decl ? operand : record.declaration;
  return item != 0 && program.model->Nodes()[item].entity == Entity::Decl ? item : 0;
}

// The part of the variable, counted from its own first byte, that a link is about; nothing for all of it, and for an
// element of a table, whose place is not that of its declaration.
std::optional<ByteInterval> PartOf(const NetworkProgram& program, NodeId operand, const ChainLink& link) {
  const NodeId item = ItemOf(program, operand);
  if (item == 0 || link.bytes.Empty()) return std::nullopt;
  const auto& decl = program.model->Decl(item);
  const ByteInterval hull{link.bytes.Intervals().front().begin, link.bytes.Intervals().back().end};
  if (decl.area != link.area || hull.begin < decl.offset || hull.end > decl.offset + decl.size) return std::nullopt;
  if (link.bytes.Bytes() == decl.size) return std::nullopt;
  return ByteInterval{hull.begin - decl.offset, hull.end - decl.offset};
}

}  // namespace

ChainNode ChainTreeBuilder::NodeOf(NetworkProgram& program, NodeId operand, NodeId statement) {
  ChainNode node;
  node.program = &program;
  node.operand = operand;
  node.statement = statement;
  node.name = program.model->Text(program.model->Nodes()[operand].name);
  if (statement != 0 && program.model->Nodes()[statement].entity != Entity::Division) {
    node.conditions = program.flow->ConditionsOf(statement);
  }
  ++tree_.nodes;
  return node;
}

void ChainTreeBuilder::Add(NetworkProgram& program, NodeId occurrence) {
  const NodeId statement = StatementAround(*program.model, occurrence);
  const bool isCall = statement != 0 && program.model->Nodes()[statement].entity == Entity::Port;
  const bool isUsed = program.model->Nodes()[occurrence].usage != VarUsage::In;
  std::vector<ChainNode> nodes;
  ChainNode root = NodeOf(program, occurrence, statement);
  // ADD 1 TO A: the A that the statement makes is made from the one that it finds.
  const bool isMadeHere = IsBackward() && !isCall && !program.flow->FeedsOf(occurrence).empty();
  if (!isMadeHere) Follow(root, {occurrence, ByteSet::All()}, 1, nodes);
  if (nodes.empty() && (IsBackward() || isUsed)) {
    Expand(root, ByteSet::All(), 0);
    nodes.push_back(std::move(root));
  }
  std::ranges::move(nodes, std::back_inserter(tree_.roots));
}

// What the node's statement makes its value from, or makes of it.
std::vector<ChainTreeBuilder::Step> ChainTreeBuilder::StepsFrom(const ChainNode& node, const ByteSet& bytes) {
  auto& flow = *node.program->flow;
  std::vector<Step> steps;
  for (const Effect& effect : IsBackward() ? flow.FeedsOf(node.operand, bytes) : flow.FedBy(node.operand, bytes)) {
    if (effect.place.area == 0) continue;
    auto same = std::ranges::find(steps, effect.operand, &Step::operand);
    if (same == steps.end()) same = steps.insert(steps.end(), {effect.operand, {}});
    same->bytes.Add(effect.place.Bytes());
  }
  return steps;
}

std::vector<ChainTreeBuilder::Step> ChainTreeBuilder::NotYetAsked(const ChainNode& node,
                                                                  const std::vector<Step>& steps) const {
  std::vector<Step> fresh;
  for (Step step : steps) {
    if (const auto operand = asked_.find({node.program, step.operand}); operand != asked_.end()) {
      for (const Asked& asked : operand->second) {
        if (Covers(asked.context, node.context)) step.bytes.Remove(asked.bytes);
      }
    }
    if (!step.bytes.Empty()) fresh.push_back(std::move(step));
  }
  return fresh;
}

bool ChainTreeBuilder::AreAskedSomewhere(const NetworkProgram& program, const std::vector<Step>& steps) const {
  return std::ranges::all_of(steps, [&](const Step& step) {
    ByteSet fresh = step.bytes;
    if (const auto operand = asked_.find({&program, step.operand}); operand != asked_.end()) {
      for (const Asked& asked : operand->second) fresh.Remove(asked.bytes);
    }
    return fresh.Empty();
  });
}

void ChainTreeBuilder::AddGap(NetworkGap gap) {
  const auto same = [&](const NetworkGap& other) {
    return other.program == gap.program && other.gap.node == gap.gap.node && other.gap.text == gap.gap.text;
  };
  if (std::ranges::none_of(tree_.gaps, same)) tree_.gaps.push_back(std::move(gap));
}

ChainNode ChainTreeBuilder::NodeOf(const NetworkLink& found) {
  const ChainLink& link = found.link;
  const NodeId operand = IsBackward() ? link.definition : link.use;
  ChainNode node = NodeOf(*found.program, operand, IsBackward() ? link.definedAt : link.usedAt);
  // Backward the name is that of what the definition is for, forward that of the use itself.
  const NodeId named = link.use;
  if (named != 0) {
    node.name = found.program->model->Text(found.program->model->Nodes()[named].name);
    node.bytes = PartOf(*found.program, named, link);
  }
  if (IsBackward()) node.kind = link.kind;
  node.overlaps = link.reason == LinkReason::Overlap;
  node.mayDefine = IsBackward() && link.mayDefine;
  node.calls = found.calls;
  node.context = found.context;
  node.isOfOtherCall = found.isOfOtherCall;
  return node;
}

// Has the question led to the link before, whatever the context? From now on it has.
bool ChainTreeBuilder::IsShown(const Place& asked, const NetworkLink& found) {
  const Place reached{found.program, IsBackward() ? found.link.definition : found.link.use};
  const auto [edge, isNew] =
      shown_.try_emplace({asked, reached, found.link.kind, found.calls, found.isOfOtherCall}, found.link.bytes);
  if (isNew) return false;
  ByteSet fresh = found.link.bytes;
  fresh.Remove(edge->second);
  edge->second.Add(fresh);
  return fresh.Empty();
}

void ChainTreeBuilder::Follow(const ChainNode& from, const Step& step, std::size_t depth,
                              std::vector<ChainNode>& nodes) {
  NetworkProgram& program = *from.program;
  auto& asked = asked_[{&program, step.operand}];
  const CallContext context = asked.size() < kMostContexts ? from.context : CallContext();
  auto same = std::ranges::find(asked, context, &Asked::context);
  if (same == asked.end()) same = asked.insert(asked.end(), {context, {}});
  same->bytes.Add(step.bytes);
  NetworkChain chain = IsBackward() ? network_.DefinitionsReaching(program, step.operand, step.bytes, context)
                                    : network_.UsesReached(program, step.operand, step.bytes, context);
  for (NetworkGap& gap : chain.gaps) AddGap(std::move(gap));
  for (const NetworkLink& found : chain.links) {
    const bool isShown = IsShown({&program, step.operand}, found);
    ChainNode node = NodeOf(found);
    Expand(node, found.link.bytes, depth);
    if (isShown && from.insideSeen && !node.cut) {
      std::ranges::move(node.next, std::back_inserter(nodes));
    } else {
      nodes.push_back(std::move(node));
    }
  }
}

void ChainTreeBuilder::Expand(ChainNode& node, const ByteSet& bytes, std::size_t depth) {
  const auto steps = StepsFrom(node, bytes);
  if (steps.empty()) return;
  node.seenBefore = NotYetAsked(node, steps).empty();
  if (node.seenBefore) return;
  if (depth >= depth_ || tree_.nodes >= kMostNodes) {
    node.cut = true;
    return;
  }
  node.insideSeen = AreAskedSomewhere(*node.program, steps);
  // What one step leads to can ask about the next one.
  for (const Step& step : steps) {
    for (const Step& fresh : NotYetAsked(node, {step})) Follow(node, fresh, depth + 1, node.next);
  }
}

}  // namespace qmrules::cli
