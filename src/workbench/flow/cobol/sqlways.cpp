#include "workbench/flow/cobol/sqlways.h"

#include <algorithm>

#include "workbench/codemodel/nodewalk.h"

namespace qmrules::workbench::flow::cobol {

using codemodel::Role;

namespace {

constexpr std::string_view kStatement = "EXEC SQL ", kWhenever = "WHENEVER ";
constexpr std::array<std::string_view, 3> kConditionNames = {"NOT FOUND", "SQLERROR", "SQLWARNING"};

bool IsDeclaration(std::string_view name) {
  return name.starts_with("DECLARE") || name == "INCLUDE" || name.starts_with("BEGIN") || name.starts_with("END");
}

}  // namespace

void SqlWays::Whenever(NodeId node, std::string_view condition) {
  const auto named = std::ranges::find(kConditionNames, condition);
  if (named == kConditionNames.end()) return;
  Target& target = targets_[static_cast<std::size_t>(named - kConditionNames.begin())];
  target = {};
  labels_.LabelsOf(node, found_);
  if (found_.empty()) return;
  target.label = found_.front();
  const auto nodes = model_.Nodes();
  for (NodeId child = node + 1; child <= nodes[node].last; child = nodes[child].last + 1) {
    if (nodes[child].declaration == target.label) target.performed = nodes[child].role == Role::Body;
  }
}

void SqlWays::Statement(NodeId node) {
  ways_.Pass(node, PointKind::Statement);
  std::string_view name = model_.Text(model_.Nodes()[node].name);
  if (name.starts_with(kStatement)) name.remove_prefix(kStatement.size());
  if (name.starts_with(kWhenever)) return Whenever(node, name.substr(kWhenever.size()));
  if (IsDeclaration(name) || std::ranges::all_of(targets_, [](const Target& each) { return each.label == 0; })) return;
  const PointId chance = ways_.Pass(node, PointKind::Chance);
  for (std::size_t at = 0; at < kConditions; ++at) {
    const Target& target = targets_[at];
    const auto earlier = targets_.begin() + static_cast<std::ptrdiff_t>(at);
    if (target.label == 0 || std::find(targets_.begin(), earlier, target) != earlier) continue;
    if (target.performed) {
      const PointId call = ways_.AddCall(node, labels_.RangeOf(target.label, target.label));
      ways_.Lead(chance, call, WayKind::Exception);
      ways_.Open(call);
    } else {
      ways_.Lead(chance, labels_.StartOf(target.label), WayKind::Exception);
    }
  }
}

}  // namespace qmrules::workbench::flow::cobol
