#include "workbench/flow/oracle/chaincheck.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/codemodel/crossreference.h"

namespace qmrules::test {

using workbench::codemodel::DataSectionKind;
using workbench::codemodel::Entity;
using workbench::codemodel::ModelImage;
using workbench::codemodel::NodeId;
using workbench::codemodel::NodeRecord;
using workbench::codemodel::StatementAround;
using workbench::codemodel::UnitRecord;
using workbench::flow::ByteInterval;
using workbench::flow::ByteSet;
using workbench::flow::ControllingCondition;
using workbench::flow::DefinitionKind;
using workbench::flow::FlowGraph;
using workbench::flow::NetworkLink;
using workbench::flow::NetworkProgram;
using workbench::flow::Point;
using workbench::flow::PointId;
using workbench::flow::PointKind;
using workbench::flow::ProgramCall;
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

std::uint32_t RowOf(const ModelImage& model, NodeId node) {
  return model.Nodes()[node].firstRow;
}

// Does the node belong to the unit, and not to one nested in it?
bool IsOf(const ModelImage& model, std::uint32_t unit, NodeId node) {
  const auto units = model.Units();
  if (node < units[unit].firstNode || node > units[unit].lastNode) return false;
  return std::ranges::none_of(units, [&](const UnitRecord& inner) {
    const auto index = static_cast<std::uint32_t>(&inner - units.data());
    return index != unit && inner.parent == unit && node >= inner.firstNode && node <= inner.lastNode;
  });
}

// 0 for what the program starts with.
std::uint32_t RowOfDefinition(const NetworkLink& link) {
  const ModelImage& model = *link.program->model;
  const bool isFirst = link.link.kind == DefinitionKind::InitialValue || link.link.kind == DefinitionKind::Parameter;
  // Storage that programs share holds what the others have left.
  const bool isShared = model.Nodes()[link.link.definition].entity == Entity::Decl;
  return isFirst || isShared ? 0 : RowOf(model, link.link.definedAt);
}

bool HasEntry(const ModelImage& model, std::string_view name) {
  return std::ranges::any_of(model.NodesOf(Entity::Port), [&](NodeId port) {
    const NodeRecord& record = model.Nodes()[port];
    return (record.flags & workbench::codemodel::kPortUsing) != 0 && model.Text(record.detail) == name;
  });
}

}  // namespace

ChainCheck::ChainCheck(std::vector<std::shared_ptr<const ModelImage>> models)
    : models_(std::move(models)),
      network_(
          [this](std::string_view name) -> std::shared_ptr<const ModelImage> {
            for (const auto& model : models_) {
              if (model->Text(model->Units()[0].name) == name) return model;
            }
            const auto enters = [name](const auto& model) { return HasEntry(*model, name); };
            const auto found = std::ranges::find_if(models_, enters);
            return found == models_.end() ? nullptr : *found;
          },
          [this](std::string_view) {
            std::vector<std::string> names;
            for (const auto& model : models_) names.emplace_back(model->Text(model->Units()[0].name));
            return names;
          }) {
  for (const auto& model : models_) {
    for (std::uint32_t unit = 0; unit < model->Units().size(); ++unit) TakeUnit(model, unit);
  }
}

void ChainCheck::TakeUnit(const std::shared_ptr<const ModelImage>& model, std::uint32_t unit) {
  const UnitRecord& record = model->Units()[unit];
  const std::string program(model->Text(record.name));
  for (NodeId node = std::max<NodeId>(record.firstNode, 1); node <= record.lastNode; ++node) {
    if (!IsOf(*model, unit, node)) continue;
    const NodeRecord& at = model->Nodes()[node];
    const Place place{model.get(), unit, node};
    if (at.entity == Entity::Var) {
      const NodeId operandOf = OperandOf(*model, node);
      if (operandOf != 0) occurrences_[{RowOf(*model, operandOf), std::string(model->Text(at.name))}].push_back(place);
    } else if (at.entity == Entity::Decl && model->Decl(node).area == node) {
      const std::string name(model->Text(at.name));
      areas_[program + "/" + name] = place;
      if ((model->Decl(node).flags & workbench::codemodel::kGlobal) != 0) TakeGlobal(place, name);
    }
  }
  const FlowGraph graph = workbench::flow::FlowLanguageOf(*model)->BuildFlow(*model, unit);
  for (const Point& at : graph.Points()) {
    const bool isStatement = at.kind == PointKind::Statement || (at.kind == PointKind::Leave && at.node != 0);
    if (isStatement) statements_.emplace(RowOf(*model, at.node), Place{model.get(), unit, at.node});
  }
}

