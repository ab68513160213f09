#include "desktop/window/windowmenus.h"

#include <QAction>
#include <QActionGroup>
#include <QDir>
#include <QMainWindow>
#include <QMenuBar>

#include "desktop/icons/iconset.h"

namespace qmrules::desktop {

WindowMenus::WindowMenus(QMainWindow& window, const std::string& component) : QObject(&window), window_(window) {
  MakeFileMenu();
  rules_ = new HostMenu(component, &window);
  window.menuBar()->addMenu(rules_);
  MakeNavigateMenu();
  MakeViewMenu();
  MakeHelpMenu();
  Retranslate();
  RenewIcons();
  SetHasWorkspace(false);
}

QMenu* WindowMenus::AddMenu(const char* caption) {
  auto* const menu = window_.menuBar()->addMenu(QString());
  menu->setToolTipsVisible(true);
  menus_.push_back(menu);
  captioned_.push_back({menu->menuAction(), caption, nullptr});
  return menu;
}

QAction* WindowMenus::Add(QMenu& menu, const char* caption, const QKeySequence& key, const char* icon) {
  auto* const action = menu.addAction(QString());
  action->setShortcut(key);
  captioned_.push_back({action, caption, icon});
  return action;
}

void WindowMenus::MakeFileMenu() {
  auto& file = *AddMenu(QT_TR_NOOP("&File"));
  newWorkspace = Add(file, QT_TR_NOOP("&New Workspace..."), QKeySequence("Ctrl+Shift+N"), "NewWorkspace");
  openWorkspace = Add(file, QT_TR_NOOP("&Open Workspace..."), QKeySequence::Open, "Open");
  recent_ = file.addMenu(QString());
  captioned_.push_back({recent_->menuAction(), QT_TR_NOOP("Open &Recent"), "Recent"});
  closeWorkspace = Add(file, QT_TR_NOOP("&Close Workspace"), QKeySequence("Ctrl+Shift+W"));
  file.addSeparator();
  scan = Add(file, QT_TR_NOOP("&Scan Sources"), QKeySequence("F5"), "Scan");
  options = Add(file, QT_TR_NOOP("O&ptions..."), QKeySequence("Ctrl+,"), "Options");
  file.addSeparator();
  quit = Add(file, QT_TR_NOOP("&Quit"), QKeySequence("Ctrl+Q"));
  quit->setMenuRole(QAction::QuitRole);
  needWorkspace_ = {closeWorkspace, scan, options};
}

void WindowMenus::MakeNavigateMenu() {
  navigate_ = AddMenu(QT_TR_NOOP("&Navigate"));
  locate = Add(*navigate_, QT_TR_NOOP("&Go to..."), QKeySequence("Ctrl+K"), "Locate");
  navigate_->addSeparator();
  filterPrograms = Add(*navigate_, QT_TR_NOOP("&Programs"), QKeySequence("Ctrl+1"));
  showSource = Add(*navigate_, QT_TR_NOOP("&Source"), QKeySequence("Ctrl+2"));
  showRules = Add(*navigate_, QT_TR_NOOP("&Rules"), QKeySequence("Ctrl+3"));
  showResults = Add(*navigate_, QT_TR_NOOP("&Validation"), QKeySequence("Ctrl+4"));
  sourceActionsEnd_ = navigate_->addSeparator();
  needWorkspace_.insert(needWorkspace_.end(), {locate, filterPrograms, showSource, showRules, showResults});
}

void WindowMenus::MakeViewMenu() {
  view_ = AddMenu(QT_TR_NOOP("&View"));
  docksEnd_ = view_->addSeparator();
  // Without Alt these keys are the source viewer's.
  largerFont = Add(*view_, QT_TR_NOOP("&Larger Letters"), QKeySequence("Ctrl+Alt++"));
  smallerFont = Add(*view_, QT_TR_NOOP("&Smaller Letters"), QKeySequence("Ctrl+Alt+-"));
  systemFont = Add(*view_, QT_TR_NOOP("&Normal Letters"));
  view_->addSeparator();
  MakeSchemeMenu(*view_);
  MakeLanguageMenu(*view_);
  view_->addSeparator();
  paneLines = Add(*view_, QT_TR_NOOP("&Move the Lines between Panes"), QKeySequence("F8"));
  largerPane = Add(*view_, QT_TR_NOOP("Lar&ger Pane"), QKeySequence("Ctrl+Alt+Right"));
  smallerPane = Add(*view_, QT_TR_NOOP("Sm&aller Pane"), QKeySequence("Ctrl+Alt+Left"));
  firstLayout = Add(*view_, QT_TR_NOOP("&Restore First Layout"));
  needWorkspace_.insert(needWorkspace_.end(), {paneLines, largerPane, smallerPane, firstLayout});
}

// Languages are called by their own names, so that each reader finds the right one.
void WindowMenus::MakeLanguageMenu(QMenu& view) {
  auto* const menu = view.addMenu(QString());
  captioned_.push_back({menu->menuAction(), QT_TR_NOOP("&Language"), nullptr});
  languages_ = new QActionGroup(this);
  const auto add = [&](const QString& name, shell::Language language) {
    auto* const action = menu->addAction(name);
    action->setCheckable(true);
    action->setData(static_cast<int>(language));
    languages_->addAction(action);
    connect(action, &QAction::triggered, this, [this, language] { emit LanguageChosen(language); });
  };
  add("English", shell::Language::English);
  add(QString::fromUtf8("日本語"), shell::Language::Japanese);
  add(QString::fromUtf8("한국어"), shell::Language::Korean);
}

void WindowMenus::MakeSchemeMenu(QMenu& view) {
  auto* const menu = view.addMenu(QString());
  captioned_.push_back({menu->menuAction(), QT_TR_NOOP("&Colours"), nullptr});
  schemes_ = new QActionGroup(this);
  const auto add = [&](const char* caption, Scheme scheme) {
    auto* const action = Add(*menu, caption);
    action->setCheckable(true);
    action->setData(static_cast<int>(scheme));
    schemes_->addAction(action);
    connect(action, &QAction::triggered, this, [this, scheme] { emit SchemeChosen(scheme); });
  };
  add(QT_TR_NOOP("&System"), Scheme::System);
  add(QT_TR_NOOP("&Light"), Scheme::Light);
  add(QT_TR_NOOP("&Dark"), Scheme::Dark);
}

void WindowMenus::MakeHelpMenu() {
  auto& help = *AddMenu(QT_TR_NOOP("&Help"));
  keyboard = Add(help, QT_TR_NOOP("&Keyboard"), QKeySequence::HelpContents, "Information");
  about = Add(help, QT_TR_NOOP("&About"));
  about->setMenuRole(QAction::AboutRole);
}

void WindowMenus::Retranslate() {
  for (const auto& [action, caption, icon] : captioned_) action->setText(tr(caption));
}

void WindowMenus::RenewIcons() {
  const IconSet icons(window_.palette());
  for (const auto& [action, caption, icon] : captioned_) {
    if (icon != nullptr) action->setIcon(icons.Icon(icon));
  }
}

void WindowMenus::SetRecent(const QStringList& folders) {
  recent_->clear();
  recent_->setEnabled(!folders.isEmpty());
  for (const QString& folder : folders) {
    auto* const action = recent_->addAction(QDir::toNativeSeparators(folder).replace('&', "&&"));
    connect(action, &QAction::triggered, this, [this, folder] { emit RecentChosen(folder); });
  }
}

void WindowMenus::SetLanguage(shell::Language language) {
  for (QAction* const action : languages_->actions()) {
    if (action->data().toInt() == static_cast<int>(language)) action->setChecked(true);
  }
}

void WindowMenus::SetScheme(Scheme scheme) {
  for (QAction* const action : schemes_->actions()) {
    if (action->data().toInt() == static_cast<int>(scheme)) action->setChecked(true);
  }
}

void WindowMenus::SetHasWorkspace(bool has) {
  for (QAction* const action : needWorkspace_) action->setEnabled(has);
  rules_->menuAction()->setVisible(has);
}

void WindowMenus::SetDockActions(const QList<QAction*>& docks) {
  view_->insertActions(docksEnd_, docks);
}

void WindowMenus::SetSourceActions(const std::vector<QAction*>& actions) {
  for (QAction* const action : sourceActions_) navigate_->removeAction(action);
  sourceActions_ = actions;
  for (QAction* const action : actions) navigate_->addAction(action);
}

std::vector<WindowMenus::Shortcut> WindowMenus::Shortcuts() const {
  std::vector<Shortcut> shortcuts;
  for (const QAction* const menu : window_.menuBar()->actions()) {
    if (menu->menu() == nullptr) continue;
    for (const QAction* const action : menu->menu()->actions()) {
      if (action->shortcut().isEmpty()) continue;
      QString caption = action->text();
      shortcuts.push_back({caption.remove('&').remove("..."), action->shortcut().toString(QKeySequence::NativeText)});
    }
  }
  return shortcuts;
}

}  // namespace qmrules::desktop
