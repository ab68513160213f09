#include "cli/controlsession.h"

#include <fmt/format.h>

#include "platform/error.h"
#include "platform/widgets/form.h"
#include "platform/widgets/menu.h"

namespace qmrules::cli {

namespace {

constexpr std::string_view kInternalName = "QMRules";
constexpr std::string_view kExternalName = "QMRules";

}  // namespace

void ControlSession::NoWindows::ShowModal(platform::widgets::Form& form) {
  throw platform::Error(fmt::format("The command line does not show the window {}.", form.Name()));
}

platform::MessageAnswer ControlSession::NoWindows::MessageBox(std::string_view text, std::string_view /*caption*/,
                                                              platform::MessageStyle /*style*/) {
  throw platform::Error(std::string(text));
}

std::optional<std::string> ControlSession::NoWindows::PickFileToOpen(const platform::FileRequest& request) {
  throw platform::Error(fmt::format("The command line does not ask for a file: {}.", request.title));
}

std::optional<std::string> ControlSession::NoWindows::PickFileToSave(const platform::FileRequest& request) {
  return PickFileToOpen(request);
}

void ControlSession::NoWindows::PopupMenu(platform::widgets::Menu& menu) {
  throw platform::Error(fmt::format("The command line does not open the menu {}.", menu.Name()));
}

ControlSession::ControlSession(const Context& context, workbench::EmbeddedHost& host)
    : context_(context),
      host_(host),
      workspace_(host, progress_),
      control_({.globals = host.Globals(),
                .texts = context.texts,
                .fileSystem = host.FileSystem(),
                .registry = host.Registry(),
                .settings = settings_,
                .clock = host.Clock(),
                .databases = host.Databases(),
                .tracing = tracing_,
                .dialogs = dialogs_,
                .pointer = pointer_,
                .repairIsDue = [&host] { return host.RepairIsDue(); },
                .repairIsDone = [&host] { host.RepairIsDone(); }}) {
  control_.Init(workspace_, kInternalName, kExternalName);
}

ControlSession::~ControlSession() {
  control_.DeInit();
}

editing::EditingContext ControlSession::Editing() const {
  return {host_, host_.Clock(), context_.texts, host_.Globals()};
}

}  // namespace qmrules::cli
