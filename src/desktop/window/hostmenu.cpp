#include "desktop/window/hostmenu.h"

#include <QTimer>
#include <utility>

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

namespace {

constexpr std::string_view kSeparator = "-";

std::string_view CaptionOf(std::string_view menuPath) {
  const std::size_t bar = menuPath.rfind('|');
  return bar == std::string_view::npos ? menuPath : menuPath.substr(bar + 1);
}

// The keys that the tree of the rules itself takes.
const char* TreeKeyOf(std::string_view command) {
  if (command == "Delete") return "\tDel";
  if (command == "SelectAll") return "\tCtrl+A";
  return command == "UnselectAll" ? "\tCtrl+U" : "";
}

std::vector<const platform::HostCommand*> CommandsOf(const platform::MemoryWorkspace& workspace,
                                                     const std::string& component) {
  std::vector<const platform::HostCommand*> commands;
  for (const auto& command : workspace.Commands()) {
    if (command.component == component && !command.key.empty()) commands.push_back(&command);
  }
  return commands;
}

}  // namespace

HostMenu::HostMenu(std::string component, QWidget* parent) : QMenu(parent), component_(std::move(component)) {}

void HostMenu::SetWorkspace(platform::MemoryWorkspace* workspace) {
  workspace_ = workspace;
  changes_ = workspace == nullptr ? platform::Subscription() : workspace->OnCommandsChanged([this] { RefreshSoon(); });
  Fill();
}

// A change of the current node sets some thirty states, one after another.
void HostMenu::RefreshSoon() {
  if (std::exchange(isStale_, true)) return;
  QTimer::singleShot(0, this, [this] {
    isStale_ = false;
    if (workspace_ == nullptr) return;
    if (CommandsOf(*workspace_, component_).size() != actions_.size()) {
      Fill();
    } else {
      ShowStates();
    }
  });
}

void HostMenu::Fill() {
  clear();
  actions_.clear();
  setTitle(QString());
  if (workspace_ == nullptr) return;
  if (const auto* menu = workspace_->FindCommand(component_, "")) setTitle(ToQt(menu->menuPath));
  for (const auto* command : CommandsOf(*workspace_, component_)) {
    const auto caption = CaptionOf(command->menuPath);
    if (caption == kSeparator) {
      actions_.push_back(addSeparator());
      continue;
    }
    auto* const action = addAction(ToQt(caption) + TreeKeyOf(command->key));
    connect(action, &QAction::triggered, this, [this, key = command->key] {
      if (workspace_ == nullptr) return;
      // A click turns the mark, but whether the command is on is for the component to tell.
      ShowStates();
      workspace_->RequestMethod(component_, key);
    });
    actions_.push_back(action);
  }
  ShowStates();
}

void HostMenu::ShowStates() {
  const auto commands = CommandsOf(*workspace_, component_);
  for (std::size_t at = 0; at < actions_.size(); ++at) {
    const auto& command = *commands[at];
    QAction& action = *actions_[at];
    action.setVisible(command.visible);
    if (action.isSeparator()) continue;
    action.setEnabled(command.enabled);
    // A command shows that it has two states once it is in the second one.
    if (command.checked) action.setCheckable(true);
    action.setChecked(command.checked);
  }
}

}  // namespace qmrules::desktop
