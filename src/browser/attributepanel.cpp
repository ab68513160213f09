#include "browser/attributepanel.h"

#include <algorithm>
#include <utility>

#include "browser/fieldtext.h"
#include "shell/text.h"

namespace qmrules::browser {

using platform::AttrDef;
using platform::AttrType;
using platform::XmlElement;
using platform::widgets::ComboBox;

namespace {

constexpr std::string_view kPanesOwnAttributes = "Description,BusinessDescription,Model,FileName,FromRow,ToRow";

bool HasFieldOfItsOwn(std::string_view attribute) {
  return attribute == "RuleName" || attribute == "Description" || attribute == "BusinessDescription";
}

const char* TruthText(bool value) {
  return value ? "true" : "false";
}

void ShowChoice(ComboBox& field, const std::string& text) {
  field.SetListIndex(field.IndexOfText(text));
  field.SetTag(text);
  field.SetToolTipText(ToolTipOf(text));
}

}  // namespace

AttributePanel::AttributePanel(ControlWidgets& widgets, const AttributeSource& source)
    : widgets_(widgets), source_(source), fetchList_(kPanesOwnAttributes) {
  widgets_.RemoveAttributeFields();
  try {
    for (const AttrDef* const attribute : source_.rule.Attrs()) {
      if (source_.lists.shown.Contains(attribute->Name()) && !HasFieldOfItsOwn(attribute->Name())) {
        AddAttribute(*attribute);
      }
    }
  } catch (...) {
    widgets_.RemoveAttributeFields();
    throw;
  }
  widgets_.vScroll.SetSmallChange(1);
  resized_ = widgets_.OnPanelResized.Subscribe([this](int) { LayOut(); });
  LayOut();
}

void AttributePanel::AddAttribute(const AttrDef& definition) {
  const int index = widgets_.AddAttributeFields();
  const std::string& name = definition.Name();
  std::string label = definition.Caption() + ":";
  labelWidth_ = std::max(labelWidth_, shell::CharacterCount(label));
  widgets_.lblAttrs(index).SetCaption(std::move(label));
  attributeIndex_.Add(index, name);
  fields_.push_back({&definition, MakeField(index, definition)});
  Widget(index).SetAccessibleName(definition.Caption());
  fetchList_ += "," + name;
}

AttributePanel::FieldKind AttributePanel::MakeField(int index, const AttrDef& definition) {
  const bool editable = source_.lists.editable.Contains(definition.Name());
  if (definition.Type() == AttrType::LongText) {
    longTextAttributes_.Add(definition.Name(), definition.Name());
    return MakeLongText(index, editable);
  }
  if (!editable) return MakeLocked(index);
  if (definition.Type() == AttrType::Boolean) return MakeChoice(index, {TruthText(false), TruthText(true)});
  const XmlElement element = catalogue::AttributeElement(source_.definitions, definition.Name());
  const auto values = catalogue::AdmissibleValues(element);
  return values.empty() ? MakeText(index, element) : MakeChoice(index, values);
}

AttributePanel::FieldKind AttributePanel::MakeLongText(int index, bool editable) {
  auto& field = widgets_.rtbAttrs(index);
  field.SetLocked(!editable);
  field.SetVisible(true);
  return FieldKind::LongText;
}

AttributePanel::FieldKind AttributePanel::MakeLocked(int index) {
  auto& field = widgets_.txtAttrs(index);
  field.SetLocked(true);
  field.SetTabStop(false);
  field.SetVisible(true);
  return FieldKind::Text;
}

AttributePanel::FieldKind AttributePanel::MakeChoice(int index, const std::vector<std::string>& values) {
  auto& field = widgets_.cmbAttrs(index);
  for (const std::string& value : values) field.Add({.text = value, .itemData = 0, .key = "k" + value, .tag = ""});
  field.SetVisible(true);
  return FieldKind::Choice;
}

AttributePanel::FieldKind AttributePanel::MakeText(int index, const XmlElement& definition) {
  auto& field = widgets_.txtAttrs(index);
  if (definition) field.SetMaxLength(catalogue::LongestValue(definition).value_or(0));
  field.SetVisible(true);
  return FieldKind::Text;
}

bool AttributePanel::IsEditable(int index) const {
  return source_.lists.editable.Contains(Definition(index).Name());
}

std::string AttributePanel::ShownText(int index, const platform::FetchField& value) const {
  if (Definition(index).Type() == AttrType::Boolean) return TruthText(value.Value().Boolean());
  return value.Text();
}

void AttributePanel::Show(int index, const std::string& text) {
  switch (Kind(index)) {
    case FieldKind::Text:
      ShowText(widgets_.txtAttrs(index), text);
      return;
    case FieldKind::LongText:
      widgets_.rtbAttrs(index).SetLocked(!IsEditable(index));
      ShowText(widgets_.rtbAttrs(index), text);
      return;
    case FieldKind::Choice:
      ShowChoice(widgets_.cmbAttrs(index), text);
      return;
  }
}

void AttributePanel::Show(std::string_view attribute, const std::string& text) {
  if (const int* const index = attributeIndex_.Find(attribute)) Show(*index, text);
}

const std::string& AttributePanel::Text(int index) const {
  if (Kind(index) == FieldKind::Choice) return widgets_.cmbAttrs(index).Text();
  return Kind(index) == FieldKind::LongText ? widgets_.rtbAttrs(index).Text() : widgets_.txtAttrs(index).Text();
}

// A choice without a chosen item stands for a value that is no item: it is left as it is.
bool AttributePanel::IsChanged(int index) const {
  if (Kind(index) == FieldKind::Choice && widgets_.cmbAttrs(index).SelectedItem() == nullptr) return false;
  return Text(index) != Widget(index).Tag();
}

platform::widgets::Widget& AttributePanel::Widget(int index) const {
  if (Kind(index) == FieldKind::Choice) return widgets_.cmbAttrs(index);
  if (Kind(index) == FieldKind::LongText) return widgets_.rtbAttrs(index);
  return widgets_.txtAttrs(index);
}

void AttributePanel::SetVisible(bool visible) {
  visible_ = visible;
  widgets_.pbAttrs.SetVisible(visible);
  widgets_.txtFileName.SetVisible(visible);
  LayOut();
}

void AttributePanel::LayOut() {
  int rows = 0;
  for (int index = 1; index <= Count(); ++index) rows += widgets_.AttributeRows(index);
  const int room = widgets_.PanelRows();
  const int hidden = room == 0 ? 0 : std::max(0, rows - room);
  widgets_.vScroll.SetLargeChange(std::max(1, room));
  widgets_.vScroll.SetRange(0, hidden);
  widgets_.vScroll.SetVisible(visible_ && hidden > 0);
}

}  // namespace qmrules::browser
