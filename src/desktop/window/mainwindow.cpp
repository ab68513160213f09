#include "desktop/window/mainwindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include "desktop/icons/iconset.h"
#include "desktop/options/folderoptions.h"
#include "desktop/options/optionswindow.h"
#include "desktop/results/resultspane.h"
#include "desktop/source/sourceview.h"
#include "desktop/views/qttext.h"
#include "desktop/window/failurebar.h"
#include "desktop/window/helppages.h"
#include "desktop/window/newworkspacedialog.h"
#include "desktop/window/programspane.h"
#include "desktop/window/progresspanel.h"
#include "desktop/window/startpage.h"
#include "desktop/window/windowmenus.h"
#include "desktop/window/workspacedesk.h"
#include "platform/error.h"
#include "workbench/options/defaultoptions.h"

namespace qmrules::desktop {

namespace {

constexpr QSize kFirstSize(1440, 900);
constexpr int kProgramsWidth = 220;  // of the first layout
constexpr int kRulesWidth = 640;
constexpr int kPaneStep = 40;         // by which a key makes a pane larger
constexpr int kNoteTime = 15000;      // milliseconds
constexpr int kQuietAfterBox = 2000;  // milliseconds in which the same failure does not open a box again

}  // namespace

MainWindow::MainWindow(Process process)
    : process_(std::move(process)),
      preferences_(process_.settings),
      dialogs_(pointer_, this),
      language_(process_.language) {
  setObjectName("mainWindow");
  setDockNestingEnabled(true);
  menus_ = new WindowMenus(*this, kControlName);
  MakePlaces();
  ConnectMenus();
  ConnectViewMenu();
  Retranslate();
  RestoreLayout();
  ShowDesk(false);
  centre_->setCurrentIndex(0);
  ShowRecent();
}

MainWindow::~MainWindow() {
  // Docks go out of sight on the way; there is nobody to be told then.
  disconnect(rulesDock_, nullptr, this, nullptr);
  desk_.reset();
}

void MainWindow::MakePlaces() {
  auto* const centre = new QWidget(this);
  auto* const layout = new QVBoxLayout(centre);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  failures_ = new FailureBar(centre);
  centre_ = new QStackedWidget(centre);
  startPage_ = new StartPage(centre_);
  // Empty until it is known whether a workspace is opened at once.
  centre_->addWidget(new QWidget(centre_));
  centre_->addWidget(startPage_);
  layout->addWidget(failures_);
  layout->addWidget(centre_, 1);
  setCentralWidget(centre);

  programsDock_ = MakeDock("programsDock", Qt::LeftDockWidgetArea);
  programs_ = new ProgramsPane(programsDock_);
  programsDock_->setWidget(programs_);
  rulesDock_ = MakeDock("rulesDock", Qt::RightDockWidgetArea);
  connect(rulesDock_, &QDockWidget::visibilityChanged, this, [this](bool visible) {
    if (!desk_) return;
    if (visible) {
      ShowControlSoon();
    } else {
      desk_->ShowControl(false);
    }
  });
  resultsDock_ = MakeDock("resultsDock", Qt::BottomDockWidgetArea);
  results_ = new ResultsPane(resultsDock_);
  resultsDock_->setWidget(results_);
  menus_->SetDockActions(
      {programsDock_->toggleViewAction(), rulesDock_->toggleViewAction(), resultsDock_->toggleViewAction()});

  progress_ = new ProgressPanel(statusBar());
  statusBar()->addPermanentWidget(progress_);
  status_ = std::make_unique<StatusLine>(*statusBar());

  connect(startPage_, &StartPage::OpenRequested, this, &MainWindow::AskForFolder);
  connect(startPage_, &StartPage::NewRequested, this, &MainWindow::AskForNewWorkspace);
  connect(startPage_, &StartPage::RecentChosen, this, &MainWindow::OpenWorkspace);
}

QDockWidget* MainWindow::MakeDock(const char* name, Qt::DockWidgetArea area) {
  auto* const dock = new QDockWidget(this);
  dock->setObjectName(name);
  addDockWidget(area, dock);
  return dock;
}

void MainWindow::ConnectMenus() {
  connect(menus_->newWorkspace, &QAction::triggered, this, &MainWindow::AskForNewWorkspace);
  connect(menus_->openWorkspace, &QAction::triggered, this, &MainWindow::AskForFolder);
  connect(menus_, &WindowMenus::RecentChosen, this, &MainWindow::OpenWorkspace);
  connect(menus_->closeWorkspace, &QAction::triggered, this, [this] {
    CloseWorkspace();
    Attempt([this] { preferences_.SetLastWorkspace({}); });
  });
  connect(menus_->scan, &QAction::triggered, this, [this] { Attempt([this] { desk_->ScanSources(); }); });
  connect(menus_->options, &QAction::triggered, this, [this] { Attempt([this] { ShowOptions(); }); });
  connect(menus_->quit, &QAction::triggered, this, &MainWindow::close);
  connect(menus_->locate, &QAction::triggered, this, [this] { Attempt([this] { desk_->OpenLocator(); }); });
  connect(menus_->filterPrograms, &QAction::triggered, this, [this] {
    programsDock_->show();
    programsDock_->raise();
    programs_->FocusFilter();
  });
  connect(menus_->showSource, &QAction::triggered, this, [this] { desk_->FocusSource(); });
  connect(menus_->showRules, &QAction::triggered, this, [this] { desk_->FocusControl(); });
  connect(menus_->showResults, &QAction::triggered, this, [this] {
    ShowResults();
    results_->FocusList();
  });
  connect(menus_->keyboard, &QAction::triggered, this, [this] { ShowKeyboardPage(menus_->Shortcuts(), this); });
  connect(menus_->about, &QAction::triggered, this, [this] { ShowAboutPage(this); });
}

void MainWindow::ConnectViewMenu() {
  connect(menus_->largerFont, &QAction::triggered, this,
          [this] { Attempt([this] { UseFontSize(process_.appearance.FontSize() + 1); }); });
  connect(menus_->smallerFont, &QAction::triggered, this,
          [this] { Attempt([this] { UseFontSize(process_.appearance.FontSize() - 1); }); });
  connect(menus_->systemFont, &QAction::triggered, this, [this] { Attempt([this] { UseFontSize(0); }); });
  connect(menus_->paneLines, &QAction::triggered, this, [this] { desk_->GoToNextPaneLine(); });
  connect(menus_->largerPane, &QAction::triggered, this, [this] { EnlargePane(kPaneStep); });
  connect(menus_->smallerPane, &QAction::triggered, this, [this] { EnlargePane(-kPaneStep); });
  connect(menus_->firstLayout, &QAction::triggered, this, &MainWindow::LayOutFirst);
  connect(menus_, &WindowMenus::LanguageChosen, this,
          [this](shell::Language language) { Attempt([&] { UseLanguage(language); }); });
  connect(menus_, &WindowMenus::SchemeChosen, this, [this](Scheme scheme) { Attempt([&] { UseScheme(scheme); }); });
  menus_->SetLanguage(language_);
  Attempt([this] {
    process_.appearance.UseScheme(preferences_.ColorScheme());
    process_.appearance.UseFontSize(preferences_.FontSize());
    menus_->SetScheme(preferences_.ColorScheme());
  });
}

void MainWindow::Retranslate() {
  programsDock_->setWindowTitle(tr("Programs"));
  rulesDock_->setWindowTitle(tr("Business Rules"));
  resultsDock_->setWindowTitle(tr("Validation"));
  menus_->Retranslate();
  const QString product = tr("QMRules Workbench");
  if (!desk_) {
    setWindowTitle(product);
    return;
  }
  const auto& folder = desk_->Session().Host().Folder();
  setWindowTitle(
      QString::fromUtf8("%1 – %2 – %3")
          .arg(ToQt(folder.CurrentProject()), QDir::toNativeSeparators(ToQt(folder.SourceFolder())), product));
  desk_->Retranslate();
}

void MainWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::LanguageChange && menus_ != nullptr) Retranslate();
  if (event->type() == QEvent::PaletteChange && menus_ != nullptr) {
    menus_->RenewIcons();
    if (desk_) desk_->RenewPictures();
  }
}

