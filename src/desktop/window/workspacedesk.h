#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desktop/locator/cataloguelocator.h"
#include "desktop/window/rulecounts.h"
#include "desktop/window/storewatch.h"
#include "desktop/window/workspacesession.h"

class QDockWidget;
class QStackedWidget;

namespace qmrules::desktop {

class ControlView;
class Locator;
class ProgramsPane;
class ResultsPane;
class SourceView;
class StatusLine;

// An open workspace in the window: its session, with the views over it in their places, and what keeps them up to date.
// Without it the places are empty.
class WorkspaceDesk final : public QObject {
  Q_OBJECT

 public:
  // All of it outlives this.
  struct Places {
    QWidget& window;
    QStackedWidget& centre;  // the source viewer comes in front of what is there
    QDockWidget& rules;
    ProgramsPane& programs;
    ResultsPane& results;
    StatusLine& status;
  };

  // Opens the workspace. Throws platform::Error as WorkspaceSession does, with the places empty as before.
  WorkspaceDesk(const std::string& folder, workbench::HostServices services, WorkspaceSession::Screen screen,
                Places places);
  ~WorkspaceDesk() override;

  WorkspaceSession& Session() { return session_; }
  SourceView& Source();

  // Puts the control in its place, in the language of the texts; one that is there ends first. The control is told to
  // show itself once ShowControl is called. Throws platform::Error when the old one could not write what was typed, or
  // the new one cannot be made.
  void StartControl(const shell::StringTable& texts, const std::string& externalName);
  // Throws platform::Error as WorkspaceSession::EndControl does; the place is empty all the same.
  void EndControl();

  // Tells the control that it comes into sight or goes out of it.
  void ShowControl(bool show);
  void FocusControl();
  // Brings the keyboard to the next line between the control's panes.
  void GoToNextPaneLine();
  void FocusSource();
  void OpenLocator();
  void ScanSources();
  // The options have changed: texts are read and coloured anew.
  void OptionsChanged();
  // After a change of the colours.
  void RenewPictures();
  // After a change of the language.
  void Retranslate() { ShowStatus(); }

 signals:
  // For the status line.
  void Noted(const QString& text);
  // What the user asked for could not be done.
  void Refused(const QString& text);
  // For the place of failures that nobody asked for.
  void Failed(const QString& text);
  // The results of a validation have come into their place.
  void Validated();

 private:
  void Observe();
  void ObserveChanges();
  void Attempt(const std::function<void()>& action);
  void ShowPrograms();
  void ShowStatus();
  void Recount();
  void CountOn();
  void ForeignChanges(const platform::ForeignChanges& changes);
  void Choose(const LocatorEntry& entry);
  void ChooseRule(std::int32_t ruleID);
  void ShowResults(std::shared_ptr<const validation::ValidationReport> report);

  Places places_;
  WorkspaceSession session_;
  CatalogueLocator locatorSource_;
  QPointer<Locator> locator_;
  QPointer<SourceView> source_;
  QPointer<ControlView> control_;
  platform::Subscription entered_;
  platform::Subscription enabledChanges_;
  platform::Subscription validated_;
  RuleCounts counts_;
  bool isCounting_ = false;
  QTimer recount_;  // a while after the last change
  QTimer countStep_;
  std::unique_ptr<StoreWatch> watch_;
  std::vector<platform::Subscription> subscriptions_;
};

}  // namespace qmrules::desktop
