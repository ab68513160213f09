#pragma once

#include "cli/command.h"
#include "editing/outcomes.h"
#include "platform/dialogs.h"
#include "platform/memoryworkspace.h"
#include "platform/notracing.h"
#include "platform/pointer.h"
#include "platform/progress.h"
#include "platform/settings.h"
#include "shell/qmrules.h"
#include "workbench/host/embeddedhost.h"

namespace qmrules::cli {

// The control, initialised over a workspace without windows, so that lists, defaults and options are the ones that the
// control itself goes by. Init repairs the rules' attributes where that is due, so a session is begun before the
// command's own writes.
class ControlSession {
 public:
  // Throws platform::Error as QMRules::Init does. Both outlive the session.
  ControlSession(const Context& context, workbench::EmbeddedHost& host);
  ~ControlSession();
  ControlSession(const ControlSession&) = delete;
  ControlSession& operator=(const ControlSession&) = delete;

  const shell::QMRules& Control() const { return control_; }
  // What the editing routines work on.
  editing::EditingContext Editing() const;

 private:
  // Nobody sits in front of a window: what would be said there ends the command instead.
  class NoWindows final : public platform::Dialogs {
   public:
    void ShowModal(platform::widgets::Form& form) override;
    platform::MessageAnswer MessageBox(std::string_view text, std::string_view caption,
                                       platform::MessageStyle style) override;
    std::optional<std::string> PickFileToOpen(const platform::FileRequest& request) override;
    std::optional<std::string> PickFileToSave(const platform::FileRequest& request) override;
    void PopupMenu(platform::widgets::Menu& menu) override;
  };

  const Context& context_;
  workbench::EmbeddedHost& host_;
  // A run without a screen has no layout to restore and must not overwrite the one that the desktop keeps.
  platform::MemorySettings settings_;
  platform::NoTracing tracing_{"The command line does not trace variables."};
  NoWindows dialogs_;
  platform::MemoryPointer pointer_;
  platform::SilentProgress progress_;
  platform::MemoryWorkspace workspace_;
  shell::QMRules control_;
};

}  // namespace qmrules::cli
