#include "cli/controlsession.h"

namespace qmrules::cli {

namespace {

constexpr std::string_view kInternalName = "QMRules";
constexpr std::string_view kExternalName = "QMRules";
constexpr std::string_view kNotTraced = "The command line does not trace variables.";

}  // namespace

bool ControlSession::NoTracing::LoadProgram(const Program& /*program*/, std::string& result) {
  result = kNotTraced;
  return false;
}

std::int32_t ControlSession::NoTracing::ExpandNode(std::string_view /*node*/, std::string_view /*direction*/,
                                                   std::string_view /*relation*/, std::string& result) {
  result = kNotTraced;
  return 0;
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
