#include "shell/commandtable.h"

#include <fmt/format.h>

namespace qmrules::shell {

namespace {

constexpr bool kAsksMore = true;

constexpr CommandEntry kCommands[] = {
    {"CreateFunction", 124, kAsksMore},
    {"CreateRuleSet", 128, kAsksMore},
    {"CreateRule", 125, kAsksMore},
    {"-0"},
    {"CreateRuleIO", 127, kAsksMore},
    {"CreateRuleCond", 126, kAsksMore},
    {"-1"},
    {"Export", 176, kAsksMore},
    {"Import", 177, kAsksMore},
    {"-2"},
    {"AutoDetect", 200, kAsksMore},
    {"-3"},
    {"Find", 109, kAsksMore},
    {"PreviousSelected", 168},
    {"NextSelected", 161},
    {"Selected", 189},
    {"-4"},
    {"SelectAll", 201},
    {"UnselectAll", 202},
    {"-5"},
    {"CopyMove", 121, kAsksMore},
    {"MoveUp", 154},
    {"MoveDown", 153},
    {"Changer", 181, kAsksMore},
    {"Delete", 131},
    {"-6"},
    {"Segment", 107},
    {"DeleteSegment", 185},
    {"DataElements", 136},
    {"BusinessNames", 103},
    {"Emphasize", 137},
    {"Validate", 170},
    {"-7"},
    {"ActivityLog", 101},
    {"BusinessRuleReport", 114, kAsksMore},
    {"ProcessOutlineReport", 169, kAsksMore},
    {"CoverageReport", 122, kAsksMore},
    {"ExtendedAttributes", 139, kAsksMore},
};

}  // namespace

std::span<const CommandEntry> CommandTable() {
  return kCommands;
}

const CommandEntry* FindCommand(std::string_view key) {
  for (const CommandEntry& entry : kCommands) {
    if (!entry.IsSeparator() && entry.key == key) return &entry;
  }
  return nullptr;
}

std::string MenuPath(const CommandEntry& entry, std::string_view externalName, const StringTable& texts) {
  if (entry.IsSeparator()) return fmt::format("{}|-", externalName);
  return fmt::format("{}|{}{}", externalName, texts.Text(entry.label), entry.asksMore ? "..." : "");
}

}  // namespace qmrules::shell
