#include "browser/attributepanel.h"

#include <gtest/gtest.h>

#include "browser/detailpanestest.h"
#include "support/errortext.h"

namespace qmrules::browser {
namespace {

using FieldKind = AttributePanel::FieldKind;

class AttributePanelTest : public DetailPanesTest {
 protected:
  // Names of the attributes in the panel, in the order of their indices.
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (int index = 1; index <= panel.Count(); ++index) names.push_back(panel.Definition(index).Name());
    return names;
  }
  // The kinds of field that are visible at the index.
  std::string Fields(const std::string& attribute) const {
    const int index = Index(attribute);
    std::string fields;
    if (widgets.txtAttrs(index).Visible()) fields += "txtAttrs";
    if (widgets.cmbAttrs(index).Visible()) fields += "cmbAttrs";
    if (widgets.rtbAttrs(index).Visible()) fields += "rtbAttrs";
    return fields;
  }

  const AttributePanel& panel = panes.Attributes();
};

TEST_F(AttributePanelTest, HasTheShownAttributesInTheOrderOfTheSchema) {
  EXPECT_EQ(Names(), (std::vector<std::string>{"AssignedTo", "Program", "Valid", "Validated", "Status", "Weight",
                                               "Audited", "Remark", "Owner"}));
  EXPECT_EQ(Index("assignedto"), 1);
  EXPECT_EQ(panel.FetchList(),
            "Description,BusinessDescription,Model,FileName,FromRow,ToRow,AssignedTo,Program,Valid,Validated,Status,"
            "Weight,Audited,Remark,Owner");
}

TEST_F(AttributePanelTest, LabelsAreTheCaptionsWithAColon) {
  EXPECT_EQ(widgets.lblAttrs(Index("Weight")).Caption(), "Weight of the rule:");
  EXPECT_TRUE(widgets.lblAttrs(Index("Weight")).Visible());
  EXPECT_EQ(panel.LabelWidth(), std::string("Weight of the rule:").size());
}

TEST_F(AttributePanelTest, ALongTextHasAFieldOfSeveralLines) {
  EXPECT_EQ(Fields("Remark"), "rtbAttrs");
  EXPECT_FALSE(LongText("Remark").Locked());
  EXPECT_EQ(panel.LongTextAttributes().Count(), 1U);
  EXPECT_TRUE(panel.LongTextAttributes().Contains("Remark"));
}

TEST_F(AttributePanelTest, AnAttributeThatIsNotEditableHasALockedFieldThatTabPasses) {
  EXPECT_EQ(Fields("Program"), "txtAttrs");
  EXPECT_TRUE(Text("Program").Locked());
  EXPECT_FALSE(Text("Program").TabStop());
  EXPECT_FALSE(Text("AssignedTo").Locked());
  EXPECT_TRUE(Text("AssignedTo").TabStop());
}

TEST_F(AttributePanelTest, ALongTextThatIsNotEditableIsLocked) {
  lists.editable.Remove("Remark");
  const AttributePanel other(widgets, {repository.Schema().Entity("RULE"), document, definitions, lists});
  EXPECT_TRUE(LongText("Remark").Locked());
}

TEST_F(AttributePanelTest, ABooleanIsAChoiceOfFalseAndTrue) {
  EXPECT_EQ(Fields("Audited"), "cmbAttrs");
  ASSERT_EQ(Choice("Audited").Count(), 2);
  EXPECT_EQ(Choice("Audited").Item(0).text, "false");
  EXPECT_EQ(Choice("Audited").Item(1).text, "true");
}

TEST_F(AttributePanelTest, AnAttributeWithValuesIsAChoiceOfThem) {
  EXPECT_EQ(Fields("Status"), "cmbAttrs");
  ASSERT_EQ(Choice("Status").Count(), 2);
  EXPECT_EQ(Choice("Status").Item(1).text, "approved");
  EXPECT_EQ(Choice("Status").Item(1).key, "kapproved");
}

TEST_F(AttributePanelTest, AnyOtherIsALineAsLongAsTheDocumentTells) {
  EXPECT_EQ(Fields("Owner"), "txtAttrs");
  EXPECT_EQ(Text("Owner").MaxLength(), 9U);
  EXPECT_EQ(Fields("Weight"), "txtAttrs");
  EXPECT_EQ(Text("Weight").MaxLength(), 0U);
  EXPECT_EQ(Fields("AssignedTo"), "txtAttrs");
  EXPECT_EQ(Text("AssignedTo").MaxLength(), 0U);
}

TEST_F(AttributePanelTest, TheTemplateIsHidden) {
  EXPECT_FALSE(widgets.lblAttrs(0).Visible());
  EXPECT_FALSE(widgets.txtAttrs(0).Visible());
}

TEST_F(AttributePanelTest, IsMadeAnewInThePlaceOfTheOldOne) {
  lists.shown.Remove("Weight");
  const AttributePanel other(widgets, {repository.Schema().Entity("RULE"), document, definitions, lists});
  EXPECT_EQ(other.Count(), 8);
  EXPECT_EQ(widgets.AttributeCount(), 8);
}

TEST_F(AttributePanelTest, ALengthThatIsNoNumberLeavesNoField) {
  document.selectSingleNode("//entityattr[@name='Owner']").setAttribute("length", "many");
  const auto text = test::ErrorText([&] {
    AttributePanel(widgets, {repository.Schema().Entity("RULE"), document, definitions, lists});
  });
  EXPECT_EQ(text,
            "The schema document gives the attribute Owner the length \"many\", which is not a whole number. Correct "
            "the attribute's definition.");
  EXPECT_EQ(widgets.AttributeCount(), 0);
}

TEST_F(AttributePanelTest, ShowsEachKindOfValue) {
  store.Put(ruleKey, "Status", "approved");
  store.Put(ruleKey, "Weight", 12);
  store.Put(ruleKey, "Audited", true);
  store.Put(ruleKey, "Remark", "Line\r\nby line");
  store.Put(ruleKey, "Validated", *platform::ParseTimestamp("2026-01-30 08:00:00"));
  ShowRule("Base fee");
  EXPECT_EQ(Choice("Status").Text(), "approved");
  EXPECT_EQ(Choice("Status").Tag(), "approved");
  EXPECT_EQ(Text("Weight").Text(), "12");
  EXPECT_EQ(Choice("Audited").Text(), "true");
  EXPECT_EQ(LongText("Remark").Text(), "Line\r\nby line");
  EXPECT_EQ(Text("Validated").Text(), "2026-01-30 08:00:00");
  EXPECT_FALSE(panes.IsEdited());
}

TEST_F(AttributePanelTest, ABooleanWithoutAValueShowsFalse) {
  ShowRule("Base fee");
  EXPECT_EQ(Choice("Audited").Text(), "false");
  EXPECT_EQ(Choice("Audited").Tag(), "false");
}

TEST_F(AttributePanelTest, AValueThatIsNoChoiceSelectsNone) {
  store.Put(ruleKey, "Status", "Approved");
  ShowRule("Base fee");
  EXPECT_EQ(Choice("Status").ListIndex(), -1);
  EXPECT_FALSE(panes.IsEdited());
  ShowRule("Late fee");
  EXPECT_EQ(Stored(ruleKey, "Status"), "Approved");
}

TEST_F(AttributePanelTest, ANewValueIsShownByName) {
  ShowRule("Base fee");
  panes.ShowAttribute("Program", "FEE");
  panes.ShowAttribute("Nowhere", "x");
  EXPECT_EQ(Text("Program").Text(), "FEE");
  EXPECT_EQ(Text("Program").Tag(), "FEE");
}

TEST_F(AttributePanelTest, RowsThatFitNeedNoScrollBar) {
  ShowRule("Base fee");
  widgets.OnPanelResized.Raise(11);
  EXPECT_EQ(widgets.AttributeRows(Index("Remark")), 3);
  EXPECT_EQ(widgets.AttributeRows(Index("Owner")), 1);
  EXPECT_FALSE(widgets.vScroll.Visible());
}

TEST_F(AttributePanelTest, RowsBeyondTheHeightAreReachedByTheScrollBarInStepsOfARow) {
  ShowRule("Base fee");
  widgets.OnPanelResized.Raise(4);
  EXPECT_TRUE(widgets.vScroll.Visible());
  EXPECT_EQ(widgets.vScroll.Max(), 7);
  EXPECT_EQ(widgets.vScroll.SmallChange(), 1);
  EXPECT_EQ(widgets.vScroll.LargeChange(), 4);
  widgets.vScroll.Step(20);
  EXPECT_EQ(widgets.vScroll.Value(), 7);
  widgets.OnPanelResized.Raise(10);
  EXPECT_EQ(widgets.vScroll.Value(), 1);
}

TEST_F(AttributePanelTest, TheScrollBarShowsForRulesOnly) {
  widgets.OnPanelResized.Raise(4);
  EXPECT_FALSE(widgets.vScroll.Visible());
  ShowRule("Base fee");
  EXPECT_TRUE(widgets.vScroll.Visible());
  ShowFunction("Billing");
  EXPECT_FALSE(widgets.vScroll.Visible());
}

}  // namespace
}  // namespace qmrules::browser