void MainWindow::Attempt(const std::function<void()>& action) {
  try {
    action();
  } catch (const platform::Error& failure) {
    Refuse(ToQt(failure.what()));
  }
}

void MainWindow::Refuse(const QString& text) {
  dialogs_.MessageBox(FromQt(text), FromQt(tr("QMRules Workbench")), platform::MessageStyle::Exclamation);
}

void MainWindow::TellFailure(const QString& text) {
  const bool toldJustNow = text == lastTold_ && sinceTold_.isValid() && sinceTold_.elapsed() < kQuietAfterBox;
  const bool isBusy = QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr;
  auto* const control = desk_ ? desk_->Session().Control() : nullptr;
  if (control == nullptr || isBusy || toldJustNow) {
    failures_->Tell(text);
    return;
  }
  control->Failures().Tell(FromQt(text));
  lastTold_ = text;
  sinceTold_.start();
}

workbench::HostServices MainWindow::ServicesWithDialogs() {
  auto services = process_.services;
  const auto dialog = [this](OptionScope scope, platform::XmlDocument (*defaults)()) {
    return [this, scope, defaults](platform::XmlDocument& document, std::string_view path) {
      OptionsWindow window(
          {.sheets = {{.scope = scope, .document = document, .defaults = defaults()}}, .path = std::string(path)},
          this);
      return window.exec() == QDialog::Accepted;
    };
  };
  services.projectOptionsDialog = dialog(OptionScope::Project, workbench::DefaultProjectOptions);
  services.globalOptionsDialog = dialog(OptionScope::Workspace, workbench::DefaultGlobalOptions);
  return services;
}

