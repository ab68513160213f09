#include "browser/controlwidgets.h"

#include "browser/labelnumbers.h"

namespace qmrules::browser {

using platform::widgets::Button;
using platform::widgets::ComboBox;
using platform::widgets::Frame;
using platform::widgets::Label;
using platform::widgets::ListView;
using platform::widgets::RichTextBox;
using platform::widgets::ScrollBar;
using platform::widgets::TabStrip;
using platform::widgets::TextBox;
using platform::widgets::ToolBar;
using platform::widgets::TreeView;

namespace {

enum LabelNumber {
  kControlConditionsLabel = 118,
  kTriggeredByRuleLabel = 117,
  kArgumentLabel = 104,
  kBusinessNameLabel = 112,
  kDescriptionLabel = 132,
  kTriggersLabel = 138,
  kFromRuleSetLabel = 141,
  kDataElementsLabel = 144,
  kKindLabel = 146,
  kNameLabel = 155,
  kNameFieldLabel = 156,
  kOperatorLabel = 165,
  kBusinessAreaLabel = 197,
  kSelectTriggeredLabel = 212,
};

constexpr int kLongTextRows = 3;

}  // namespace

// The order of the members is the tab order.
ControlWidgets::ControlWidgets(const shell::StringTable& texts)
    : tbToolbar(Add<ToolBar>("tbToolbar")),
      tvObjects(Add<TreeView>("tvObjects")),
      lblObjName(Add<Label>("lblObjName")),
      txtObjName(Add<TextBox>("txtObjName")),
      tsDescrs(Add<TabStrip>("tsDescrs")),
      rtbDescription(Add<RichTextBox>("rtbDescription")),
      rtbBusiness(Add<RichTextBox>("rtbBusiness")),
      lvContent(Add<ListView>("lvContent")),
      pbAttrs(Add<Frame>("pbAttrs")),
      vScroll(Add<ScrollBar>("vScroll")),
      txtFileName(Add<TextBox>("txtFileName")),
      lvTriggers(Add<ListView>("lvTriggers")),
      lblTriggers(Add<Label>("lblTriggers")),
      txtTriggers(Add<TextBox>("txtTriggers")),
      cmdSelectTrigger(Add<Button>("cmdSelectTrigger")),
      tsIOCond(Add<TabStrip>("tsIOCond")),
      lvIOElems(Add<ListView>("lvIOElems")),
      lvConditions(Add<ListView>("lvConditions")) {
  tvObjects.SetImages(&ilObjects);
  lblObjName.SetCaption(texts.Text(kNameFieldLabel));
  tsDescrs.Add("Description", texts.Text(kDescriptionLabel));
  tsDescrs.Add("Business", texts.Text(kBusinessAreaLabel));
  lvContent.AddColumn("Names", texts.Text(kRulesLabel));
  txtFileName.SetLocked(true);
  lvTriggers.AddColumn("RULE", texts.Text(kTriggeredByRuleLabel));
  lvTriggers.AddColumn("RULESET", texts.Text(kFromRuleSetLabel));
  lblTriggers.SetCaption(texts.Text(kTriggersLabel));
  txtTriggers.SetLocked(true);
  cmdSelectTrigger.SetCaption("...");
  cmdSelectTrigger.SetAccessibleName(texts.Text(kSelectTriggeredLabel));
  cmdSelectTrigger.SetToolTipText(texts.Text(kSelectTriggeredLabel));
  tsIOCond.Add("I/O", texts.Text(kDataElementsLabel));
  tsIOCond.Add("Conditions", texts.Text(kControlConditionsLabel));
  lvIOElems.AddColumn("IOName", texts.Text(kNameLabel));
  lvIOElems.AddColumn("Kind", texts.Text(kKindLabel));
  lvIOElems.AddColumn("BusinessName", texts.Text(kBusinessNameLabel));
  lvIOElems.AddColumn("Description", texts.Text(kDescriptionLabel));
  lvIOElems.SetMultiSelect(true);
  lvConditions.AddColumn("CondName", texts.Text(kNameLabel));
  lvConditions.AddColumn("Operator", texts.Text(kOperatorLabel));
  lvConditions.AddColumn("Argument", texts.Text(kArgumentLabel));
  lvConditions.AddColumn("Description", texts.Text(kDescriptionLabel));
  lvConditions.SetMultiSelect(true);
  MakeAttributeFields(0, false);
  panelResized_ = OnPanelResized.Subscribe([this](int rows) { panelRows_ = rows; });
}

void ControlWidgets::MakeAttributeFields(int index, bool visible) {
  auto& label = AddBefore<Label>(&vScroll, "lblAttrs", index);
  label.SetEnclosing(&pbAttrs);
  label.SetVisible(visible);
  const auto hide = [&](auto& field) {
    field.SetEnclosing(&pbAttrs);
    field.SetVisible(false);
  };
  hide(AddBefore<TextBox>(&vScroll, "txtAttrs", index));
  hide(AddBefore<ComboBox>(&vScroll, "cmbAttrs", index));
  hide(AddBefore<RichTextBox>(&vScroll, "rtbAttrs", index));
}

int ControlWidgets::AddAttributeFields() {
  MakeAttributeFields(++attributeCount_, true);
  return attributeCount_;
}

void ControlWidgets::RemoveAttributeFields() {
  for (; attributeCount_ > 0; --attributeCount_) {
    for (const char* name : {"lblAttrs", "txtAttrs", "cmbAttrs", "rtbAttrs"}) Remove(*Find(name, attributeCount_));
  }
}

void ControlWidgets::Empty() {
  tvObjects.Clear();
  for (ListView* list : {&lvContent, &lvTriggers, &lvIOElems, &lvConditions}) list->Clear();
  for (TextBox* field : {&txtObjName, static_cast<TextBox*>(&rtbDescription), static_cast<TextBox*>(&rtbBusiness),
                         &txtFileName, &txtTriggers}) {
    field->SetText("");
    field->SetTag("");
  }
  RemoveAttributeFields();
  mnuAuxMain.Clear();
}

int ControlWidgets::AttributeRows(int index) const {
  return rtbAttrs(index).Visible() ? kLongTextRows : 1;
}

}  // namespace qmrules::browser
