#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/widgets/widget.h"

namespace qmrules::platform::widgets {

// How the two panes of a split lie.
enum class SplitDirection {
  SideBySide,  // the first one left
  Stacked,     // the first one above
};

// A rectangle that is divided into named panes by bars that the user drags. It begins as one pane; each split divides a
// pane into two new ones. Names are of letters, digits and "_", and none occurs twice.
//
// Layout text: pane := name [ "(" direction share " " pane "," pane ")" ], direction "h" (side by side) or "v"
// (stacked), share the first pane's part of the whole in thousandths, 1 to 999. For example
// "All(h333 Objects,Properties(v500 Descriptions,Others))".
class Splitter final : public Widget {
 public:
  explicit Splitter(std::string name, int index = 0);
  ~Splitter() override;

  // The panes that a layout must end in, in any order: SetLayoutText refuses a text that has others. Not set: any.
  void SetRequiredPanes(std::vector<std::string> names) { required_ = std::move(names); }

  // Back to one pane of this name.
  void Reset(std::string_view name);

  struct Division {
    std::string first;
    std::string second;
    SplitDirection direction = SplitDirection::SideBySide;
    int share = 500;  // the first pane's part, in thousandths
  };
  // Divides an undivided pane. Throws std::invalid_argument when there is no such pane, and for a name or a share that
  // is not allowed.
  void Split(std::string_view pane, const Division& division);

  // The share of a divided pane; std::out_of_range when there is no such one.
  int Share(std::string_view pane) const;

  // The undivided panes, first before second.
  std::vector<std::string> Panes() const;

  std::string LayoutText() const;
  // Takes a layout. False, with the layout as it was, when the text is malformed or lacks a required pane.
  bool SetLayoutText(std::string_view text);

  // The layout is in force: the view shows the panes only then.
  bool On() const { return on_; }
  void SetOn(bool on) { Assign(on_, on); }

  bool AcceptsFocus() const override { return false; }

  // One pane for a view that walks the layout.
  struct Pane {
    std::string name;
    SplitDirection direction = SplitDirection::SideBySide;
    int share = 500;
    std::unique_ptr<Pane> first;  // null in an undivided pane
    std::unique_ptr<Pane> second;
  };
  const Pane& Root() const { return *root_; }

  // User: drags the bar of a divided pane; the share is cut to 1 to 999. std::out_of_range when there is no such one.
  bool Drag(std::string_view pane, int share);

 private:
  bool FitsRequired(const Pane& root) const;
  Pane& Divided(std::string_view pane) const;

  std::vector<std::string> required_;
  std::unique_ptr<Pane> root_;
  bool on_ = false;
};

}  // namespace qmrules::platform::widgets
