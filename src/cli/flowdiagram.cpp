#include "cli/flowdiagram.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <set>
#include <utility>
#include <vector>

#include "cli/displaywidth.h"
#include "workbench/codemodel/nodewalk.h"

namespace qmrules::cli {

using workbench::codemodel::Entity;
using workbench::codemodel::IsKindOf;
using workbench::codemodel::ModelImage;
using workbench::codemodel::NodeId;
using workbench::codemodel::NodeRecord;
using workbench::codemodel::Role;
using workbench::flow::FlowGraph;
using workbench::flow::kNoPoint;
using workbench::flow::PerformRange;
using workbench::flow::Point;
using workbench::flow::PointId;
using workbench::flow::PointKind;
using workbench::flow::Way;
using workbench::flow::WayKind;

namespace {

constexpr std::size_t kStatementColumns = 64, kConditionColumns = 26, kMostLines = 6;
constexpr std::uint32_t kMostRows = 4;  // of one statement

// How a point is drawn.
enum class Shape : std::uint8_t {
  None,  // what leads to it leads to what follows it
  Line,  // in a box with the lines before and behind it
  Test,
  Call,
  Round,
};

struct Arrow {
  std::string to;
  PointId point = kNoPoint;  // kNoPoint for what is outside
  WayKind first = WayKind::Next;
  bool jumps = false, again = false;
};

class LabelPicture {
 public:
  LabelPicture(const FlowPicture& picture, NodeId label)
      : picture_(picture), model_(picture.model), flow_(picture.bodies.Flow()), label_(label) {}

  std::string Draw() {
    Collect();
    Merge();
    std::string text = fmt::format(
        "digraph \"{}\" {{\n  rankdir=TB; nodesep=0.35; ranksep=0.35;\n"
        "  node [fontname=\"DejaVu Sans Mono\", fontsize=10, shape=box, style=filled, fillcolor=\"#ffffff\", "
        "color=\"#5b6b7b\"];\n"
        "  edge [fontname=\"DejaVu Sans\", fontsize=9, color=\"#42526e\", arrowsize=0.7];\n",
        DotText(NameOf(label_)));
    for (const PointId point : points_) {
      if (ShapeOf(point) != Shape::None && run_[IndexOf(point)] == point) text += NodeText(point);
    }
    for (const auto& [id, name] : outside_) {
      text += fmt::format("  {} [label=\"{}\", shape=box, style=\"rounded,filled\", fillcolor=\"#eceff1\"];\n", id,
                          DotText(name));
    }
    for (const PointId point : points_) text += ArrowsText(point);
    return text + "}\n";
  }

 private:
  std::string_view NameOf(NodeId node) const { return model_.Text(model_.Nodes()[node].name); }
  const Point& At(PointId point) const { return flow_.Points()[point]; }
  std::size_t IndexOf(PointId point) const {
    return static_cast<std::size_t>(std::ranges::lower_bound(points_, point) - points_.begin());
  }
  bool IsInside(PointId point) const {
    const NodeId node = At(point).node;
    return node >= label_ && node <= model_.Nodes()[label_].last;
  }

  void Collect();
  void Merge();
  Shape ShapeOf(PointId point) const;
  Shape ShapeOfStatement(PointId point) const;
  Arrow Follow(const Way& way);
  std::string Outside(PointId point);
  std::string NodeText(PointId point);
  std::string LineText(PointId point) const;
  std::string TestText(PointId point) const;
  std::string RoundText(PointId point) const;
  std::string CallText(PointId point) const;
  std::string Rows(NodeId node) const;
  std::string Operands(NodeId counter, Role role) const;
  std::string ArrowsText(PointId point);

