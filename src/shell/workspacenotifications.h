#pragma once

#include <functional>
#include <string>

#include "browser/browserservices.h"
#include "browser/commandfaces.h"
#include "platform/event.h"
#include "segments/emphasis.h"

namespace qmrules::shell {

// What the control does when the workspace tells of a change. No handler shows a message: a failure goes to the
// workspace's record.
class WorkspaceNotifications {
 public:
  // `emphasis` outlives this.
  WorkspaceNotifications(const browser::BrowserServices& services, segments::Emphasis& emphasis);
  WorkspaceNotifications(const WorkspaceNotifications&) = delete;
  WorkspaceNotifications& operator=(const WorkspaceNotifications&) = delete;

  // The process outline report is there for a COBOL program only. Without a current object it stays as it is.
  void QMWS_ObjectIDChanged();
  // AutoDetect is available when the current object has all dataflow data.
  void QMWS_SelectedChanged();

 private:
  void QMWS_PropertyChanged(const std::string& component, const std::string& property);
  void Record(const std::function<void()>& handler);

  browser::BrowserServices services_;
  browser::CommandFaces faces_;
  segments::Emphasis& emphasis_;
  platform::Subscription objectIDChanged_;
  platform::Subscription selectedChanged_;
  platform::Subscription propertyChanged_;
};

}  // namespace qmrules::shell