// The programs nested in this one know the item by its name.
void ChainCheck::TakeGlobal(const Place& item, const std::string& name) {
  const auto units = item.model->Units();
  for (std::uint32_t unit = item.unit + 1; unit < units.size(); ++unit) {
    if (units[unit].firstNode > units[item.unit].lastNode) continue;
    areas_.try_emplace(std::string(item.model->Text(units[unit].name)) + "/" + name,
                       Place{item.model, unit, item.node});
  }
}

NetworkProgram& ChainCheck::ProgramOf(const Place& place) {
  const auto owner = std::ranges::find(models_, place.model, [](const auto& model) { return model.get(); });
  return network_.Add(*owner, place.unit);
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
      hasRun_.insert(event.row);
      CheckStatement(event.row);
    }
  }
}

ChainCheck::Use& ChainCheck::UseOf(std::uint32_t row, const std::string& name) {
  const auto [use, isNew] = uses_.try_emplace({row, name});
  if (!isNew) return use->second;
  for (const Place& occurrence : occurrences_[{row, name}]) {
    for (NetworkLink& link : network_.DefinitionsReaching(ProgramOf(occurrence), occurrence.node).links) {
      use->second.links.push_back({occurrence, std::move(link)});
    }
  }
  return use->second;
}

// The links of the use that tell of these bytes and this writer. Different parts of a statement, or of the data
// division, may have written them.
std::vector<const ChainCheck::UseLink*> ChainCheck::LinksOf(const RunEvent& read) {
  std::vector<const UseLink*> links;
  const auto area = areas_.find(read.area);
  if (area == areas_.end()) return links;
  const Place& place = area->second;
  for (const UseLink& found : UseOf(read.row, read.name).links) {
    const NetworkLink& link = found.link;
    const bool isThere = link.program->model.get() == place.model && link.program->unit == place.unit;
    if (!isThere || link.link.area != place.node || RowOfDefinition(link) != read.writer) continue;
    if (link.link.bytes.Overlaps({read.begin, read.end})) links.push_back(&found);
  }
  return links;
}

// An argument of a call whose programs are known: its uses are in these.
bool ChainCheck::IsHandedOn(const Place& use) {
  NetworkProgram& program = ProgramOf(use);
  const auto& calls = program.flow->Calls();
  const NodeId statement = StatementAround(*use.model, use.node);
  const auto call = std::ranges::find(calls, statement, &ProgramCall::statement);
  return call != calls.end() && use.node != call->program && !network_.ProgramsCalled(program, *call).empty();
}

bool ChainCheck::TellsForward(const UseLink& link) {
  const NetworkProgram& defines = *link.link.program;
  const Place definition{defines.model.get(), defines.unit, link.link.link.definition};
  const auto [answer, isNew] = forward_.try_emplace({definition, link.use});
  if (!isNew) return answer->second;
  const auto uses = network_.UsesReached(ProgramOf(definition), definition.node).links;
  const bool isTold = std::ranges::any_of(uses, [&](const NetworkLink& reached) {
    return reached.program->model.get() == link.use.model && reached.link.use == link.use.node;
  });
  answer->second = isTold || IsHandedOn(link.use);
  return answer->second;
}

// Is the link in the chain of these bytes of its area? True without asking where the program may have read them as
// bytes of another area: a parameter's.
bool ChainCheck::TellsOfBytes(const UseLink& link, ByteInterval bytes) {
  const ModelImage& model = *link.link.program->model;
  const bool isOfUse = link.use.model == &model && link.use.unit == link.link.program->unit;
  const auto section = static_cast<DataSectionKind>(model.Decl(link.link.link.area).section);
  if (!isOfUse || section == DataSectionKind::Linkage) return true;
  const auto asked = std::make_tuple(link.use, link.link.link.definition, bytes.begin, bytes.end);
  const auto [answer, isNew] = narrow_.try_emplace(asked);
  if (!isNew) return answer->second;
  const auto links = network_.DefinitionsReaching(ProgramOf(link.use), link.use.node, ByteSet(bytes)).links;
  answer->second = std::ranges::any_of(
      links, [&](const NetworkLink& found) { return found.link.definition == link.link.link.definition; });
  return answer->second;
}