  const FlowPicture& picture_;
  const ModelImage& model_;
  const FlowGraph& flow_;
  NodeId label_;
  std::vector<PointId> points_;              // ascending
  std::vector<std::vector<Arrow>> arrows_;   // by index in points_
  std::vector<PointId> run_;                 // by index: the first point of its box
  std::vector<std::vector<PointId>> lines_;  // by index of the first point: what is in its box
  std::vector<std::pair<std::string, std::string>> outside_;
  std::set<std::string> known_;
};

void LabelPicture::Collect() {
  for (NodeId node = label_; node <= model_.Nodes()[label_].last; ++node) {
    for (const PointId point : flow_.PointsOf(node)) points_.push_back(point);
  }
  std::ranges::sort(points_);
  arrows_.resize(points_.size());
  for (std::size_t at = 0; at < points_.size(); ++at) {
    const PointId point = points_[at];
    if (ShapeOf(point) == Shape::None) continue;
    if (At(point).kind == PointKind::End && !FallsOn(picture_.bodies, point)) continue;
    for (const Way& way : flow_.WaysOut(point)) {
      Arrow arrow = Follow(way);
      if (!arrow.to.empty()) arrows_[at].push_back(std::move(arrow));
    }
  }
}

Shape LabelPicture::ShapeOfStatement(PointId point) const {
  if (At(point).part > 0) return Shape::None;
  const Entity entity = model_.Nodes()[At(point).node].entity;
  if (entity == Entity::If || entity == Entity::Perform || entity == Entity::Block) return Shape::None;
  const auto ways = flow_.WaysOut(point);
  const bool decides =
      ways.size() == 1 && At(ways[0].to).kind == PointKind::Chance && At(ways[0].to).node == At(point).node;
  return decides && entity == Entity::Goto ? Shape::None : Shape::Line;
}

Shape LabelPicture::ShapeOf(PointId point) const {
  switch (At(point).kind) {
    case PointKind::Statement:
      return ShapeOfStatement(point);
    case PointKind::Begin:
    case PointKind::Step:
      return Shape::Line;
    case PointKind::Condition:
    case PointKind::Chance:
      return Shape::Test;
    case PointKind::Call:
      return Shape::Call;
    case PointKind::Start:
    case PointKind::Leave:
      return Shape::Round;
    case PointKind::End:
      return At(point).node == label_ ? Shape::Round : Shape::None;
    default:
      return Shape::None;
  }
}

// Where a way leads past the points that are not drawn; to nothing where it ends at one of them.
Arrow LabelPicture::Follow(const Way& way) {
  Arrow arrow;
  arrow.first = way.kind;
  Way at = way;
  for (std::size_t steps = 0; steps <= points_.size(); ++steps) {
    arrow.jumps = arrow.jumps || at.kind == WayKind::Jump;
    arrow.again = arrow.again || at.kind == WayKind::Loop;
    if (!IsInside(at.to)) {
      arrow.to = Outside(at.to);
      return arrow;
    }
    if (ShapeOf(at.to) != Shape::None) {
      arrow.point = at.to;
      arrow.to = fmt::format("p{}", at.to);
      return arrow;
    }
    const auto next = flow_.WaysOut(at.to);
    if (next.empty()) return {};
    at = next[0];
  }
  return {};
}

std::string LabelPicture::Outside(PointId point) {
  const Point& at = At(point);
  std::string id = fmt::format("x{}", point), name(NameOf(at.node));
  if (at.kind == PointKind::End) name = "end of " + name;
  if (at.kind == PointKind::Leave) name = "end of the program";
  if (known_.insert(id).second) outside_.emplace_back(id, std::move(name));
  return id;
}

// Lines of which one always follows the other, and is led to by nothing else, share a box.
void LabelPicture::Merge() {
  run_ = points_;
  lines_.resize(points_.size());
  std::vector<std::uint32_t> leading(points_.size(), 0);
  for (const auto& arrows : arrows_) {
    for (const Arrow& arrow : arrows) {
      if (arrow.point != kNoPoint) ++leading[IndexOf(arrow.point)];
    }
  }
  std::vector<bool> joined(points_.size(), false);
  const auto next = [&](std::size_t at) {
    if (arrows_[at].size() != 1) return kNoPoint;
    const Arrow& arrow = arrows_[at][0];
    const bool plain = arrow.point != kNoPoint && !arrow.jumps && !arrow.again;
    return plain && ShapeOf(arrow.point) == Shape::Line && leading[IndexOf(arrow.point)] == 1 ? arrow.point : kNoPoint;
  };
  for (std::size_t at = 0; at < points_.size(); ++at) {
    if (ShapeOf(points_[at]) == Shape::Line && next(at) != kNoPoint) joined[IndexOf(next(at))] = true;
  }
  for (std::size_t at = 0; at < points_.size(); ++at) {
    if (ShapeOf(points_[at]) != Shape::Line || joined[at]) continue;
    std::size_t last = at;
    lines_[at].push_back(points_[at]);
    for (PointId more = next(last); more != kNoPoint; more = next(last)) {
      lines_[at].push_back(more);
      last = IndexOf(more);
      run_[last] = points_[at];
    }
    if (last != at) arrows_[at] = arrows_[last];
  }
}

std::string LabelPicture::Rows(NodeId node) const {
  const NodeRecord& record = model_.Nodes()[node];
  std::string text;
  for (std::uint32_t row = record.firstRow; row <= record.lastRow && row < record.firstRow + kMostRows; ++row) {
    const std::string line = picture_.row(record.file, row);
    if (line.empty()) continue;
    if (!text.empty()) text += ' ';
    text += line;
  }
  return text.empty() ? std::string(NameOf(node)) : text;
}

// What stands behind a counter: FROM and BY.
std::string LabelPicture::Operands(NodeId counter, Role role) const {
  std::string text;
  for (NodeId next = NextSibling(model_, counter); next != 0; next = NextSibling(model_, next)) {
    const NodeRecord& record = model_.Nodes()[next];
    if (record.role == Role::Varying || record.entity == Entity::Cond) break;
    if (record.role == role) text.append(text.empty() ? "" : " ").append(NameOf(next));
  }
  return text;
}

std::string LabelPicture::LineText(PointId point) const {
  const Point& at = At(point);
  const std::uint32_t row = model_.Nodes()[at.node].firstRow;
  std::string text;
  if (at.kind == PointKind::Begin) {
    text = fmt::format("{} from {}", NameOf(at.node), Operands(at.node, Role::From));
  } else if (at.kind == PointKind::Step) {
    text = fmt::format("{} by {}", NameOf(at.node), Operands(at.node, Role::By));
  } else {
    text = Rows(at.node);
  }
  return DotText(fmt::format("{:>5}  {}", row, LeftColumns(text, kStatementColumns))) + "\\l";
}

std::string LabelPicture::TestText(PointId point) const {
  const Point& at = At(point);
  const NodeRecord& record = model_.Nodes()[at.node];
  if (at.kind == PointKind::Condition) return std::string(NameOf(at.node));
  switch (record.entity) {
    case Entity::Goto:
      return Rows(at.node);
    case Entity::Perform:
    case Entity::Block:
      for (NodeId child = FirstChild(model_, at.node); child != 0; child = NextSibling(model_, child)) {
        if (model_.Nodes()[child].role == Role::Times) return fmt::format("{} times?", NameOf(child));
      }
      return "?";
    case Entity::If:
      return "end of the table?";
    default:
      return fmt::format("outcome of {}?", NameOf(at.node));
  }
}

std::string LabelPicture::RoundText(PointId point) const {
  const Point& at = At(point);
  if (at.kind == PointKind::End) return fmt::format("end of {}", NameOf(at.node));
  if (at.kind == PointKind::Leave && IsKindOf(model_.Nodes()[at.node].entity, Entity::Stat)) {
    return fmt::format("{}  {}", model_.Nodes()[at.node].firstRow, NameOf(at.node));
  }
  return std::string(NameOf(at.node));
}

std::string LabelPicture::CallText(PointId point) const {
  const PerformRange& range = flow_.Ranges()[At(point).range];
  std::string text = fmt::format("{}  {}", model_.Nodes()[At(point).node].firstRow, NameOf(range.first));
  if (range.last != range.first) text += fmt::format("\nTHRU {}", NameOf(range.last));
  return text;
}

std::string LabelPicture::NodeText(PointId point) {
  const std::string_view never =
      picture_.bodies.RangesWith(point).empty() ? ", fontcolor=\"#9e9e9e\", color=\"#c4c4c4\"" : "";
  const auto node = [&](std::string_view label, std::string_view look) {
    return fmt::format("  p{} [label=\"{}\"{}{}];\n", point, label, look, never);
  };
  switch (ShapeOf(point)) {
    case Shape::Line: {
      std::string lines;
      for (const PointId line : lines_[IndexOf(point)]) {
        std::string text = LineText(line);
        if (!lines.ends_with(text)) lines += text;
      }
      return node(lines, "");
    }
    case Shape::Test:
      return node(DotLines(OneLine(TestText(point)), kConditionColumns, kMostLines, "\\n"),
                  ", shape=diamond, fillcolor=\"#fff8e1\", color=\"#b28704\", margin=\"0.06,0.07\"");
    case Shape::Call:
      return node(DotText(CallText(point)), ", peripheries=2, fillcolor=\"#e3f2fd\"");
    default:
      return node(DotText(RoundText(point)), ", style=\"rounded,filled,bold\", fillcolor=\"#e8f5e9\"");
  }
}

std::string LabelPicture::ArrowsText(PointId point) {
  const std::size_t at = IndexOf(point);
  if (ShapeOf(point) == Shape::None || run_[at] != point) return {};
  std::string text;
  for (const Arrow& arrow : arrows_[at]) {
    const PointId to = arrow.point == kNoPoint ? kNoPoint : run_[IndexOf(arrow.point)];
    std::string look;
    if (arrow.first == WayKind::True) look = "label=\" true\"";
    if (arrow.first == WayKind::False) look = "label=\" false\", weight=3";
    if (arrow.first == WayKind::Exception) look = "label=\" error\"";
    if (arrow.jumps) look.append(look.empty() ? "" : ", ").append("style=dashed");
    text += fmt::format("  p{} -> {} [{}];\n", point, to == kNoPoint ? arrow.to : fmt::format("p{}", to), look);
  }
  return text;
}

// Where a line that is not the last one ends: before its last AND or OR, at its last blank, or behind it all.
std::size_t BreakIn(std::string_view line, bool endsWord) {
  const std::size_t conjunction = std::max(line.rfind(" AND ") + 1, line.rfind(" OR ") + 1);
  if (conjunction > 1) return conjunction - 1;
  const std::size_t blank = line.rfind(' ');
  return endsWord || blank == std::string_view::npos ? line.size() : blank;
}

}  // namespace

std::string DotText(std::string_view text) {
  std::string quoted;
  for (const char c : text) {
    if (c == '\n') {
      quoted += "\\n";
      continue;
    }
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted;
}

std::string DotLines(std::string_view text, std::size_t columns, std::size_t most, std::string_view end) {
  std::string lines;
  for (std::size_t count = 1; !text.empty(); ++count) {
    std::string line = LeftColumns(text, columns);
    if (line.size() < text.size()) line.resize(BreakIn(line, text[line.size()] == ' '));
    text.remove_prefix(line.size());
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const bool last = count == most || line.empty();
    lines += DotText(line);
    if (last && !text.empty()) lines += " …";
    if (last) break;
    if (!text.empty()) lines += end;
  }
  return lines;
}

bool FallsOn(const workbench::flow::RangeBodies& bodies, PointId end) {
  return std::ranges::any_of(bodies.RangesWith(end), [&](const auto range) {
    const auto& body = bodies.Of(range);
    return !body.Outs(body.PlaceOf(end)).empty();
  });
}

std::string DrawLabel(const FlowPicture& picture, NodeId label) {
  return LabelPicture(picture, label).Draw();
}

}  // namespace qmrules::cli