void MainWindow::Begin(const QString& folder) {
  Attempt([&] {
    const QString first = folder.isEmpty() ? preferences_.LastWorkspace() : folder;
    if (!first.isEmpty()) OpenWorkspace(first);
  });
  if (!desk_) ShowDesk(false);
}

void MainWindow::OpenWorkspace(const QString& folder) {
  CloseWorkspace();
  const QString path = QDir(folder).absolutePath();
  Attempt([&] {
    desk_ = std::make_unique<WorkspaceDesk>(
        FromQt(path), ServicesWithDialogs(),
        WorkspaceSession::Screen{.dialogs = dialogs_, .pointer = pointer_, .progress = *progress_},
        WorkspaceDesk::Places{.window = *this,
                              .centre = *centre_,
                              .rules = *rulesDock_,
                              .programs = *programs_,
                              .results = *results_,
                              .status = *status_});
    ConnectDesk();
    StartControl();
  });
  if (!desk_) {
    ShowDesk(false);
    return;
  }
  Attempt([&] {
    preferences_.NoteWorkspace(path);
    preferences_.SetLastWorkspace(path);
  });
  ShowRecent();
  Retranslate();
  ShowDesk(true);
}

void MainWindow::ConnectDesk() {
  connect(desk_.get(), &WorkspaceDesk::Noted, this,
          [this](const QString& text) { statusBar()->showMessage(text, kNoteTime); });
  connect(desk_.get(), &WorkspaceDesk::Refused, this, &MainWindow::Refuse);
  connect(desk_.get(), &WorkspaceDesk::Failed, failures_, &FailureBar::Tell);
  connect(desk_.get(), &WorkspaceDesk::Validated, this, &MainWindow::ShowResults);
  menus_->SetSourceActions(desk_->Source().Actions());
}

void MainWindow::StartControl() {
  desk_->StartControl(shell::StringTableFor(language_), FromQt(tr("Business Rules")));
  menus_->Rules().SetWorkspace(&desk_->Session().Workspace());
  ShowControlSoon();
}

// Reading the tree takes a while, so the window is painted before it.
void MainWindow::ShowControlSoon() {
  QTimer::singleShot(0, desk_.get(), [this] {
    progress_->LetPaint();
    desk_->ShowControl(rulesDock_->isVisible());
  });
}

void MainWindow::CloseWorkspace() {
  if (!desk_) return;
  Attempt([this] { SaveLayout(); });
  Attempt([this] { desk_->EndControl(); });
  menus_->SetSourceActions({});
  menus_->Rules().SetWorkspace(nullptr);
  desk_.reset();
  statusBar()->clearMessage();
  ShowDesk(false);
  Retranslate();
}

void MainWindow::ShowDesk(bool show) {
  menus_->SetHasWorkspace(show);
  for (auto* const dock : {programsDock_, rulesDock_}) {
    dock->toggleViewAction()->setEnabled(show);
    dock->setVisible(show);
  }
  // There are no results yet.
  resultsDock_->toggleViewAction()->setEnabled(show);
  resultsDock_->hide();
  if (!show) {
    centre_->setCurrentWidget(startPage_);
    return;
  }
  Attempt([this] {
    if (const QByteArray layout = preferences_.Layout(); layout.isEmpty() || !restoreState(layout)) LayOutFirst();
  });
  // The layout may come from a run that had results.
  resultsDock_->hide();
  programs_->FocusFilter();
}

void MainWindow::LayOutFirst() {
  addDockWidget(Qt::LeftDockWidgetArea, programsDock_);
  addDockWidget(Qt::RightDockWidgetArea, rulesDock_);
  addDockWidget(Qt::BottomDockWidgetArea, resultsDock_);
  resultsDock_->setFloating(false);
  resultsDock_->setVisible(results_->HasReport());
  for (auto* const dock : {programsDock_, rulesDock_}) {
    dock->setFloating(false);
    dock->show();
  }
  resizeDocks({programsDock_, rulesDock_}, {kProgramsWidth, kRulesWidth}, Qt::Horizontal);
}

