#include "browser/commandfaces.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>

#include "platform/widgets/menu.h"
#include "platform/widgets/toolbar.h"

namespace qmrules::browser {

namespace {

struct Face {
  std::string_view command;
  std::string_view menuItem;
  std::string_view button;
  std::string_view entry = {};   // of the button's menu; "" for the button itself
  bool buttonRunsItToo = false;  // a click on the button itself runs the command of this entry
};

constexpr Face kFaces[] = {
    {"CreateFunction", "mnuCreateFunction", "Create", "Function"},
    {"CreateRuleSet", "mnuCreateRuleSet", "Create", "RuleSet"},
    {"CreateRule", "mnuCreateRule", "Create", "Rule"},
    {"CreateRuleIO", "mnuCreateRuleIO", "Create", "RuleIO"},
    {"CreateRuleCond", "mnuCreateRuleCond", "Create", "RuleCond"},
    {"Export", "mnuExport", "Create", "Export"},
    {"Import", "mnuImport", "Create", "Import"},
    {"AutoDetect", "mnuAutoDetect", "AutoDetect"},
    {"Find", "mnuSearchRules", "Find", "Find", true},
    {"PreviousSelected", "mnuPreviousSelected", "Find", "PreviousSelected"},
    {"NextSelected", "mnuNextSelected", "Find", "NextSelected"},
    {"Selected", "mnuSelected", "Selected"},
    {"SelectAll", "mnuSelectAll", "Find", "SelectAll"},
    {"UnselectAll", "mnuUnselectAll", "Find", "UnselectAll"},
    {"CopyMove", "mnuCopyMove", "CopyMove"},
    {"MoveUp", "mnuMoveUp", "MoveUp"},
    {"MoveDown", "mnuMoveDown", "MoveDown"},
    {"Changer", "mnuChanger", "Change"},
    {"Delete", "mnuDelete", "Delete"},
    {"Segment", "mnuSegment", "Segment", "Assign", true},
    {"DeleteSegment", "mnuDeleteSegment", "Segment", "DeleteSegment"},
    {"DataElements", "mnuDataElements", "Segment", "DataElements"},
    {"BusinessNames", "mnuPopulateBusinessName", "Segment", "BusinessNames"},
    {"Emphasize", "mnuEmphasize", "Emphasize"},
    {"Validate", "mnuValidate", "Validate"},
    {"ActivityLog", "mnuActivityLog", "ActivityLog"},
    {"BusinessRuleReport", "mnuBusinessRuleReport", "Report", "BusinessRuleReport"},
    {"ProcessOutlineReport", "mnuProcessOutlineReport", "Report", "ProcessOutlineReport"},
    {"CoverageReport", "mnuCoverageReport", "Report", "CoverageReport"},
    {"ExtendedAttributes", "mnuExtendedAttributes", "ExtendedAttributes"},
};

const Face& FaceOf(std::string_view command) {
  const auto* const face = std::find_if(std::begin(kFaces), std::end(kFaces),
                                        [&](const Face& candidate) { return candidate.command == command; });
  if (face == std::end(kFaces)) throw std::out_of_range("no such command: " + std::string(command));
  return *face;
}

}  // namespace

void CommandFaces::SetEnabled(std::string_view command, bool enabled) const {
  const Face& face = FaceOf(command);
  services_.widgets.mnuPopup.Item(face.menuItem).SetEnabled(enabled);
  auto& button = services_.widgets.tbToolbar.Button(face.button);
  if (!face.entry.empty()) button.Menu(face.entry).SetEnabled(enabled);
  if (face.entry.empty() || face.buttonRunsItToo) button.SetEnabled(enabled);
  services_.host.SetHostItem(command, enabled ? "enable" : "disable");
}

void CommandFaces::SetChecked(std::string_view command, bool checked) const {
  const Face& face = FaceOf(command);
  services_.widgets.mnuPopup.Item(face.menuItem).SetChecked(checked);
  services_.widgets.tbToolbar.Button(face.button).SetPressed(checked);
  services_.host.SetHostItem(command, checked ? "check" : "uncheck");
}

bool CommandFaces::IsChecked(std::string_view command) const {
  return services_.widgets.mnuPopup.Item(FaceOf(command).menuItem).Checked();
}

}  // namespace qmrules::browser
