#include <fmt/format.h>

#include <map>
#include <string>
#include <tuple>

#include "cli/flowdiagram.h"
#include "workbench/codemodel/nodewalk.h"

namespace qmrules::cli {

using workbench::codemodel::Entity;
using workbench::codemodel::ModelImage;
using workbench::codemodel::NodeId;
using workbench::flow::FlowGraph;
using workbench::flow::PerformRange;
using workbench::flow::Point;
using workbench::flow::PointId;
using workbench::flow::PointKind;
using workbench::flow::RangeBodies;
using workbench::flow::Way;
using workbench::flow::WayKind;

namespace {

enum class Link : std::uint8_t { Performs, Falls, Goes };

class OverviewPicture {
 public:
  OverviewPicture(const FlowPicture& picture, NodeId division)
      : model_(picture.model), bodies_(picture.bodies), flow_(picture.bodies.Flow()), division_(division) {}

  std::string Draw() {
    std::string text =
        "digraph program {\n  rankdir=LR; nodesep=0.2; ranksep=0.7; compound=true;\n"
        "  node [fontname=\"DejaVu Sans\", fontsize=10, shape=box, style=filled, fillcolor=\"#ffffff\", "
        "color=\"#5b6b7b\"];\n"
        "  edge [fontname=\"DejaVu Sans\", fontsize=9, color=\"#42526e\", arrowsize=0.7];\n";
    for (NodeId child = FirstChild(model_, division_); child != 0; child = NextSibling(model_, child)) {
      if (model_.Nodes()[child].entity == Entity::Section) {
        text += Section(child);
      } else if (model_.Nodes()[child].entity == Entity::Par) {
        text += Box(child, "  ");
      }
    }
    FindLinks();
    for (const auto& [link, count] : links_) text += LinkText(link, count);
    return text + "}\n";
  }

 private:
  // From one label to another, and up to which one the performed range goes.
  using Key = std::tuple<NodeId, NodeId, Link, NodeId>;

  std::string_view NameOf(NodeId node) const { return model_.Text(model_.Nodes()[node].name); }

  std::string Section(NodeId section) const {
    std::string text = fmt::format(
        "  subgraph cluster_{} {{\n    label=\"{}\"; fontname=\"DejaVu Sans\"; "
        "style=rounded; color=\"#90a4ae\";\n",
        section, DotText(NameOf(section)));
    bool any = false;
    for (const NodeId paragraph : ChildrenOf(model_, section, Entity::Par)) {
      text += Box(paragraph, "    ");
      any = true;
    }
    if (!any) text += Box(section, "    ");
    return text + "  }\n";
  }

  std::string Box(NodeId label, std::string_view indent) const {
    const auto points = flow_.PointsOf(label);
    const bool never = points.empty() || bodies_.RangesWith(points[0]).empty();
    return fmt::format("{}l{} [label=\"{}\\n{}\"{}];\n", indent, label, DotText(NameOf(label)), Place(label),
                       never ? ", fontcolor=\"#9e9e9e\", color=\"#c4c4c4\", style=\"filled,dashed\"" : "");
  }

  // The row, with its file for what comes from a copybook.
  std::string Place(NodeId label) const {
    const auto& record = model_.Nodes()[label];
    if (record.file == 0) return fmt::format("{}", record.firstRow);
    const std::string_view file = model_.FileName(record.file);
    return DotText(fmt::format("{}:{}", file.substr(file.rfind('/') + 1), record.firstRow));
  }

  // The paragraph that a node stands in; for a section, its first one.
  NodeId BoxOf(NodeId node) const {
    while (node != 0 && node != division_ && !IsKindOf(model_.Nodes()[node].entity, Entity::Label)) {
      node = model_.Nodes()[node].parent;
    }
    if (node == 0 || node == division_ || model_.Nodes()[node].entity == Entity::Par)
      return node == division_ ? 0 : node;
    const auto paragraphs = ChildrenOf(model_, node, Entity::Par);
    return paragraphs.empty() ? node : paragraphs.front();
  }

  void FindLinks() {
    for (PointId point = 0; point < flow_.Points().size(); ++point) {
      const Point& at = flow_.Points()[point];
      if (bodies_.RangesWith(point).empty()) continue;
      if (at.kind == PointKind::Call) {
        const PerformRange& range = flow_.Ranges()[at.range];
        Add(BoxOf(at.node), BoxOf(range.first), Link::Performs, range.last == range.first ? 0 : range.last);
      } else if (at.kind == PointKind::End) {
        if (FallsOn(bodies_, point)) FallsFrom(point);
      } else {
        GoesFrom(point);
      }
    }
  }

  void Add(NodeId from, NodeId to, Link link, NodeId through) {
    if (from != 0 && to != 0) ++links_[{from, to, link, through}];
  }

  // Past the ends and starts of sections, which have no boxes of their own.
  void FallsFrom(PointId end) {
    const Point& from = flow_.Points()[end];
    if (from.node == 0 || model_.Nodes()[from.node].entity != Entity::Par) return;
    PointId at = end;
    for (int steps = 0; steps < 4; ++steps) {
      const auto ways = flow_.WaysOut(at);
      if (ways.empty()) return;
      at = ways[0].to;
      const Point& to = flow_.Points()[at];
      if (to.kind == PointKind::End && !FallsOn(bodies_, at)) return;
      if (to.kind == PointKind::Start) return Add(from.node, BoxOf(to.node), Link::Falls, 0);
    }
  }

  void GoesFrom(PointId point) {
    for (const Way& way : flow_.WaysOut(point)) {
      const bool jumps = way.kind == WayKind::Jump || way.kind == WayKind::Exception;
      if (!jumps || flow_.Points()[way.to].kind != PointKind::Start) continue;
      Add(BoxOf(flow_.Points()[point].node), BoxOf(flow_.Points()[way.to].node), Link::Goes, 0);
    }
  }

  std::string LinkText(const Key& key, std::size_t count) const {
    const auto& [from, to, link, through] = key;
    std::string label = through == 0 ? "" : fmt::format("thru {}", NameOf(through));
    if (count > 1) label.append(label.empty() ? "" : "\n").append(fmt::format("{}×", count));
    std::string look = fmt::format("label=\"{}\"", DotText(label));
    if (link == Link::Falls) look += ", color=\"#8d6e63\", penwidth=2, arrowhead=onormal, weight=2";
    if (link == Link::Goes) look += ", style=dashed, constraint=false";
    return fmt::format("  l{} -> l{} [{}];\n", from, to, look);
  }

  const ModelImage& model_;
  const RangeBodies& bodies_;
  const FlowGraph& flow_;
  NodeId division_;
  std::map<Key, std::size_t> links_;
};

}  // namespace

std::string DrawOverview(const FlowPicture& picture, NodeId division) {
  return OverviewPicture(picture, division).Draw();
}

}  // namespace qmrules::cli
