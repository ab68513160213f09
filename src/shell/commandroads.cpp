#include "shell/commandroads.h"

#include <utility>

#include "browser/commandtable.h"

namespace qmrules::shell {

using browser::CommandEntry;

namespace {

// Another component asks for it by name; no menu shows it.
constexpr std::string_view kCreateListRules = "CreateListRules";

}  // namespace

CommandRoads::CommandRoads(platform::Workspace& workspace, const platform::TesselGlobals& globals,
                           browser::ControlWidgets& widgets, platform::CommandSink& commands,
                           const FailureReport& failures, std::function<bool()> commitPendingEdit)
    : globals_(globals),
      commands_(commands),
      failures_(failures),
      commitPendingEdit_(std::move(commitPendingEdit)),
      methodRequested_(workspace.OnMethodRequested(
          [this](const std::string& who, const std::string& actionid, platform::Value& result) {
            QMWS_MethodRequested(who, actionid, result);
          })),
      buttonClick_(widgets.tbToolbar.OnButtonClick.Subscribe([this](const std::string& button) {
        if (const CommandEntry* const command = browser::CommandOfButton(button)) Run(command->key);
      })),
      buttonMenuClick_(
          widgets.tbToolbar.OnButtonMenuClick.Subscribe([this](const std::string& button, const std::string& entry) {
            if (const CommandEntry* const command = browser::CommandOfEntry(button, entry)) Run(command->key);
          })) {
  for (const CommandEntry& command : browser::CommandTable()) {
    if (command.IsSeparator()) continue;
    menuClicks_.push_back(
        widgets.mnuPopup.Item(command.menuItem).OnClick.Subscribe([this, key = command.key] { Run(key); }));
  }
}

void CommandRoads::QMWS_MethodRequested(const std::string& who, const std::string& actionid, platform::Value& result) {
  if (who != globals_.internalName) return;
  failures_.Attempt([&] {
    if (!commitPendingEdit_()) return;
    const bool isCreateListRules = actionid == kCreateListRules;
    if (isCreateListRules) result = true;
    if (isCreateListRules || browser::FindCommand(actionid) != nullptr) commands_.Run(actionid);
  });
}

void CommandRoads::Run(std::string_view key) {
  failures_.Attempt([&] {
    if (commitPendingEdit_()) commands_.Run(key);
  });
}

}  // namespace qmrules::shell
