#include "browser/commandtable.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace qmrules::browser {

namespace {

constexpr bool kAsksMore = true;
constexpr bool kAtOnce = false;
constexpr bool kRunsOnButton = true;

constexpr CommandEntry kCommands[] = {
    {"CreateFunction", 124, kAsksMore, "mnuCreateFunction", "Create", "Function"},
    {"CreateRuleSet", 128, kAsksMore, "mnuCreateRuleSet", "Create", "RuleSet"},
    {"CreateRule", 125, kAsksMore, "mnuCreateRule", "Create", "Rule", kRunsOnButton},
    {"-0"},
    {"CreateRuleIO", 127, kAsksMore, "mnuCreateRuleIO", "Create", "RuleIO"},
    {"CreateRuleCond", 126, kAsksMore, "mnuCreateRuleCond", "Create", "RuleCond"},
    {"-1"},
    {"Export", 176, kAsksMore, "mnuExport", "Create", "Export"},
    {"Import", 177, kAsksMore, "mnuImport", "Create", "Import"},
    {"-2"},
    {"AutoDetect", 200, kAsksMore, "mnuAutoDetect", "AutoDetect"},
    {"-3"},
    {"Find", 109, kAsksMore, "mnuSearchRules", "Find", "Find", kRunsOnButton},
    {"PreviousSelected", 168, kAtOnce, "mnuPreviousSelected", "Find", "PreviousSelected"},
    {"NextSelected", 161, kAtOnce, "mnuNextSelected", "Find", "NextSelected"},
    {"Selected", 189, kAtOnce, "mnuSelected", "Selected"},
    {"-4"},
    {"SelectAll", 201, kAtOnce, "mnuSelectAll", "Find", "SelectAll"},
    {"UnselectAll", 202, kAtOnce, "mnuUnselectAll", "Find", "UnselectAll"},
    {"-5"},
    {"CopyMove", 121, kAsksMore, "mnuCopyMove", "CopyMove"},
    {"MoveUp", 154, kAtOnce, "mnuMoveUp", "MoveUp"},
    {"MoveDown", 153, kAtOnce, "mnuMoveDown", "MoveDown"},
    {"Changer", 181, kAsksMore, "mnuChanger", "Change"},
    {"Delete", 131, kAtOnce, "mnuDelete", "Delete"},
    {"-6"},
    {"Segment", 107, kAtOnce, "mnuSegment", "Segment", "Assign", kRunsOnButton},
    {"DeleteSegment", 185, kAtOnce, "mnuDeleteSegment", "Segment", "DeleteSegment"},
    {"DataElements", 136, kAtOnce, "mnuDataElements", "Segment", "DataElements"},
    {"BusinessNames", 103, kAtOnce, "mnuPopulateBusinessName", "Segment", "BusinessNames"},
    {"Emphasize", 137, kAtOnce, "mnuEmphasize", "Emphasize"},
    {"Validate", 170, kAtOnce, "mnuValidate", "Validate"},
    {"-7"},
    {"ActivityLog", 101, kAtOnce, "mnuActivityLog", "ActivityLog"},
    {"BusinessRuleReport", 114, kAsksMore, "mnuBusinessRuleReport", "Report", "BusinessRuleReport", kRunsOnButton},
    {"ProcessOutlineReport", 169, kAsksMore, "mnuProcessOutlineReport", "Report", "ProcessOutlineReport"},
    {"CoverageReport", 122, kAsksMore, "mnuCoverageReport", "Report", "CoverageReport"},
    {"ExtendedAttributes", 139, kAsksMore, "mnuExtendedAttributes", "ExtendedAttributes"},
};

template <class Test>
const CommandEntry* FirstCommand(Test test) {
  const auto* const found = std::find_if(std::begin(kCommands), std::end(kCommands), [&](const CommandEntry& entry) {
    return !entry.IsSeparator() && test(entry);
  });
  return found == std::end(kCommands) ? nullptr : found;
}

}  // namespace

std::span<const CommandEntry> CommandTable() {
  return kCommands;
}

const CommandEntry* FindCommand(std::string_view key) {
  return FirstCommand([&](const CommandEntry& entry) { return entry.key == key; });
}

const CommandEntry* CommandOfButton(std::string_view button) {
  return FirstCommand([&](const CommandEntry& entry) { return entry.button == button && entry.IsOnButton(); });
}

const CommandEntry* CommandOfEntry(std::string_view button, std::string_view entryKey) {
  return FirstCommand([&](const CommandEntry& entry) {
    return entry.button == button && !entryKey.empty() && entry.entry == entryKey;
  });
}

std::string MenuCaption(const CommandEntry& entry, const shell::StringTable& texts) {
  return entry.IsSeparator() ? "-" : texts.Text(entry.label) + (entry.asksMore ? "..." : "");
}

std::string MenuPath(const CommandEntry& entry, std::string_view externalName, const shell::StringTable& texts) {
  return fmt::format("{}|{}", externalName, MenuCaption(entry, texts));
}

}  // namespace qmrules::browser
