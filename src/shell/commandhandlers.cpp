#include "shell/commandhandlers.h"

#include <algorithm>
#include <iterator>

#include "browser/rulelists.h"

namespace qmrules::shell {

namespace {

constexpr int kNotAvailable = 543;

}  // namespace

struct CommandHandlers::Entry {
  std::string_view key;
  void (CommandHandlers::*handler)();
};

const CommandHandlers::Entry* CommandHandlers::Find(std::string_view key) {
  static constexpr Entry kHandlers[] = {
      {"CreateFunction", &CommandHandlers::NotAvailable},
      {"CreateRuleSet", &CommandHandlers::NotAvailable},
      {"CreateRule", &CommandHandlers::NotAvailable},
      {"CreateRuleIO", &CommandHandlers::NotAvailable},
      {"CreateRuleCond", &CommandHandlers::NotAvailable},
      {"CreateListRules", &CommandHandlers::NotAvailable},
      {"Export", &CommandHandlers::NotAvailable},
      {"Import", &CommandHandlers::NotAvailable},
      {"AutoDetect", &CommandHandlers::NotAvailable},
      {"Find", &CommandHandlers::NotAvailable},
      {"PreviousSelected", &CommandHandlers::PreviousSelected},
      {"NextSelected", &CommandHandlers::NextSelected},
      {"Selected", &CommandHandlers::Selected},
      {"SelectAll", &CommandHandlers::SelectAll},
      {"UnselectAll", &CommandHandlers::UnselectAll},
      {"CopyMove", &CommandHandlers::NotAvailable},
      {"MoveUp", &CommandHandlers::MoveUp},
      {"MoveDown", &CommandHandlers::MoveDown},
      {"Changer", &CommandHandlers::Changer},
      {"Delete", &CommandHandlers::NotAvailable},
      {"Segment", &CommandHandlers::NotAvailable},
      {"DeleteSegment", &CommandHandlers::NotAvailable},
      {"DataElements", &CommandHandlers::NotAvailable},
      {"BusinessNames", &CommandHandlers::NotAvailable},
      {"Emphasize", &CommandHandlers::Emphasize},
      {"Validate", &CommandHandlers::Validate},
      {"ActivityLog", &CommandHandlers::ActivityLog},
      {"BusinessRuleReport", &CommandHandlers::NotAvailable},
      {"ProcessOutlineReport", &CommandHandlers::NotAvailable},
      {"CoverageReport", &CommandHandlers::NotAvailable},
      {"ExtendedAttributes", &CommandHandlers::NotAvailable},
      {browser::kDeleteElements, &CommandHandlers::NotAvailable},
      {browser::kEditElement, &CommandHandlers::NotAvailable},
      {browser::kSyncBusinessNames, &CommandHandlers::NotAvailable},
  };
  const auto* const found =
      std::find_if(std::begin(kHandlers), std::end(kHandlers), [&](const Entry& entry) { return entry.key == key; });
  return found == std::end(kHandlers) ? nullptr : found;
}

bool CommandHandlers::Knows(std::string_view key) {
  return Find(key) != nullptr;
}

void CommandHandlers::Run(std::string_view key) {
  if (const Entry* const entry = Find(key)) (this->*entry->handler)();
}

void CommandHandlers::Changer() {
  if (!parts_.popup.PutOff("Changer")) NotAvailable();
}

void CommandHandlers::ActivityLog() {
  parts_.activityLog.ShowLogOf(services_.widgets.tvObjects.SelectedNode(), services_.Repository());
}

void CommandHandlers::NotAvailable() {
  const platform::NormalCursor normal(services_.pointer);
  services_.dialogs.MessageBox(services_.texts.Text(kNotAvailable), services_.globals.externalName,
                               platform::MessageStyle::Exclamation);
}

}  // namespace qmrules::shell
