#pragma once

#include "platform/widgets/button.h"
#include "platform/widgets/combobox.h"
#include "platform/widgets/container.h"
#include "platform/widgets/frame.h"
#include "platform/widgets/imagelist.h"
#include "platform/widgets/label.h"
#include "platform/widgets/listview.h"
#include "platform/widgets/menu.h"
#include "platform/widgets/richtextbox.h"
#include "platform/widgets/scrollbar.h"
#include "platform/widgets/tabstrip.h"
#include "platform/widgets/textbox.h"
#include "platform/widgets/toolbar.h"
#include "platform/widgets/treeview.h"
#include "shell/messages.h"

namespace qmrules::browser {

// All widgets of the control, in tab order, with their fixed columns, tabs and labels. They stand in the panes of the
// splitter so:
//
//   above all     tbToolbar
//   Objects       tvObjects
//   Descriptions  lblObjName txtObjName, tsDescrs, and in one place rtbDescription and rtbBusiness
//   FirstArea     lvContent, or pbAttrs with its fields, vScroll beside it, and txtFileName below
//   SecondArea    lvTriggers, or lblTriggers txtTriggers cmdSelectTrigger, tsIOCond, and in one place lvIOElems and
//                 lvConditions
//
// The fields of the attribute panel are control arrays in pbAttrs: lblAttrs(i), txtAttrs(i), cmbAttrs(i) and
// rtbAttrs(i) belong to the i-th attribute, from 1, of which one field is visible. Index 0 is the hidden template.
// The tool bar and mnuPopup are filled by FillCommandWidgets (browser/commandwidgets.h).
class ControlWidgets final : public platform::widgets::Container {
 public:
  // `texts` outlives this.
  explicit ControlWidgets(const shell::StringTable& texts);

  platform::widgets::ToolBar& tbToolbar;
  platform::widgets::TreeView& tvObjects;

  platform::widgets::Label& lblObjName;
  platform::widgets::TextBox& txtObjName;
  platform::widgets::TabStrip& tsDescrs;  // keys "Description", "Business"
  platform::widgets::RichTextBox& rtbDescription;
  platform::widgets::RichTextBox& rtbBusiness;

  platform::widgets::ListView& lvContent;  // column "Names"
  platform::widgets::Frame& pbAttrs;
  platform::widgets::ScrollBar& vScroll;
  platform::widgets::TextBox& txtFileName;  // locked: the file of the rule's segment, or what is wrong with it

  platform::widgets::ListView& lvTriggers;  // columns "RULE", "RULESET"
  platform::widgets::Label& lblTriggers;
  platform::widgets::TextBox& txtTriggers;  // locked; the tag holds the ID of the rule set, "0" for none
  platform::widgets::Button& cmdSelectTrigger;
  platform::widgets::TabStrip& tsIOCond;      // keys "I/O", "Conditions"
  platform::widgets::ListView& lvIOElems;     // columns "IOName", "Kind", "BusinessName", "Description"
  platform::widgets::ListView& lvConditions;  // columns "CondName", "Operator", "Argument", "Description"

  platform::widgets::ImageList ilIcons;              // of the tool bar
  platform::widgets::ImageList ilObjects;            // of the tree, by entity name
  platform::widgets::Menu mnuPopup{"mnuPopup"};      // of the tree: an item for each command
  platform::widgets::Menu mnuAuxMain{"mnuAuxMain"};  // of the two lists of a rule

  // The field of the attribute panel of this kind and index; index 0 is the template.
  platform::widgets::Label& lblAttrs(int index) const { return Get<platform::widgets::Label>("lblAttrs", index); }
  platform::widgets::TextBox& txtAttrs(int index) const { return Get<platform::widgets::TextBox>("txtAttrs", index); }
  platform::widgets::ComboBox& cmbAttrs(int index) const { return Get<platform::widgets::ComboBox>("cmbAttrs", index); }
  platform::widgets::RichTextBox& rtbAttrs(int index) const {
    return Get<platform::widgets::RichTextBox>("rtbAttrs", index);
  }
  // Number of attributes in the panel.
  int AttributeCount() const { return attributeCount_; }
  // Makes the four fields of the next attribute, all but the label hidden, and gives its index.
  int AddAttributeFields();
  // Takes out all fields of attributes but the templates.
  void RemoveAttributeFields();
  // Takes out all that came from a workspace: nodes, rows, texts, attributes and the items of mnuAuxMain.
  void Empty();

  // The view tells how many rows of one line the attribute panel has room for. A long text's row takes three; vScroll
  // counts such rows: the panel's content stands moved up by the bar's value.
  platform::Event<int> OnPanelResized;
  // What it told last; 0 until then.
  int PanelRows() const { return panelRows_; }
  int AttributeRows(int index) const;

 private:
  void MakeAttributeFields(int index, bool visible);

  int attributeCount_ = 0;
  int panelRows_ = 0;
  platform::Subscription panelResized_;
};

}  // namespace qmrules::browser
