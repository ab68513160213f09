#include "shell/qmrules.h"

#include <exception>
#include <stdexcept>
#include <utility>

#include "attributes/attributedefaults.h"
#include "browser/commandtable.h"
#include "browser/commandwidgets.h"
#include "platform/error.h"
#include "shell/boundcontrol.h"
#include "shell/controlsettings.h"
#include "shell/splitterlayout.h"

namespace qmrules::shell {

namespace {

void RegisterCommands(platform::Workspace& workspace, const platform::TesselGlobals& globals,
                      const StringTable& texts) {
  workspace.AddMethod(globals.internalName, "", globals.externalName);
  for (const browser::CommandEntry& entry : browser::CommandTable()) {
    workspace.AddMethod(globals.internalName, entry.key, browser::MenuPath(entry, globals.externalName, texts));
  }
}

}  // namespace

QMRules::QMRules(ControlServices services)
    : services_(std::move(services)),
      failures_(services_.dialogs, services_.pointer, services_.globals),
      splitter_("splPanes"),
      widgets_(services_.texts) {
  RequirePanes(splitter_);
  browser::FillCommandWidgets(widgets_, services_.texts);
}

QMRules::~QMRules() = default;

void QMRules::Init(platform::Workspace& aQMWS, std::string_view aIntName, std::string_view aExtName) {
  if (bound_) throw std::logic_error("QMRules has a workspace already; DeInit gives it back.");
  auto& globals = services_.globals;
  globals.internalName = aIntName;
  globals.externalName = aExtName;

  platform::FrontEnd& frontEnd = aQMWS.FE();
  LoadNodeImages(frontEnd, services_.fileSystem, widgets_.ilObjects);
  RegisterCommands(aQMWS, globals, services_.texts);
  RuleSchema schema = ReadRuleSchema(services_.registry, frontEnd, services_.fileSystem);
  if (services_.repairIsDue()) {
    attributes::ApplyAttributeDefaults(frontEnd.Repository().Database(), schema.document);
    services_.repairIsDone();
  }
  ReadUnassignedTexts(frontEnd.ProjectOptions(), globals);
  LayOutPanes(splitter_, services_.settings);
  bound_ = std::make_unique<BoundControl>(aQMWS, services_, failures_, widgets_, OnValidated, std::move(schema));
}

void QMRules::Show() {
  if (bound_) bound_->Show();
}

void QMRules::Hide() {
  if (bound_) bound_->Hide();
}

void QMRules::EnterFocus() {
  if (bound_) bound_->EnterFocus();
}

void QMRules::MendFromStore(const platform::ForeignChanges& changes) {
  if (bound_) bound_->MendFromStore(changes);
}

void QMRules::DeInit() {
  if (!bound_) return;
  std::exception_ptr failure;
  const auto attempt = [&failure](auto step) {
    try {
      step();
    } catch (const platform::Error&) {
      if (!failure) failure = std::current_exception();
    }
  };
  attempt([this] { bound_->CommitEdits(); });
  bound_.reset();
  attempt([this] { SaveSplitterLayout(splitter_, services_.settings); });
  services_.tracing.UnloadProgram("");
  if (failure) std::rethrow_exception(failure);
}

void QMRules::Enabled(bool New_Enabled) {
  if (enabled_ == New_Enabled) return;
  enabled_ = New_Enabled;
  OnEnabledChanged.Raise();
}

void QMRules::ErrorRecord(std::string_view /*Msg*/) {}

bool QMRules::IsShown() const {
  return bound_ && bound_->IsShown();
}

const BoundControl& QMRules::Bound() const {
  if (!bound_) throw std::logic_error("QMRules has no workspace; Init gives it one.");
  return *bound_;
}

const platform::XmlDocument& QMRules::SchemaDocument() const {
  return Bound().Schema().document;
}

const std::string& QMRules::SchemaPath() const {
  return Bound().Schema().path;
}

const platform::XmlElement& QMRules::SchemaElement() const {
  return Bound().Schema().attributes;
}

const platform::KeyedCollection<std::string>& QMRules::ShownAttributes() const {
  return Bound().Schema().lists.shown;
}

const platform::KeyedCollection<std::string>& QMRules::EditableAttributes() const {
  return Bound().Schema().lists.editable;
}

const std::string& QMRules::HelpFile() const {
  return Bound().HelpFile();
}

const platform::Font& QMRules::Font() const {
  return Bound().Font();
}

}  // namespace qmrules::shell
