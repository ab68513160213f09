#include "desktop/window/workspacedesk.h"

#include <QDockWidget>
#include <QMessageBox>
#include <QStackedWidget>
#include <algorithm>

#include "catalogue/gateway.h"
#include "desktop/icons/iconset.h"
#include "desktop/locator/entryplaces.h"
#include "desktop/locator/locator.h"
#include "desktop/results/resultspane.h"
#include "desktop/source/sourceview.h"
#include "desktop/views/controlview.h"
#include "desktop/views/qttext.h"
#include "desktop/window/programspane.h"
#include "desktop/window/scansummary.h"
#include "desktop/window/statusline.h"
#include "desktop/window/treejump.h"
#include "platform/error.h"
#include "validation/segmentcomparison.h"

namespace qmrules::desktop {

namespace {

constexpr int kQuietBeforeRecount = 700;            // milliseconds
constexpr std::chrono::milliseconds kCountStep{8};  // of counting, between which
constexpr int kBetweenCountSteps = 12;              // milliseconds are left for the user

}  // namespace

WorkspaceDesk::WorkspaceDesk(const std::string& folder, workbench::HostServices services,
                             WorkspaceSession::Screen screen, Places places)
    : places_(places),
      session_(folder, std::move(services), screen),
      locatorSource_(session_.Host().Repository(), session_.Host().ProjectObject()->ObjectID()),
      counts_(session_.Host()) {
  source_ = new SourceView(session_.Viewer(), session_, &places_.centre);
  source_->setObjectName("sourceView");
  places_.centre.addWidget(source_);
  places_.centre.setCurrentWidget(source_);
  Observe();
  ObserveChanges();
  ShowPrograms();
}

WorkspaceDesk::~WorkspaceDesk() {
  // The views go before what they show.
  subscriptions_.clear();
  watch_.reset();
  delete locator_;
  delete control_;
  delete source_;
  places_.programs.SetPrograms({});
  places_.results.Clear();
  places_.status.ShowSource(std::nullopt);
  places_.status.ShowCounts(std::nullopt);
}

SourceView& WorkspaceDesk::Source() {
  return *source_;
}

// Nothing may be thrown through the toolkit's own code.
void WorkspaceDesk::Attempt(const std::function<void()>& action) {
  try {
    action();
  } catch (const platform::Error& failure) {
    emit Refused(ToQt(failure.what()));
  }
}

void WorkspaceDesk::Observe() {
  subscriptions_.push_back(session_.OnProgramsChanged.Subscribe([this] { ShowPrograms(); }));
  subscriptions_.push_back(session_.OnProgramOnViewChanged.Subscribe([this] {
    places_.programs.SetCurrent(session_.ProgramOnView());
    ShowStatus();
  }));
  subscriptions_.push_back(session_.Viewer().OnFileChanged([this] { ShowStatus(); }));
  subscriptions_.push_back(
      session_.Workspace().OnErrorRecorded([this](const std::string& text) { emit Failed(ToQt(text)); }));
  connect(&places_.programs, &ProgramsPane::Chosen, this,
          [this](const QString& key) { Attempt([&] { session_.ShowProgram(FromQt(key)); }); });
  connect(source_, &SourceView::Failed, this, &WorkspaceDesk::Failed);
  connect(&places_.results, &ResultsPane::RuleChosen, this,
          [this](qint32 ruleID) { Attempt([&] { ChooseRule(ruleID); }); });
}

void WorkspaceDesk::ObserveChanges() {
  auto& repository = session_.Host().Repository();
  const auto countAgain = [this](const std::string& /*key*/) { recount_.start(); };
  // Each change of a rule leaves a record, which is an object of its own.
  subscriptions_.push_back(repository.OnObjectAdded(countAgain));
  subscriptions_.push_back(repository.OnObjectDeleted(countAgain));
  watch_ = std::make_unique<StoreWatch>(
      repository, StoreWatch::Observers{.changed = [this](const auto& changes) { ForeignChanges(changes); },
                                        .failed = [this](const QString& text) { emit Failed(text); }});
  recount_.setSingleShot(true);
  recount_.setInterval(kQuietBeforeRecount);
  connect(&recount_, &QTimer::timeout, this, [this] { Attempt([this] { Recount(); }); });
  countStep_.setInterval(kBetweenCountSteps);
  connect(&countStep_, &QTimer::timeout, this, [this] { Attempt([this] { CountOn(); }); });
}

void WorkspaceDesk::ShowPrograms() {
  places_.programs.SetPrograms(session_.Programs());
  places_.programs.SetCurrent(session_.ProgramOnView());
  Recount();
  ShowStatus();
}

void WorkspaceDesk::Recount() {
  counts_.Begin();
  isCounting_ = true;
  CountOn();
}

void WorkspaceDesk::CountOn() {
  isCounting_ = false;
  countStep_.stop();
  isCounting_ = counts_.Continue(kCountStep);
  if (isCounting_) {
    countStep_.start();
  } else {
    places_.programs.Model().SetRuleCounts(
        [this](const catalogue::RegisteredSource& program) { return counts_.Of(program.language, program.name); });
  }
  places_.status.ShowCounts(StatusLine::Counts{
      .programs = static_cast<qint64>(session_.Programs().size()), .rules = counts_.All(), .areWhole = !isCounting_});
}

void WorkspaceDesk::ShowStatus() {
  const auto file = session_.Viewer().CurFile();
  const auto* const program = session_.FindProgram(session_.ProgramOnView());
  if (!file) {
    places_.status.ShowSource(std::nullopt);
  } else {
    places_.status.ShowSource(StatusLine::Source{.program = program == nullptr ? QString() : ToQt(program->name),
                                                 .file = ToQt(file->FileName)});
  }
  places_.status.ShowCounts(StatusLine::Counts{
      .programs = static_cast<qint64>(session_.Programs().size()), .rules = counts_.All(), .areWhole = !isCounting_});
}

void WorkspaceDesk::ForeignChanges(const platform::ForeignChanges& changes) {
  const auto isOfRules = [](const std::string& key) {
    const auto& entity = platform::SplitKey(key).entity;
    return entity == catalogue::kBusinessFunction || entity == catalogue::kRuleSet ||
           entity == catalogue::kRuleSetCall || entity == catalogue::kRule || entity == catalogue::kRuleIO ||
           entity == catalogue::kRuleCond || entity == catalogue::kRuleLog;
  };
  if (changes.areTooMany || !std::ranges::all_of(changes.objects, isOfRules)) session_.ReloadPrograms();
  if (session_.Control() != nullptr) session_.Control()->MendFromStore(changes);
  recount_.start();
}

void WorkspaceDesk::StartControl(const shell::StringTable& texts, const std::string& externalName) {
  EndControl();
  session_.StartControl(texts, externalName);
  auto& control = *session_.Control();
  control_ = new ControlView(control.Widgets(), control.PaneSplitter(), &places_.rules);
  control_->setObjectName("controlView");
  RenewPictures();
  places_.rules.setWidget(control_);
  entered_ = control_->OnEntered.Subscribe([&control] { control.EnterFocus(); });
  validated_ = control.OnValidated.Subscribe([this](const auto& report) { ShowResults(report); });
  enabledChanges_ = control.OnEnabledChanged.Subscribe([this, &control] { control_->setEnabled(control.Enabled()); });
}

void WorkspaceDesk::RenewPictures() {
  auto* const control = session_.Control();
  if (control == nullptr) return;
  const IconSet icons(places_.window.palette());
  icons.Fill(control->Widgets().ilIcons);
  icons.Fill(control->Widgets().ilObjects);
}

void WorkspaceDesk::EndControl() {
  struct ViewGoes {
    ~ViewGoes() {
      desk.entered_ = {};
      desk.enabledChanges_ = {};
      desk.validated_ = {};
      delete desk.control_;
      desk.session_.DropControl();
    }
    WorkspaceDesk& desk;
  } const viewGoes{*this};
  session_.EndControl();
}

void WorkspaceDesk::ShowControl(bool show) {
  auto* const control = session_.Control();
  if (control == nullptr || control->IsShown() == show) return;
  if (show) {
    control->Show();
  } else {
    control->Hide();
  }
}

void WorkspaceDesk::FocusControl() {
  places_.rules.show();
  places_.rules.raise();
  if (control_ != nullptr) control_->TakeFocus();
}

void WorkspaceDesk::GoToNextPaneLine() {
  places_.rules.show();
  places_.rules.raise();
  if (control_ != nullptr) control_->GoToNextLine();
}

void WorkspaceDesk::FocusSource() {
  source_->setFocus(Qt::ShortcutFocusReason);
}

void WorkspaceDesk::OpenLocator() {
  if (locator_ == nullptr) {
    locator_ = new Locator(
        locatorSource_, [this](const LocatorEntry& entry) { Attempt([&] { Choose(entry); }); }, &places_.window);
  }
  locator_->Open();
}

void WorkspaceDesk::Choose(const LocatorEntry& entry) {
  if (session_.FindProgram(entry.key) != nullptr) {
    session_.ShowProgram(entry.key);
    return;
  }
  FocusControl();
  auto* const control = session_.Control();
  if (control == nullptr || !JumpTo(entry, control->Widgets())) {
    emit Noted(tr("%1 is not in the tree now.").arg(ToQt(entry.name)));
  }
}

void WorkspaceDesk::ChooseRule(std::int32_t ruleID) {
  LocatorEntry entry{.entity = std::string(catalogue::kRule),
                     .name = catalogue::MakeKey(catalogue::kRule, ruleID),
                     .place = {},
                     .key = catalogue::MakeKey(catalogue::kRule, ruleID)};
  PutPlaces(session_.Host().Repository(), session_.Host().ProjectObject()->ObjectID(), {&entry});
  Choose(entry);
}

void WorkspaceDesk::ShowResults(std::shared_ptr<const validation::ValidationReport> report) {
  places_.results.SetReport(std::move(report), [this](const std::string& fileName) {
    auto& host = session_.Host();
    return validation::ReadSourceText(host.FileSystem(), host.Folder().SourceFolder(), fileName);
  });
  emit Validated();
}

void WorkspaceDesk::ScanSources() {
  const ScanSummary summary = SummaryOf(session_.Scan());
  source_->Reload();
  emit Noted(summary.text);
  if (summary.problems.isEmpty()) return;
  QMessageBox box(QMessageBox::Warning, tr("Scan Sources"), summary.text, QMessageBox::Ok, &places_.window);
  box.setDetailedText(summary.problems);
  box.exec();
}

void WorkspaceDesk::OptionsChanged() {
  source_->Reload();
}

}  // namespace qmrules::desktop