void ChainCheck::CheckRead(const RunEvent& read) {
  const std::string what = fmt::format("row {} reads {}, bytes {} to {} of {}, written at row {}", read.row, read.name,
                                       read.begin, read.end, read.area, read.writer);
  ByteSet missing(ByteInterval{read.begin, read.end});
  bool isForward = true;
  bool isNarrow = true;
  for (const UseLink* link : LinksOf(read)) {
    missing.Remove(link->link.link.bytes);
    if (!TellsForward(*link)) isForward = false;
    if (!TellsOfBytes(*link, {read.begin, read.end})) isNarrow = false;
  }
  if (!missing.Empty()) {
    misses_.insert(what + ": not in the chain");
    return;
  }
  uses_[{read.row, read.name}].seen.insert({read.writer, read.area.substr(0, read.area.find('/'))});
  if (!isNarrow) misses_.insert(what + ": not in the chain of these bytes alone");
  if (!isForward) misses_.insert(what + ": not among the uses that the definition reaches");
}

// What came in from the callers is told by their definitions.
std::set<ChainCheck::Writer> ChainCheck::WritersOf(const Use& use) const {
  std::set<Writer> writers = use.seen;
  for (const UseLink& link : use.links) {
    if (link.link.link.kind == DefinitionKind::Parameter) continue;
    writers.insert({RowOfDefinition(link.link), link.link.program->name});
  }
  return writers;
}

ChainCheck::Shares ChainCheck::Pairs() const {
  Shares shares;
  for (const auto& [place, use] : uses_) {
    for (const Writer& writer : WritersOf(use)) {
      ++shares.told;
      if (writer.first == 0 || hasRun_.contains(writer.first)) ++shares.couldBe;
      if (use.seen.contains(writer)) ++shares.seen;
    }
  }
  return shares;
}

std::vector<std::string> ChainCheck::Unseen() const {
  std::vector<std::string> unseen;
  for (const auto& [place, use] : uses_) {
    for (const Writer& writer : WritersOf(use)) {
      if (use.seen.contains(writer) || (writer.first != 0 && !hasRun_.contains(writer.first))) continue;
      unseen.push_back(fmt::format("unseen: row {} reads {}, written at row {} of {}", place.first, place.second,
                                   writer.first, writer.second));
    }
  }
  return unseen;
}

bool ChainCheck::CameOut(const ModelImage& model, const ControllingCondition& condition) const {
  const auto outcome = outcomes_.find(RowOf(model, condition.condition));
  return outcome != outcomes_.end() && outcome->second == condition.sense;
}

const StatementConditions& ChainCheck::ConditionsOf(const Place& statement) {
  const auto [conditions, isNew] = conditions_.try_emplace(statement);
  if (isNew) conditions->second = ProgramOf(statement).flow->ConditionsOf(statement.node);
  return conditions->second;
}

void ChainCheck::CheckStatement(std::uint32_t row) {
  const auto [first, last] = statements_.equal_range(row);
  if (first == last) misses_.insert(fmt::format("row {} runs: no statement is there", row));
  for (auto at = first; at != last; ++at) {
    const ModelImage& model = *at->second.model;
    const StatementConditions& conditions = ConditionsOf(at->second);
    if (!conditions.runs) misses_.insert(fmt::format("row {} runs: told never to", row));
    for (const ControllingCondition& condition : conditions.always) {
      if (CameOut(model, condition)) continue;
      misses_.insert(fmt::format("row {} runs: the condition of row {} did not come out {}", row,
                                 RowOf(model, condition.condition), condition.sense ? "true" : "false"));
    }
    const auto holds = [&](const WayIn& way) {
      return std::ranges::all_of(way.conditions, [&](const auto& condition) { return CameOut(model, condition); });
    };
    if (!conditions.waysIn.empty() && std::ranges::none_of(conditions.waysIn, holds)) {
      misses_.insert(fmt::format("row {} runs: the conditions of no way in hold", row));
    }
  }
}

}  // namespace qmrules::test
