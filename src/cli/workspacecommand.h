#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "cli/command.h"
#include "workbench/host/embeddedhost.h"

namespace qmrules::cli {

// The path as the user means it: a relative one starts at the current folder of the environment.
std::string AbsolutePath(const CliEnvironment& environment, const std::string& path);

// The workspace that the command line means: the one of --workspace, of the variable QMRULES_WORKSPACE, or of the
// current folder or the nearest folder above it that holds one; nothing where there is none. One that is named need not
// be there.
std::optional<std::string> FindWorkspace(const Context& context);

// What the host of a workspace is given by the environment.
workbench::HostServices ServicesOf(const CliEnvironment& environment);

// A command that works in a workspace, see FindWorkspace.
class WorkspaceCommand : public Command {
 public:
  int Run(Context& context) final;

 protected:
  virtual int RunIn(Context& context, workbench::EmbeddedHost& host) = 0;

  // Runs all writes of this command as one command of the change journal, named by the command's words, which takes
  // effect whole or, when something throws, not at all.
  void Write(workbench::EmbeddedHost& host, const std::function<void()>& writes) const;
};

}  // namespace qmrules::cli
