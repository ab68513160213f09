#pragma once

#include "cli/command.h"
#include "editing/outcomes.h"
#include "platform/dataflow.h"
#include "platform/memoryworkspace.h"
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
  // Nothing is traced in a run that makes no detection.
  class NoTracing final : public platform::TracingLibrary {
   public:
    bool LoadProgram(const Program& program, std::string& result) override;
    void UnloadProgram(std::string_view) override {}
    std::int32_t ExpandNode(std::string_view node, std::string_view direction, std::string_view relation,
                            std::string& result) override;
    std::optional<std::string> GetExpandNodeResult() override { return std::nullopt; }
  };

  const Context& context_;
  workbench::EmbeddedHost& host_;
  // A run without a screen has no layout to restore and must not overwrite the one that the desktop keeps.
  platform::MemorySettings settings_;
  NoTracing tracing_;
  platform::SilentProgress progress_;
  platform::MemoryWorkspace workspace_;
  shell::QMRules control_;
};

}  // namespace qmrules::cli
