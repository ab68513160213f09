#include "workbench/flow/oracle/chaincheck.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/codemodel/crossreference.h"

namespace qmrules::test {

using workbench::codemodel::Entity;
using workbench::codemodel::ModelImage;
using workbench::codemodel::NodeId;
using workbench::codemodel::NodeRecord;
using workbench::codemodel::StatementAround;
using workbench::flow::ByteInterval;
using workbench::flow::ByteSet;
using workbench::flow::ChainLink;
using workbench::flow::ControllingCondition;
using workbench::flow::DefinitionKind;
using workbench::flow::FlowGraph;
using workbench::flow::Point;
using workbench::flow::PointId;
using workbench::flow::PointKind;
using workbench::flow::StatementConditions;
using workbench::flow::WayIn;

namespace {

// The statement or condition that an occurrence is an operand of.
NodeId OperandOf(const ModelImage& model, NodeId node) {
  const NodeId statement = StatementAround(model, node);
  for (NodeId around = node; around != statement && around != 0; around = model.Nodes()[around].parent) {
    if (model.Nodes()[around].entity == Entity::Cond) return around;
  }
  return statement;
}

bool IsAmong(const std::vector<ChainLink>& links, const ChainLink& wanted) {
  return std::ranges::any_of(
      links, [&](const ChainLink& link) { return link.use == wanted.use && link.definition == wanted.definition; });
}

}  // namespace

ChainCheck::ChainCheck(std::shared_ptr<const ModelImage> model) : model_(std::move(model)), flow_(model_, 0) {
  for (NodeId node = 1; node < model_->Nodes().size(); ++node) {
    const NodeRecord& record = model_->Nodes()[node];
    if (record.entity == Entity::Var) {
      const NodeId operandOf = OperandOf(*model_, node);
      if (operandOf != 0) occurrences_[{RowOf(operandOf), std::string(model_->Text(record.name))}].push_back(node);
    } else if (record.entity == Entity::Decl && model_->Decl(node).area == node) {
      areas_[std::string(model_->Text(record.name))] = node;
    }
  }
  const FlowGraph& graph = flow_.Flow();
  for (PointId point = 0; point < graph.Points().size(); ++point) {
    const Point& at = graph.Points()[point];
    const bool isStatement = at.kind == PointKind::Statement || (at.kind == PointKind::Leave && at.node != 0);
    if (isStatement) statements_.emplace(RowOf(at.node), at.node);
  }
}

std::uint32_t ChainCheck::RowOf(NodeId node) const {
  return model_->Nodes()[node].firstRow;
}

void ChainCheck::Check(const std::vector<RunEvent>& events) {
  outcomes_.clear();
  for (const RunEvent& event : events) {
    if (event.kind == RunEvent::Kind::ComesOut) {
      outcomes_[event.row] = event.sense;
      continue;
    }
    ++checked_;
    if (event.kind == RunEvent::Kind::Reads) {
      CheckRead(event);
    } else {
      CheckStatement(event.row);
    }
  }
}

const ChainCheck::Use& ChainCheck::UseOf(std::uint32_t row, const std::string& name) {
  const auto [use, isNew] = uses_.try_emplace({row, name});
  if (!isNew) return use->second;
  for (const NodeId occurrence : occurrences_[{row, name}]) {
    for (ChainLink& link : flow_.DefinitionsReaching(occurrence).links) use->second.links.push_back(std::move(link));
  }
  return use->second;
}

// 0 for what the program starts with.
std::uint32_t ChainCheck::RowOfDefinition(const ChainLink& link) const {
  const bool isFirst = link.kind == DefinitionKind::InitialValue || link.kind == DefinitionKind::Parameter;
  return isFirst ? 0 : RowOf(link.definedAt);
}

// The links of the use that tell of these bytes and this writer. Different parts of a statement, or of the data
// division, may have written them.
std::vector<const ChainLink*> ChainCheck::LinksOf(const RunEvent& read) {
  std::vector<const ChainLink*> links;
  const auto area = areas_.find(read.area);
  if (area == areas_.end()) return links;
  for (const ChainLink& link : UseOf(read.row, read.name).links) {
    const bool isOfThese = link.area == area->second && RowOfDefinition(link) == read.writer;
    if (isOfThese && link.bytes.Overlaps({read.begin, read.end})) links.push_back(&link);
  }
  return links;
}

bool ChainCheck::TellsForward(const ChainLink& link) {
  const auto [answer, isNew] = forward_.try_emplace({link.definition, link.use});
  if (isNew) answer->second = IsAmong(flow_.UsesReached(link.definition).links, link);
  return answer->second;
}

void ChainCheck::CheckRead(const RunEvent& read) {
  const std::string what = fmt::format("row {} reads {}, bytes {} to {} of {}, written at row {}", read.row, read.name,
                                       read.begin, read.end, read.area, read.writer);
  ByteSet missing(ByteInterval{read.begin, read.end});
  bool isForward = true;
  for (const ChainLink* link : LinksOf(read)) {
    missing.Remove(link->bytes);
    if (!TellsForward(*link)) isForward = false;
  }
  if (!missing.Empty()) {
    misses_.insert(what + ": not in the chain");
    return;
  }
  seen_.insert({read.row, read.name, read.writer});
  if (!isForward) misses_.insert(what + ": not among the uses that the definition reaches");
}

std::size_t ChainCheck::Told() const {
  std::set<std::tuple<std::uint32_t, std::string, std::uint32_t>> told;
  for (const auto& [place, use] : uses_) {
    for (const ChainLink& link : use.links) told.insert({place.first, place.second, RowOfDefinition(link)});
  }
  return told.size();
}

bool ChainCheck::CameOut(const ControllingCondition& condition) const {
  const auto outcome = outcomes_.find(RowOf(condition.condition));
  return outcome != outcomes_.end() && outcome->second == condition.sense;
}

const StatementConditions& ChainCheck::ConditionsOf(NodeId statement) {
  const auto [conditions, isNew] = conditions_.try_emplace(statement);
  if (isNew) conditions->second = flow_.ConditionsOf(statement);
  return conditions->second;
}

void ChainCheck::CheckStatement(std::uint32_t row) {
  const auto [first, last] = statements_.equal_range(row);
  if (first == last) misses_.insert(fmt::format("row {} runs: no statement is there", row));
  for (auto at = first; at != last; ++at) {
    const StatementConditions& conditions = ConditionsOf(at->second);
    if (!conditions.runs) misses_.insert(fmt::format("row {} runs: told never to", row));
    for (const ControllingCondition& condition : conditions.always) {
      if (CameOut(condition)) continue;
      misses_.insert(fmt::format("row {} runs: the condition of row {} did not come out {}", row,
                                 RowOf(condition.condition), condition.sense ? "true" : "false"));
    }
    const auto holds = [this](const WayIn& way) {
      return std::ranges::all_of(way.conditions, [this](const auto& condition) { return CameOut(condition); });
    };
    if (!conditions.waysIn.empty() && std::ranges::none_of(conditions.waysIn, holds)) {
      misses_.insert(fmt::format("row {} runs: the conditions of no way in hold", row));
    }
  }
}

}  // namespace qmrules::test
