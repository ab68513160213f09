#pragma once

#include <QElapsedTimer>
#include <QMainWindow>
#include <functional>
#include <memory>
#include <string>

#include "desktop/translations/translations.h"
#include "desktop/views/qtdialogs.h"
#include "desktop/window/appearance.h"
#include "desktop/window/preferences.h"
#include "desktop/window/statusline.h"
#include "desktop/window/waitpointer.h"
#include "platform/settings.h"
#include "shell/language.h"
#include "workbench/host/embeddedhost.h"

class QDockWidget;
class QStackedWidget;

namespace qmrules::desktop {

class FailureBar;
class ProgramsPane;
class ProgressPanel;
class ResultsPane;
class StartPage;
class WindowMenus;
class WorkspaceDesk;

// The window of the desktop: the places for programs, source and rules, the menus and the status line around them, and
// at most one open workspace.
class MainWindow final : public QMainWindow {
  Q_OBJECT

 public:
  // What the process lends; all of it outlives the window.
  struct Process {
    workbench::HostServices services;
    platform::UserSettings& settings;
    Appearance& appearance;
    Translations& translations;
    shell::Language language;  // to begin with
  };
  explicit MainWindow(Process process);
  ~MainWindow() override;

  // Opens the workspace in the folder or, when it is empty, the one that was open when the last run ended.
  void Begin(const QString& folder);
  // Opens the workspace in the folder in place of the open one. A failure is told to the user; no workspace is open
  // then.
  void OpenWorkspace(const QString& folder);
  // Writes what was typed and remembers the layout. A failure is told to the user; no workspace is open then either.
  void CloseWorkspace();
  // The open workspace, or nullptr.
  WorkspaceDesk* Desk() { return desk_.get(); }

  // The language of all texts from now on, here and in the next run.
  void UseLanguage(shell::Language language);
  void UseScheme(Scheme scheme);
  void UseFontSize(int points);

  // Tells the user of a failure that came out of the handling of an event.
  void TellFailure(const QString& text);

  WindowMenus& Menus() { return *menus_; }
  FailureBar& Failures() { return *failures_; }
  ProgressPanel& Progress() { return *progress_; }
  ProgramsPane& Programs() { return *programs_; }
  ResultsPane& Results() { return *results_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void MakePlaces();
  QDockWidget* MakeDock(const char* name, Qt::DockWidgetArea area);
  void ConnectMenus();
  void ConnectViewMenu();
  void ConnectDesk();
  void Retranslate();
  // Runs what the user asked for; a failure is told in a message box.
  void Attempt(const std::function<void()>& action);
  void Refuse(const QString& text);
  void AskForFolder();
  void AskForNewWorkspace();
  void ShowOptions();
  void StartControl();
  void ShowControlSoon();
  void ShowDesk(bool show);
  void ShowResults();
  void LayOutFirst();
  void EnlargePane(int by);
  void RestoreLayout();
  void SaveLayout();
  void ShowRecent();
  workbench::HostServices ServicesWithDialogs();

  Process process_;
  Preferences preferences_;
  WaitPointer pointer_;
  QtDialogs dialogs_;
  shell::Language language_;
  WindowMenus* menus_ = nullptr;
  FailureBar* failures_ = nullptr;
  QStackedWidget* centre_ = nullptr;
  StartPage* startPage_ = nullptr;
  QDockWidget* programsDock_ = nullptr;
  QDockWidget* rulesDock_ = nullptr;
  QDockWidget* resultsDock_ = nullptr;
  ProgramsPane* programs_ = nullptr;
  ResultsPane* results_ = nullptr;
  ProgressPanel* progress_ = nullptr;
  std::unique_ptr<StatusLine> status_;
  std::unique_ptr<WorkspaceDesk> desk_;
  QString lastTold_;
  QElapsedTimer sinceTold_;
};

}  // namespace qmrules::desktop
