#include "shell/workspacenotifications.h"

#include <algorithm>
#include <string_view>

#include "catalogue/gateway.h"
#include "catalogue/ignorederrors.h"
#include "platform/error.h"
#include "segments/sourceselection.h"

namespace qmrules::shell {

namespace {

constexpr std::string_view kCobol = "COBOL";

// True when the entity has the three attributes and all are true of the object.
bool HasDataflowData(const platform::Object& program) {
  constexpr std::string_view kFlags[] = {"DataView", "DataRelations", "DataDepends"};
  return std::all_of(std::begin(kFlags), std::end(kFlags), [&](std::string_view flag) {
    return program.EntityDef().FindAttr(flag) != nullptr && program.Attrs(flag).Boolean();
  });
}

}  // namespace

WorkspaceNotifications::WorkspaceNotifications(const browser::BrowserServices& services, segments::Emphasis& emphasis)
    : services_(services),
      faces_(services),
      emphasis_(emphasis),
      objectIDChanged_(services.QMWS.OnObjectIDChanged([this] { QMWS_ObjectIDChanged(); })),
      selectedChanged_(services.QMWS.OnSelectedChanged([this] { QMWS_SelectedChanged(); })),
      propertyChanged_(services.QMWS.OnPropertyChanged(
          [this](const std::string& component, const std::string& property, const platform::Value&) {
            QMWS_PropertyChanged(component, property);
          })) {}

void WorkspaceNotifications::Record(const std::function<void()>& handler) {
  try {
    handler();
  } catch (const platform::Error& failure) {
    services_.host.RecordFailure(failure.what());
  }
}

void WorkspaceNotifications::QMWS_ObjectIDChanged() {
  Record([this] {
    const std::string key = services_.QMWS.ObjectID();
    if (key.empty()) return;
    faces_.SetVisible("ProcessOutlineReport", catalogue::SplitKey(key).entity == kCobol);
  });
}

void WorkspaceNotifications::QMWS_SelectedChanged() {
  Record([this] {
    bool isAvailable = false;
    catalogue::WithErrorsIgnored(
        [&] { isAvailable = HasDataflowData(*services_.Repository().object(services_.QMWS.ObjectID())); });
    faces_.SetEnabled("AutoDetect", isAvailable);
  });
}

// Another file came on view, so the marks are those of another file.
void WorkspaceNotifications::QMWS_PropertyChanged(const std::string& component, const std::string& property) {
  if (component != segments::kSourceViewer || !(property.empty() || property == "FileName")) return;
  Record([this] { emphasis_.Refresh(); });
}

}  // namespace qmrules::shell
