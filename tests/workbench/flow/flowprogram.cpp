#include "workbench/flow/flowprogram.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

#include "workbench/flow/cobol/flowbuilder.h"

namespace qmrules::test {

using workbench::codemodel::Entity;
using workbench::codemodel::ModelImage;
using workbench::codemodel::NodeRecord;
using workbench::flow::FlowGap;
using workbench::flow::FlowGraph;
using workbench::flow::kNoPoint;
using workbench::flow::NodeId;
using workbench::flow::PerformRange;
using workbench::flow::Point;
using workbench::flow::PointId;
using workbench::flow::PointKind;
using workbench::flow::Way;
using workbench::flow::WayKind;

namespace {

std::string_view PrefixOf(WayKind kind) {
  switch (kind) {
    case WayKind::Jump:
      return "jump ";
    case WayKind::Exception:
      return "exception ";
    case WayKind::Loop:
      return "loop ";
    default:
      return "";
  }
}

}  // namespace

FlowProgram::FlowProgram(std::string_view annotated, std::uint32_t unit) : FlowProgram(CobolModel(annotated), unit) {}

FlowProgram FlowProgram::Of(std::string_view workingStorage, std::string_view procedures) {
  return FlowProgram(CobolModel::Of(workingStorage, procedures), 0);
}

FlowProgram::FlowProgram(CobolModel cobol, std::uint32_t unit)
    : cobol_(std::move(cobol)),
      image_(ModelImage::FromBytes(workbench::codemodel::SerializeModel(cobol_.Data()), "program")),
      unit_(unit),
      flow_(std::make_shared<const FlowGraph>(workbench::flow::cobol::BuildFlow(*image_, unit))) {
  for (PointId point = 0; point < flow_->Points().size(); ++point) RequireForm(point);
}

void FlowProgram::RequireForm(PointId id) const {
  const auto ways = flow_->WaysOut(id);
  std::set<PointId> targets;
  for (const Way& way : ways) targets.insert(way.to);
  bool right = targets.size() == ways.size() && (targets.empty() || *targets.rbegin() < flow_->Points().size());
  const Point& point = flow_->Points()[id];
  switch (point.kind) {
    case PointKind::Entry:
    case PointKind::Chance:
      right = right && !ways.empty();
      break;
    case PointKind::Statement:
    case PointKind::End:
      right = right && ways.size() <= 1;
      break;
    case PointKind::Leave:
      right = right && ways.empty();
      break;
    case PointKind::Condition:
      for (std::size_t at = 0; right && at < ways.size(); ++at) {
        const Point& to = flow_->Points()[ways[at].to];
        right = to.kind == PointKind::Holds && to.node == point.node && to.sense == (at == 0) &&
                ways[at].kind == (at == 0 ? WayKind::True : WayKind::False);
      }
      right = right && (ways.size() == 1 || ways.size() == 2);
      break;
    default:
      right = right && ways.size() == 1;
  }
  if (!right) throw std::logic_error("The ways out of " + Describe(id) + " are wrong.");
}

NodeId FlowProgram::NodeAt(std::string_view mark) const {
  NodeId node = cobol_.NodeAt(mark);
  const auto isBranch = [this](NodeId each) {
    const NodeRecord& record = image_->Nodes()[each];
    return record.entity == Entity::Block && record.verb == 0 && record.last > each;
  };
  while (node != 0 && isBranch(node)) ++node;
  if (node == 0) throw std::invalid_argument("Nothing is at " + std::string(mark));
  return node;
}

PointId FlowProgram::PointAt(std::string_view mark) const {
  const PointId point = flow_->PointOf(NodeAt(mark));
  if (point == kNoPoint) throw std::invalid_argument("No point is at " + std::string(mark));
  return point;
}

PointId FlowProgram::PointNamed(std::string_view name) const {
  for (PointId point = 0; point < flow_->Points().size(); ++point) {
    if (Describe(point) == name) return point;
  }
  throw std::invalid_argument("No point is called " + std::string(name));
}

std::string FlowProgram::Describe(PointId id) const {
  const Point& point = flow_->Points()[id];
  const NodeRecord& node = image_->Nodes()[point.node];
  const std::string row = std::to_string(node.firstRow) + " ";
  const std::string name(image_->Text(node.name));
  switch (point.kind) {
    case PointKind::Entry:
      return "entry";
    case PointKind::Start:
      return "start " + name;
    case PointKind::End:
      return "end " + name;
    case PointKind::Statement:
    case PointKind::Condition:
      return row + name;
    case PointKind::Chance:
      return row + "chance";
    case PointKind::Holds:
      return row + (point.sense ? "yes" : "no");
    case PointKind::Completed:
      return row + "completed";
    case PointKind::Begin:
      return row + "begin " + name;
    case PointKind::Step:
      return row + "step " + name;
    case PointKind::Call: {
      const PerformRange& range = flow_->Ranges()[point.range];
      const std::string first = row + "call " + std::string(image_->Text(image_->Nodes()[range.first].name));
      if (range.last == range.first) return first;
      return first + " THRU " + std::string(image_->Text(image_->Nodes()[range.last].name));
    }
    case PointKind::Leave:
      return IsKindOf(node.entity, Entity::Stat) ? row + "leave" : "leave";
  }
  return "";
}

std::string FlowProgram::Describe(const Way& way) const {
  return std::string(PrefixOf(way.kind)) + Describe(way.to);
}

std::vector<std::string> FlowProgram::After(PointId point) const {
  std::vector<std::string> after;
  for (const Way& way : flow_->WaysOut(point)) after.push_back(Describe(way));
  return after;
}

std::string FlowProgram::Listing() const {
  std::vector<PointId> points(flow_->Points().size());
  for (PointId point = 0; point < points.size(); ++point) points[point] = point;
  const auto last = [this](PointId point) {
    const Point& each = flow_->Points()[point];
    return each.kind == PointKind::End ? image_->Nodes()[each.node].last : each.node;
  };
  std::ranges::stable_sort(points, {}, last);
  std::string listing;
  for (const PointId point : points) {
    listing += Describe(point);
    std::string_view separator = " > ";
    for (const std::string& way : After(point)) {
      listing.append(separator).append(way);
      separator = ", ";
    }
    listing += '\n';
  }
  return listing;
}

std::vector<std::string> FlowProgram::Gaps() const {
  std::vector<std::string> gaps;
  for (const FlowGap& gap : flow_->Gaps()) {
    const NodeRecord& node = image_->Nodes()[gap.node];
    gaps.push_back(std::string(NameOf(gap.kind)) + " " + std::to_string(node.firstRow) + " " +
                   std::string(image_->Text(node.name)));
  }
  return gaps;
}

}  // namespace qmrules::test
