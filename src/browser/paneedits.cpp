#include "browser/paneedits.h"

#include <exception>
#include <functional>
#include <utility>

#include "browser/fieldtext.h"
#include "catalogue/activitylog.h"
#include "catalogue/attributeschema.h"
#include "catalogue/gateway.h"
#include "catalogue/ignorederrors.h"
#include "catalogue/nodekeys.h"
#include "catalogue/rulesetcalls.h"
#include "platform/error.h"
#include "platform/widgets/userinput.h"
#include "shell/text.h"
#include "shell/trim.h"

namespace qmrules::browser {

using catalogue::kBusinessFunction;
using catalogue::kRule;
using catalogue::WithErrorsIgnored;
using platform::BusyCursor;
using platform::Error;
using platform::widgets::FocusLoss;
using platform::widgets::Key;
using platform::widgets::KeyPress;
using platform::widgets::TextBox;
using platform::widgets::Widget;
using FieldKind = AttributePanel::FieldKind;

namespace {

constexpr int kNotAdmissible = 533;
constexpr int kNameIsEmpty = 643;

bool IsChanged(const TextBox& field) {
  return field.Text() != field.Tag();
}

}  // namespace

PaneEdits::PaneEdits(const BrowserServices& services, ObjectTree& tree, const AttributeSource& source,
                     AttributePanel& attributes, const CurrentObject& current)
    : services_(services), objects_(tree), source_(source), attributes_(attributes), current_(current) {
  ControlWidgets& widgets = services_.widgets;
  for (const Field& field : Fields()) {
    hooks_.push_back(field.widget->OnLostFocus.Subscribe([save = field.save](FocusLoss& loss) { save(loss.cancel); }));
  }
  hooks_.push_back(widgets.txtObjName.OnKeyDown.Subscribe([this](KeyPress& press) {
    if (press.key != Key::Enter) return;
    press.handled = true;
    bool cancel = false;
    SaveName(cancel);
  }));
}

std::vector<PaneEdits::Field> PaneEdits::Fields() {
  ControlWidgets& widgets = services_.widgets;
  std::vector<Field> fields = {
      {&widgets.rtbDescription, [this](bool& cancel) { SaveDescription(cancel); }},
      {&widgets.rtbBusiness, [this](bool& cancel) { SaveBusiness(cancel); }},
      {&widgets.txtObjName, [this](bool& cancel) { SaveName(cancel); }},
  };
  for (int index = 1; index <= attributes_.Count(); ++index) {
    fields.push_back({&attributes_.Widget(index), [this, index](bool& cancel) { SaveAttribute(index, cancel); }});
  }
  return fields;
}

bool PaneEdits::IsRule() const {
  return !current_.key.empty() && catalogue::SplitKey(current_.key).entity == kRule;
}

void PaneEdits::Refuse(Widget& field, int message, bool& cancel) const {
  {
    const platform::NormalCursor normal(services_.pointer);
    services_.dialogs.MessageBox(services_.texts.Text(message), services_.globals.externalName,
                                 platform::MessageStyle::Exclamation);
  }
  field.SetFocus();
  cancel = true;
}

void PaneEdits::Put(std::string_view attribute, const std::string& value) const {
  const auto object = services_.Repository().object(current_.key);
  object->Edit();
  object->Attrs(attribute, value);
  object->Post();
}

void PaneEdits::Log(std::string_view attribute, const std::string& value) const {
  const std::string& caption = source_.rule.FindAttr(attribute)->Caption();
  catalogue::AddActivity(services_.FE, services_.clock, catalogue::SplitKey(current_.key).id,
                         catalogue::ChangedActivity(services_.texts, caption, value));
}

bool PaneEdits::IsNameChanged() const {
  return current_.node.Get() != nullptr && IsChanged(services_.widgets.txtObjName);
}

void PaneEdits::SaveName(bool& cancel) {
  if (!IsNameChanged()) return;
  TextBox& field = services_.widgets.txtObjName;
  if (shell::IsBlank(field.Text())) {
    Refuse(field, kNameIsEmpty, cancel);
    return;
  }
  WriteName();
}

void PaneEdits::WriteName() {
  const BusyCursor busy(services_.pointer);
  const std::string name = shell::SafeText(services_.widgets.txtObjName.Text());
  ShowText(services_.widgets.txtObjName, name);
  const auto command = services_.Repository().BeginCommand("Rename");
  if (!PutName(name)) return;
  RenameNodes(name);
  if (IsRule()) Log("RuleName", name);
}

// The name of a function or rule set and the names of its calls are written together. False when the name could not be.
bool PaneEdits::PutName(const std::string& name) const {
  if (IsRule()) return WithErrorsIgnored([&] { Put("RuleName", name); });
  const auto transaction = services_.Repository().BeginTransaction();
  if (!WithErrorsIgnored([&] { Put("Name", name); })) return false;
  catalogue::RenameCalls(services_.Repository(), catalogue::SplitKey(current_.key));
  transaction->Commit();
  return true;
}

void PaneEdits::RenameNodes(const std::string& name) const {
  const auto object = catalogue::SplitKey(current_.key);
  if (object.entity == kBusinessFunction) {
    auto* const node = services_.widgets.tvObjects.Find(catalogue::FunctionNodeKey(object.id));
    if (node != nullptr) node->SetText(name);
    return;
  }
  for (auto* const node : objects_.Index().Occurrences(object.entity, object.id)) node->SetText(name);
}

void PaneEdits::SaveDescription(bool& /*cancel*/) {
  TextBox& field = services_.widgets.rtbDescription;
  if (!current_.key.empty() && IsChanged(field)) WriteLongText(field, "Description");
}

void PaneEdits::SaveBusiness(bool& /*cancel*/) {
  TextBox& field = services_.widgets.rtbBusiness;
  const std::string_view attribute = BusinessAttribute();
  if (!attribute.empty() && IsChanged(field)) WriteLongText(field, attribute);
}

// "" for an object that has no such text.
std::string_view PaneEdits::BusinessAttribute() const {
  if (IsRule()) return "BusinessDescription";
  const bool isFunction = !current_.key.empty() && catalogue::SplitKey(current_.key).entity == kBusinessFunction;
  return isFunction ? "BusinessArea" : std::string_view();
}

void PaneEdits::WriteLongText(TextBox& field, std::string_view attribute) {
  const BusyCursor busy(services_.pointer);
  const std::string value = shell::SafeText(field.Text());
  ShowText(field, value);
  const auto command = services_.Repository().BeginCommand("ChangeAttribute");
  if (WithErrorsIgnored([&] { Put(attribute, value); }) && IsRule()) Log(attribute, value);
}

bool PaneEdits::IsAttributeChanged(int index) const {
  return IsRule() && attributes_.IsEditable(index) && attributes_.IsChanged(index);
}

// What stands in a choice is admissible.
bool PaneEdits::IsAdmissible(int index) const {
  return attributes_.Kind(index) == FieldKind::Choice ||
         catalogue::IsAttributeValueValid(source_.document, attributes_.Definition(index).Name(),
                                          attributes_.Text(index));
}

void PaneEdits::SaveText(int index, bool& cancel) {
  SaveAttribute(index, cancel);
}

void PaneEdits::SaveCombo(int index, bool& cancel) {
  SaveAttribute(index, cancel);
}

void PaneEdits::SaveLongText(int index, bool& cancel) {
  SaveAttribute(index, cancel);
}

void PaneEdits::SaveAttribute(int index, bool& cancel) {
  if (!IsAttributeChanged(index)) return;
  if (IsAdmissible(index)) {
    WriteAttribute(index);
  } else {
    Refuse(attributes_.Widget(index), kNotAdmissible, cancel);
  }
}

void PaneEdits::WriteAttribute(int index) {
  const BusyCursor busy(services_.pointer);
  const std::string& name = attributes_.Definition(index).Name();
  const std::string value = shell::SafeText(attributes_.Text(index));
  attributes_.Show(index, value);
  const auto command = services_.Repository().BeginCommand("ChangeAttribute");
  Put(name, value);
  Log(name, value);
}

bool PaneEdits::CommitActiveField() {
  const Widget* const active = services_.widgets.ActiveWidget();
  bool cancel = false;
  for (const Field& field : Fields()) {
    if (field.widget == active) field.save(cancel);
  }
  return !cancel;
}

void PaneEdits::CommitAll() {
  std::exception_ptr first;
  for (const Field& field : Fields()) {
    try {
      bool cancel = false;
      field.save(cancel);
    } catch (const Error&) {
      if (!first) first = std::current_exception();
    }
  }
  if (first) std::rethrow_exception(first);
}

bool PaneEdits::IsEdited() const {
  const ControlWidgets& widgets = services_.widgets;
  if (IsNameChanged()) return true;
  if (!current_.key.empty() && IsChanged(widgets.rtbDescription)) return true;
  if (!BusinessAttribute().empty() && IsChanged(widgets.rtbBusiness)) return true;
  for (int index = 1; index <= attributes_.Count(); ++index) {
    if (IsAttributeChanged(index)) return true;
  }
  return false;
}

void PaneEdits::CommitPending() {
  const auto attempt = [this](const std::function<void()>& write) {
    try {
      write();
    } catch (const Error& failure) {
      services_.host.RecordFailure(failure.what());
    }
  };
  bool cancel = false;
  attempt([&] { SaveDescription(cancel); });
  attempt([&] { SaveBusiness(cancel); });
  if (IsNameChanged() && !shell::IsBlank(services_.widgets.txtObjName.Text())) attempt([&] { WriteName(); });
  for (int index = 1; index <= attributes_.Count(); ++index) {
    if (IsAttributeChanged(index) && IsAdmissible(index)) attempt([&] { WriteAttribute(index); });
  }
}

}  // namespace qmrules::browser
