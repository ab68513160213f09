#include "shell/boundcontrol.h"

#include <algorithm>
#include <utility>

#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"
#include "platform/error.h"
#include "shell/glossaryaccess.h"
#include "shell/validitysweep.h"

namespace qmrules::shell {

using platform::BusyCursor;

namespace {

class RaisedFlag {
 public:
  explicit RaisedFlag(bool& flag) : flag_(flag) { flag_ = true; }
  RaisedFlag(const RaisedFlag&) = delete;
  RaisedFlag& operator=(const RaisedFlag&) = delete;
  ~RaisedFlag() { flag_ = false; }

 private:
  bool& flag_;
};

}  // namespace

BoundControl::BoundControl(platform::Workspace& workspace, const ControlServices& services,
                           const FailureReport& failures, browser::ControlWidgets& widgets,
                           validation::ValidatedEvent& onValidated, RuleSchema schema)
    : services_(services),
      failures_(failures),
      schema_(std::move(schema)),
      helpFile_(workspace.FE().HelpFile()),
      font_(workspace.Font()),
      browser_{.QMWS = workspace,
               .FE = workspace.FE(),
               .progress = workspace.Progress(),
               .dialogs = services.dialogs,
               .pointer = services.pointer,
               .clock = services.clock,
               .texts = services.texts,
               .globals = services.globals,
               .commands = *this,
               .host = *this,
               .widgets = widgets},
      faces_(browser_),
      availability_(browser_),
      objects_(browser_, selectedKeys_),
      panes_(browser_, objects_,
             {.rule = browser_.Repository().Schema().Entity(catalogue::kRule),
              .document = schema_.document,
              .definitions = schema_.attributes,
              .lists = schema_.lists}),
      selection_(browser_, objects_, selectedKeys_),
      selectedOnly_(browser_, objects_, selectedKeys_),
      moveInSequence_(browser_, objects_),
      activityLog_(services.dialogs, services.texts, services.globals),
      emphasis_(browser_),
      validation_(browser_, selection_, emphasis_, services.fileSystem, onValidated),
      popup_(services.dialogs, widgets.mnuPopup, *this, failures),
      handlers_(browser_, {.selection = selection_,
                           .selectedOnly = selectedOnly_,
                           .moveInSequence = moveInSequence_,
                           .activityLog = activityLog_,
                           .emphasis = emphasis_,
                           .validation = validation_,
                           .popup = popup_}),
      roads_(workspace, services.globals, widgets, *this, failures, [this] { return panes_.CommitActiveField(); }),
      treeInput_(browser_, objects_),
      treeJumps_(browser_, objects_, selectedOnly_),
      repositoryNotifications_(browser_, objects_, selectedOnly_),
      treeMend_(browser_, objects_, selectedOnly_),
      workspaceNotifications_(browser_, emphasis_) {}

BoundControl::~BoundControl() {
  panes_.ShowPanesFor(nullptr);
  browser_.widgets.Empty();
}

void BoundControl::Show() {
  visible_ = true;
  browser_.QMWS.PropertyLet(services_.globals.internalName, "", "show");
  popup_.ClearPending();
  services_.globals.eventsSilenced = false;
  if (loading_ || failures_.Attempt([this] { Fill(); })) failures_.Attempt([this] { Sweep(); });
  failures_.Attempt([this] { OfferGlossary(); });
}

// The two handlers may lead back here, so the flag is up before they run.
void BoundControl::Fill() {
  const BusyCursor busy(browser_.pointer);
  const RaisedFlag loading(loading_);
  workspaceNotifications_.QMWS_ObjectIDChanged();
  workspaceNotifications_.QMWS_SelectedChanged();
  selectedOnly_.ClearMark();
  objects_.LoadTree();
}

void BoundControl::Sweep() {
  const BusyCursor busy(browser_.pointer);
  RunValiditySweep(browser_.Repository(), services_.fileSystem,
                   browser_.FE.GetFerrowoodName(platform::FerrowoodName::SourceFolder), browser_.progress);
}

// The commands go by the component: without the database they tell the user that there is no business name.
void BoundControl::OfferGlossary() {
  platform::TesselGlobals& globals = services_.globals;
  globals.glossary.reset();
  globals.glossaryAvailable = HasGlossary(browser_.FE);
  browser_.widgets.mnuAuxMain.Item("mnuSyncBusinessNames").SetVisible(globals.glossaryAvailable);
  faces_.SetVisible("BusinessNames", globals.glossaryAvailable);
  if (globals.glossaryAvailable) globals.glossary = OpenGlossary(browser_.FE, services_.databases);
}

// What fails here is recorded only: it comes again with the next look at the store, and a box each time would keep the
// user from working.
void BoundControl::MendFromStore(const platform::ForeignChanges& changes) {
  if (!visible_ || loading_) return;
  try {
    bool showsAgain = changes.areTooMany;
    if (changes.areTooMany) {
      treeMend_.MendAll();
    } else {
      showsAgain = treeMend_.Mend(changes.objects).contains(panes_.CurrentKey()) || ShowsAnyOf(changes.objects);
    }
    platform::widgets::TreeNode* const current = panes_.CurrentNode();
    platform::widgets::TreeNode* const node = current == nullptr ? browser_.widgets.tvObjects.SelectedNode() : current;
    if ((showsAgain || current == nullptr) && !panes_.IsEdited()) panes_.ShowNode(node);
  } catch (const platform::Error& failure) {
    RecordFailure(failure.what());
  }
}

// True when the panes show the object itself, or a row or a field that tells of it.
bool BoundControl::ShowsAnyOf(const std::vector<std::string>& objectKeys) const {
  const browser::ControlWidgets& widgets = browser_.widgets;
  return std::any_of(objectKeys.begin(), objectKeys.end(), [&](const std::string& key) {
    if (key == panes_.CurrentKey()) return true;
    const auto object = catalogue::SplitKey(key);
    const std::string element = catalogue::ElementRowKey(object.id);
    if (object.entity == catalogue::kRuleIO) return widgets.lvIOElems.Find(element) != nullptr;
    if (object.entity == catalogue::kRuleCond) return widgets.lvConditions.Find(element) != nullptr;
    if (object.entity == catalogue::kRuleSet) return widgets.txtTriggers.Tag() == std::to_string(object.id);
    return object.entity == catalogue::kRule && widgets.lvTriggers.Find(catalogue::RuleRowKey(object.id)) != nullptr;
  });
}

void BoundControl::Hide() {
  browser_.QMWS.PropertyLet(services_.globals.internalName, "", "hide");
  visible_ = false;
}

void BoundControl::EnterFocus() {
  browser_.QMWS.PropertyLet("Container", "CurrFocus", services_.globals.internalName);
}

void BoundControl::UpdateCommands(platform::widgets::TreeNode* node) {
  panes_.ShowPanesFor(node);
  availability_.Update(node);
}

void BoundControl::SetHostItem(std::string_view command, std::string_view state) {
  browser_.QMWS.PropertyLet(services_.globals.internalName, command, state);
}

}  // namespace qmrules::shell
