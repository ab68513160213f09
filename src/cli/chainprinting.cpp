#include "cli/chainprinting.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "cli/displaywidth.h"

namespace qmrules::cli {

using workbench::codemodel::Entity;
using workbench::flow::CallPassed;
using workbench::flow::ControllingCondition;
using workbench::flow::NetworkGap;
using workbench::flow::WayIn;

std::string ChainPrinter::Place(const Program& program, NodeId node) const {
  const auto& record = program.model->Nodes()[node];
  return fmt::format("{}:{}", program.model->FileName(record.file), record.firstRow);
}

std::string ChainPrinter::Line(const Program& program, NodeId node) {
  auto& lines = lines_[program.model.get()];
  if (!lines) lines = std::make_unique<SourceLines>(host_, *program.model);
  const auto& record = program.model->Nodes()[node];
  return lines->Row(record.file, record.firstRow);
}

namespace {

// "NOT A = B" told as what did not hold reads better as "A = B".
bool IsPlainNegation(std::string_view text) {
  return text.starts_with("NOT ") && text.find(" AND ") == std::string_view::npos &&
         text.find(" OR ") == std::string_view::npos;
}

}  // namespace

// Where a node is shown: its statement, or the declaration of what the program starts with.
ChainPrinter::NodeId ChainPrinter::PlaceOf(const ChainNode& node) const {
  const bool isAtStart = node.statement == 0 || node.program->model->Nodes()[node.statement].entity == Entity::Division;
  return isAtStart ? node.operand : node.statement;
}

std::string ChainPrinter::Occurrence(const Program& program, NodeId node) {
  return fmt::format("{}  {}  {}", program.model->Text(program.model->Nodes()[node].name), Place(program, node),
                     Line(program, node));
}

std::string ChainPrinter::Remarks(const ChainNode& node) const {
  std::string text;
  const auto add = [&](const std::string& part) {
    if (!text.empty()) text += ", ";
    text += part;
  };
  if (node.kind) add(std::string(NameOf(*node.kind)));
  if (node.mayDefine) add("perhaps");
  if (node.isOfOtherCall) add(node.kind ? "when the program was called before" : "when the program is called again");
  if (node.bytes) {
    add(node.bytes->end == node.bytes->begin + 1
            ? fmt::format("byte {}", node.bytes->end)
            : fmt::format("bytes {} to {}", node.bytes->begin + 1, node.bytes->end));
  }
  const std::string_view name = node.program->model->Text(node.program->model->Nodes()[node.operand].name);
  if (node.overlaps) add(fmt::format("through {}, which overlaps it", name.empty() ? "FILLER" : name));
  return text.empty() ? text : "  [" + text + "]";
}

std::string ChainPrinter::ConditionText(const Program& program, const ControllingCondition& condition) const {
  const auto& model = *program.model;
  const auto& record = model.Nodes()[condition.condition];
  std::string tested = OneLine(model.Text(record.detail));
  const bool isTurned = !condition.sense && IsPlainNegation(tested);
  if (isTurned) tested.erase(0, 4);
  std::string text =
      fmt::format("{} {}  ({})", condition.sense || isTurned ? "when" : "unless", tested, record.firstRow);
  if (condition.within != 0) {
    text += fmt::format(", tested in what is performed at {}", model.Nodes()[condition.within].firstRow);
  }
  return text;
}

ChainPrinter::Common& ChainPrinter::CommonOf(const Program& program) {
  const auto found = std::ranges::find(common_, &program, &Common::program);
  return found != common_.end() ? *found : common_.emplace_back(Common{&program, {}, 0});
}

// A loop that has ended in a range that has returned tells nothing about the statement.
std::vector<ControllingCondition> ChainPrinter::ShownConditions(const ChainNode& node) {
  const auto& common = CommonOf(*node.program).conditions;
  std::vector<ControllingCondition> shown;
  std::ranges::copy_if(node.conditions.always, std::back_inserter(shown), [&](const ControllingCondition& condition) {
    return !(condition.ended && condition.within != 0) && std::ranges::find(common, condition) == common.end();
  });
  return shown;
}

// Conditions that stand at the node above, all of them, are not told again.
void ChainPrinter::PrintConditions(std::ostream& out, const ChainNode& node, const ChainNode* above,
                                   const std::string& indent) {
  const Program& program = *node.program;
  if (!node.conditions.runs) out << indent << "never runs\n";
  std::vector<ControllingCondition> shown = ShownConditions(node);
  if (above != nullptr && above->program == node.program) {
    const std::vector<ControllingCondition> told = ShownConditions(*above);
    const auto isShown = [&](const ControllingCondition& condition) {
      return std::ranges::find(shown, condition) != shown.end();
    };
    if (told.size() > 1 && std::ranges::all_of(told, isShown)) {
      std::erase_if(shown, [&](const auto& each) { return std::ranges::find(told, each) != told.end(); });
      out << indent << (shown.empty() ? "as above\n" : "as above, and\n");
    }
  }
  for (const ControllingCondition& condition : shown) out << indent << ConditionText(program, condition) << '\n';
  if (node.conditions.areCut) out << indent << "and perhaps under more conditions: too many PERFORMs lead here\n";
  for (const WayIn& way : node.conditions.waysIn) {
    if (way.conditions.empty()) continue;
    out << indent << (way.perform == 0 ? "from above" : "performed at " + Place(program, way.perform)) << '\n';
    for (const ControllingCondition& condition : way.conditions) {
      out << indent << "  " << ConditionText(program, condition) << '\n';
    }
  }
}

void ChainPrinter::Print(std::ostream& out, const ChainNode& node, const ChainNode* above, std::size_t depth) {
  const std::string indent(2 * depth, ' ');
  const NodeId place = PlaceOf(node);
  out << indent
      << fmt::format("{} {} {}  {}{}", node.name.empty() ? "FILLER" : node.name, arrow_, Place(*node.program, place),
                     Line(*node.program, place), Remarks(node));
  if (node.seenBefore) out << "  (see above)";
  if (node.insideSeen) out << "  (inside as above)";
  if (node.cut) out << "  (goes on)";
  out << '\n';
  for (const CallPassed& call : node.calls) {
    out << indent << "    through the call at " << Place(*call.program, call.statement) << '\n';
  }
  if (!node.seenBefore && !node.insideSeen) PrintConditions(out, node, above, indent + "    ");
  for (const ChainNode& next : node.next) Print(out, next, &node, depth + 1);
}

void ChainPrinter::FindCommon(const std::vector<ChainNode>& nodes) {
  for (const ChainNode& node : nodes) {
    const bool isStatement =
        PlaceOf(node) == node.statement && node.conditions.runs && !node.seenBefore && !node.insideSeen;
    Common& common = CommonOf(*node.program);
    if (isStatement && common.statements++ == 0) {
      common.conditions = ShownConditions(node);
    } else if (isStatement) {
      const auto& own = node.conditions.always;
      std::erase_if(common.conditions, [&](const auto& shared) { return std::ranges::find(own, shared) == own.end(); });
    }
    FindCommon(node.next);
  }
}

void ChainPrinter::PrintCommon(std::ostream& out) const {
  for (const Common& common : common_) {
    if (common.conditions.empty()) continue;
    out << (common_.size() == 1 ? std::string("  All of it runs only\n")
                                : fmt::format("  All of it in {} runs only\n", common.program->name));
    for (const ControllingCondition& condition : common.conditions) {
      out << "      " << ConditionText(*common.program, condition) << '\n';
    }
  }
}

void ChainPrinter::Print(std::ostream& out, const ChainTree& tree) {
  arrow_ = tree.isBackward ? "<-" : "->";
  common_.clear();
  FindCommon(tree.roots);
  for (Common& common : common_) {
    if (common.statements < 2) common.conditions.clear();
  }
  PrintCommon(out);
  if (tree.roots.empty()) out << "  is used nowhere\n";
  for (const ChainNode& root : tree.roots) Print(out, root, nullptr, 1);
  if (tree.gaps.empty()) return;
  out << "\nWhat is not known:\n";
  for (const NetworkGap& gap : tree.gaps) {
    out << fmt::format("  {}  {}\n", Place(*gap.program, gap.gap.node), gap.gap.text);
  }
}

Json ChainPrinter::PlaceAsJson(const Program& program, NodeId node) {
  const auto& record = program.model->Nodes()[node];
  return {{"program", program.name},
          {"key", fmt::format("{}#{}", NameOf(record.entity), node)},
          {"file", program.model->FileName(record.file)},
          {"row", record.firstRow},
          {"text", Line(program, node)}};
}

Json ChainPrinter::ConditionsAsJson(const Program& program, const std::vector<ControllingCondition>& conditions) {
  Json list = Json::array();
  for (const ControllingCondition& condition : conditions) {
    Json json = PlaceAsJson(program, condition.condition);
    json["condition"] = program.model->Text(program.model->Nodes()[condition.condition].detail);
    json["holds"] = condition.sense;
    if (condition.within != 0) json["within"] = PlaceAsJson(program, condition.within);
    list.push_back(std::move(json));
  }
  return list;
}

Json ChainPrinter::AsJson(const ChainNode& node) {
  const Program& program = *node.program;
  Json json = PlaceAsJson(program, PlaceOf(node));
  json["name"] = node.name;
  json["operand"] = fmt::format("{}#{}", NameOf(program.model->Nodes()[node.operand].entity), node.operand);
  if (node.kind) json["kind"] = NameOf(*node.kind);
  if (node.bytes) json["bytes"] = {{"from", node.bytes->begin + 1}, {"to", node.bytes->end}};
  json["overlap"] = node.overlaps;
  if (node.kind) json["perhaps"] = node.mayDefine;
  json["calls"] = Json::array();
  for (const CallPassed& call : node.calls) json["calls"].push_back(PlaceAsJson(*call.program, call.statement));
  json[node.kind ? "earlierCall" : "laterCall"] = node.isOfOtherCall;
  json["runs"] = node.conditions.runs;
  json["conditions"] = ConditionsAsJson(program, node.conditions.always);
  json["conditionsCut"] = node.conditions.areCut;
  json["waysIn"] = Json::array();
  for (const WayIn& way : node.conditions.waysIn) {
    json["waysIn"].push_back({{"perform", way.perform == 0 ? Json() : PlaceAsJson(program, way.perform)},
                              {"conditions", ConditionsAsJson(program, way.conditions)}});
  }
  json["seenBefore"] = node.seenBefore;
  json["insideSeen"] = node.insideSeen;
  json["goesOn"] = node.cut;
  json["next"] = Json::array();
  for (const ChainNode& next : node.next) json["next"].push_back(AsJson(next));
  return json;
}

Json ChainPrinter::AsJson(const ChainTree& tree) {
  Json json{{"chain", Json::array()}, {"gaps", Json::array()}};
  for (const ChainNode& root : tree.roots) json["chain"].push_back(AsJson(root));
  for (const NetworkGap& gap : tree.gaps) {
    Json place = PlaceAsJson(*gap.program, gap.gap.node);
    place["gap"] = gap.gap.text;
    json["gaps"].push_back(std::move(place));
  }
  return json;
}

}  // namespace qmrules::cli
