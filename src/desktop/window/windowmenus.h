#pragma once

#include <QKeySequence>
#include <QObject>
#include <QStringList>
#include <vector>

#include "desktop/window/hostmenu.h"
#include "desktop/window/preferences.h"
#include "shell/language.h"

class QAction;
class QActionGroup;
class QMainWindow;

namespace qmrules::desktop {

// The window's menu bar: the host's own menus, and between them the menu of the rules' commands.
//
// To add an entry: its member here, its line in the Make function of its menu, and what it does in the main window.
class WindowMenus final : public QObject {
  Q_OBJECT

 public:
  // `component`: the internal name of the control, whose commands stand in the host's menu.
  WindowMenus(QMainWindow& window, const std::string& component);

  QAction* newWorkspace = nullptr;
  QAction* openWorkspace = nullptr;
  QAction* closeWorkspace = nullptr;
  QAction* scan = nullptr;
  QAction* options = nullptr;
  QAction* quit = nullptr;

  QAction* locate = nullptr;
  QAction* filterPrograms = nullptr;
  QAction* showSource = nullptr;
  QAction* showRules = nullptr;
  QAction* showResults = nullptr;

  QAction* largerFont = nullptr;
  QAction* smallerFont = nullptr;
  QAction* systemFont = nullptr;
  QAction* paneLines = nullptr;
  QAction* largerPane = nullptr;
  QAction* smallerPane = nullptr;
  QAction* firstLayout = nullptr;

  QAction* keyboard = nullptr;
  QAction* about = nullptr;

  HostMenu& Rules() { return *rules_; }

  void SetRecent(const QStringList& folders);
  // Marks the choices that are in force.
  void SetLanguage(shell::Language language);
  void SetScheme(Scheme scheme);
  // Entries that need a workspace are grey without one.
  void SetHasWorkspace(bool has);
  // The docks that can be shown and hidden, in the order of the menu.
  void SetDockActions(const QList<QAction*>& docks);
  // What the source viewer offers; none takes the old ones away.
  void SetSourceActions(const std::vector<QAction*>& actions);
  void RenewIcons();
  void Retranslate();

  // Each entry with a key, for the reader: caption and key, in the order of the menus.
  struct Shortcut {
    QString caption;
    QString key;
  };
  std::vector<Shortcut> Shortcuts() const;

 signals:
  void RecentChosen(const QString& folder);
  void LanguageChosen(shell::Language language);
  void SchemeChosen(qmrules::desktop::Scheme scheme);

 private:
  struct Captioned {
    QAction* action;
    const char* caption;  // to be translated
    const char* icon;     // its key; nullptr for none
  };
  QMenu* AddMenu(const char* caption);
  QAction* Add(QMenu& menu, const char* caption, const QKeySequence& key = {}, const char* icon = nullptr);
  void MakeFileMenu();
  void MakeNavigateMenu();
  void MakeViewMenu();
  void MakeLanguageMenu(QMenu& view);
  void MakeSchemeMenu(QMenu& view);
  void MakeHelpMenu();

  QMainWindow& window_;
  std::vector<Captioned> captioned_;
  std::vector<QMenu*> menus_;
  std::vector<QAction*> needWorkspace_;
  QMenu* recent_ = nullptr;
  HostMenu* rules_ = nullptr;
  QMenu* navigate_ = nullptr;
  QAction* sourceActionsEnd_ = nullptr;
  std::vector<QAction*> sourceActions_;
  QMenu* view_ = nullptr;
  QAction* docksEnd_ = nullptr;
  QActionGroup* languages_ = nullptr;
  QActionGroup* schemes_ = nullptr;
};

}  // namespace qmrules::desktop
