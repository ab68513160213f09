#pragma once

#include <string_view>

#include "browser/activitylogform.h"
#include "browser/browserservices.h"
#include "browser/moveinsequence.h"
#include "browser/selectedonly.h"
#include "browser/selection.h"
#include "platform/commandsink.h"
#include "segments/emphasis.h"
#include "shell/popupmenu.h"
#include "validation/rulevalidation.h"

namespace qmrules::shell {

// What the commands work through. All of it outlives the handlers.
struct HandlerParts {
  browser::Selection& selection;
  browser::SelectedOnly& selectedOnly;
  browser::MoveInSequence& moveInSequence;
  browser::ActivityLogForm& activityLog;
  segments::Emphasis& emphasis;
  validation::RuleValidation& validation;
  PopupMenu& popup;
};

// One handler for each command, whichever way the command came.
class CommandHandlers final : public platform::CommandSink {
 public:
  CommandHandlers(const browser::BrowserServices& services, const HandlerParts& parts)
      : services_(services), parts_(parts) {}

  // Runs the handler of the key. A command whose job is not built yet tells the user that it is not available.
  void Run(std::string_view key) override;

  // True for a key that has a handler: those of the table of commands, those that only other components and the lists
  // of a rule ask for, and no others.
  static bool Knows(std::string_view key);

 private:
  struct Entry;
  static const Entry* Find(std::string_view key);

  void PreviousSelected() { parts_.selection.WalkSelected(false); }
  void NextSelected() { parts_.selection.WalkSelected(true); }
  void Selected() { parts_.selectedOnly.Toggle(); }
  void SelectAll() { parts_.selection.SelectAll(); }
  void UnselectAll() { parts_.selection.UnselectAll(); }
  void MoveUp() { parts_.moveInSequence.Run(catalogue::Direction::Up); }
  void MoveDown() { parts_.moveInSequence.Run(catalogue::Direction::Down); }
  void Changer();
  void Emphasize() { parts_.emphasis.Toggle(); }
  void Validate() { parts_.validation.Run(); }
  void ActivityLog();
  void NotAvailable();

  browser::BrowserServices services_;
  HandlerParts parts_;
};

}  // namespace qmrules::shell