void MainWindow::ShowResults() {
  resultsDock_->show();
  resultsDock_->raise();
}

// The pane with the keyboard; the source, in the middle, takes its room from the rules and gives it back to them.
void MainWindow::EnlargePane(int by) {
  QWidget* at = QApplication::focusWidget();
  while (at != nullptr && qobject_cast<QDockWidget*>(at) == nullptr) at = at->parentWidget();
  auto* const own = qobject_cast<QDockWidget*>(at);
  QDockWidget& dock = own == nullptr ? *rulesDock_ : *own;
  const int growth = own == nullptr ? -by : by;
  const auto area = dockWidgetArea(&dock);
  const bool isBelow = area == Qt::BottomDockWidgetArea || area == Qt::TopDockWidgetArea;
  if (dock.isFloating()) {
    dock.resize(dock.width() + growth, dock.height());
  } else if (isBelow) {
    resizeDocks({&dock}, {dock.height() + growth}, Qt::Vertical);
  } else {
    resizeDocks({&dock}, {dock.width() + growth}, Qt::Horizontal);
  }
}

// Size and place of the window; what lies in it is laid out with the workspace.
void MainWindow::RestoreLayout() {
  Attempt([this] {
    if (const QByteArray geometry = preferences_.Geometry(); !geometry.isEmpty() && restoreGeometry(geometry)) return;
    const QSize room = screen()->availableSize();
    resize(kFirstSize.boundedTo(room));
  });
}

void MainWindow::SaveLayout() {
  preferences_.SetGeometry(saveGeometry());
  if (desk_) preferences_.SetLayout(saveState());
}

void MainWindow::ShowRecent() {
  Attempt([this] {
    const QStringList recent = preferences_.RecentWorkspaces();
    startPage_->SetRecent(recent);
    menus_->SetRecent(recent);
  });
}

void MainWindow::AskForFolder() {
  const QString start = desk_ ? ToQt(desk_->Session().Host().Folder().SourceFolder()) : QDir::homePath();
  const QString folder =
      QFileDialog::getExistingDirectory(this, tr("Open Workspace"), start, QFileDialog::ShowDirsOnly);
  if (!folder.isEmpty()) OpenWorkspace(folder);
}

void MainWindow::AskForNewWorkspace() {
  NewWorkspaceDialog dialog(
      [this](const workbench::EmbeddedHost::NewWorkspace& request) {
        workbench::EmbeddedHost::CreateWorkspace(request, process_.services);
      },
      this);
  if (dialog.exec() != QDialog::Accepted) return;
  OpenWorkspace(dialog.Folder());
  if (desk_ && dialog.WantsScan()) Attempt([this] { desk_->ScanSources(); });
}

void MainWindow::ShowOptions() {
  auto& host = desk_->Session().Host();
  const auto folder = FolderOptions(host.Folder().SourceEncoding());
  OptionsWindow window({.sheets = {{.scope = OptionScope::Project,
                                    .document = host.ProjectOptions().Document(),
                                    .defaults = workbench::DefaultProjectOptions()},
                                   {.scope = OptionScope::Folder, .document = folder, .defaults = FolderOptions({})},
                                   {.scope = OptionScope::Workspace,
                                    .document = host.GlobalOptions().Document(),
                                    .defaults = workbench::DefaultGlobalOptions()}},
                        .store =
                            [&host, &folder] {
                              host.SaveProjectOptions();
                              host.SaveGlobalOptions();
                              host.SetSourceEncoding(EncodingOf(folder));
                            }},
                       this);
  if (window.exec() == QDialog::Accepted) desk_->OptionsChanged();
}

void MainWindow::UseLanguage(shell::Language language) {
  if (language == language_) return;
  preferences_.SetLanguage(language);
  language_ = language;
  QLocale::setDefault(QLocale(ToQt(shell::LanguageCode(language))));
  process_.translations.Use(language);
  menus_->SetLanguage(language);
  if (desk_) StartControl();
}

void MainWindow::UseScheme(Scheme scheme) {
  process_.appearance.UseScheme(scheme);
  menus_->SetScheme(scheme);
  preferences_.SetColorScheme(scheme);
}

void MainWindow::UseFontSize(int points) {
  const int size = points == 0 ? 0 : std::clamp(points, kSmallestFont, kLargestFont);
  process_.appearance.UseFontSize(size);
  preferences_.SetFontSize(size);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (!desk_) Attempt([this] { SaveLayout(); });
  CloseWorkspace();
  event->accept();
}

}  // namespace qmrules::desktop
