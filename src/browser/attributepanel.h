#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "browser/controlwidgets.h"
#include "catalogue/attributeschema.h"
#include "platform/event.h"
#include "platform/fetch.h"
#include "platform/keyedcollection.h"
#include "platform/schema.h"
#include "platform/xml.h"

namespace qmrules::browser {

// What is known of the attributes of a rule. Everything outlives whoever works on it.
struct AttributeSource {
  const platform::EntityDef& rule;
  const platform::XmlDocument& document;    // the schema document
  const platform::XmlElement& definitions;  // the element `entityattrs` of the rules in it
  const catalogue::AttributeLists& lists;
};

// The panel of a rule's attributes, `pbAttrs`: a label and a field for each one that is shown and has no field of its
// own elsewhere, in the order of the entity's definition.
//
//   long text                          rtbAttrs, three rows high, locked unless the attribute is editable
//   not editable                       txtAttrs, locked and no tab stop
//   boolean                            cmbAttrs with "false" and "true"
//   with values in the document        cmbAttrs with these
//   any other                          txtAttrs, as long as the document tells
//
// `vScroll` counts rows of one line: its value is the number of rows that have gone out at the top.
class AttributePanel {
 public:
  enum class FieldKind { Text, LongText, Choice };

  // Puts the fields into the panel, in the place of those that are there. Throws Error, with no field in the panel,
  // when the document gives an attribute a length that is no number.
  AttributePanel(ControlWidgets& widgets, const AttributeSource& source);
  AttributePanel(const AttributePanel&) = delete;
  AttributePanel& operator=(const AttributePanel&) = delete;

  // Number of attributes in the panel, whose indices run from 1 to here.
  int Count() const { return static_cast<int>(fields_.size()); }
  // Index of each attribute, under its name.
  const platform::KeyedCollection<int>& AttributeIndex() const { return attributeIndex_; }
  // Names of the attributes that have a field of several lines.
  const platform::KeyedCollection<std::string>& LongTextAttributes() const { return longTextAttributes_; }
  // The attributes of a rule that the panes read, as a fetch list: "Description,BusinessDescription,Model,FileName,
  // FromRow,ToRow" and those of the panel.
  const std::string& FetchList() const { return fetchList_; }
  // Characters of the longest label.
  std::size_t LabelWidth() const { return labelWidth_; }

  // By index; std::out_of_range outside 1 to Count().
  const platform::AttrDef& Definition(int index) const { return *Field(index).definition; }
  FieldKind Kind(int index) const { return Field(index).kind; }
  bool IsEditable(int index) const;

  // What the field of the attribute shows of a value that a fetch delivers.
  std::string ShownText(int index, const platform::FetchField& value) const;
  // Puts a text into the field and its tag, and the beginning of it into the tool tip. A choice that has no such item
  // shows none.
  void Show(int index, const std::string& text);
  // The same by the attribute's name; nothing for one that is not in the panel.
  void Show(std::string_view attribute, const std::string& text);

  // What the field holds now, and whether the user has changed it since it was shown or written last.
  const std::string& Text(int index) const;
  bool IsChanged(int index) const;
  // The field itself.
  platform::widgets::Widget& Widget(int index) const;

  // Shows the panel and the field below it, and the scroll bar when there are more rows than the panel has room for.
  void SetVisible(bool visible);

 private:
  struct AttributeField {
    const platform::AttrDef* definition = nullptr;
    FieldKind kind = FieldKind::Text;
  };

  const AttributeField& Field(int index) const { return fields_.at(static_cast<std::size_t>(index) - 1); }
  void AddAttribute(const platform::AttrDef& definition);
  FieldKind MakeLongText(int index, bool editable);
  FieldKind MakeLocked(int index);
  FieldKind MakeChoice(int index, const std::vector<std::string>& values);
  FieldKind MakeText(int index, const platform::XmlElement& definition);
  FieldKind MakeField(int index, const platform::AttrDef& definition);
  void LayOut();

  ControlWidgets& widgets_;
  AttributeSource source_;
  std::vector<AttributeField> fields_;
  platform::KeyedCollection<int> attributeIndex_;
  platform::KeyedCollection<std::string> longTextAttributes_;
  std::string fetchList_;
  std::size_t labelWidth_ = 0;
  bool visible_ = false;
  platform::Subscription resized_;
};

}  // namespace qmrules::browser
