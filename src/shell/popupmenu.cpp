#include "shell/popupmenu.h"

#include <utility>

#include "browser/commandtable.h"

namespace qmrules::shell {

namespace {

constexpr std::string_view kNothingPutOff = "123456789";

}  // namespace

void PopupMenu::Open() {
  pendingAction_ = kNothingPutOff;
  try {
    dialogs_.PopupMenu(menu_);
  } catch (...) {
    ClearPending();
    throw;
  }
  const std::string action = std::exchange(pendingAction_, std::string());
  if (browser::FindCommand(action) != nullptr) failures_.Attempt([&] { commands_.Run(action); });
}

bool PopupMenu::PutOff(std::string_view command) {
  if (pendingAction_.empty()) return false;
  pendingAction_ = command;
  return true;
}

}  // namespace qmrules::shell
