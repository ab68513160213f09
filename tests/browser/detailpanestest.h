#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "browser/browsertest.h"
#include "browser/detailpanes.h"
#include "support/faultyconnection.h"

namespace qmrules::browser {

// The panes over a catalogue with two functions that share the rule set "Fees", and attributes with a field of every
// kind. The workspace knows the program FEE with two files.
class DetailPanesTest : public BrowserTest {
 protected:
  DetailPanesTest();

  // Clicks the node of this text below another one, which is opened.
  void ShowFunction(const std::string& name);
  void ShowRuleSet(const std::string& function, const std::string& name);
  void ShowRule(const std::string& name);

  // The focus goes to the field, the user types over its text, and the focus goes to the tree; false when it stays.
  bool EnterAndLeave(platform::widgets::TextBox& field, const std::string& text);
  bool ChooseAndLeave(platform::widgets::ComboBox& field, const std::string& text);
  bool Leave() { return tvObjects.SetFocus(); }

  int Index(const std::string& attribute) const { return *panes.Attributes().AttributeIndex().Find(attribute); }
  platform::widgets::TextBox& Text(const std::string& attribute) { return widgets.txtAttrs(Index(attribute)); }
  platform::widgets::ComboBox& Choice(const std::string& attribute) { return widgets.cmbAttrs(Index(attribute)); }
  platform::widgets::RichTextBox& LongText(const std::string& attribute) { return widgets.rtbAttrs(Index(attribute)); }

  std::string Stored(const std::string& key, const std::string& attribute) { return store.Get(key, attribute).Text(); }
  // The activity texts of the rule "Base fee".
  std::vector<std::string> Log();
  // The visible widgets of the panes in tab order, with a blank between them, without the fields in the panel.
  std::string VisibleWidgets() const;
  // A data element or condition of the rule "Base fee".
  std::int32_t AddElement(const std::string& entity, const std::map<std::string, platform::Value>& attributes);
  void PutSegment(const std::string& file, int fromRow, int toRow, const std::string& program = "FEE");
  // Another process deletes the object.
  void DeleteElsewhere(const std::string& key);

 private:
  std::shared_ptr<test::Fault> fault_;

 protected:
  test::Fault& fault = *fault_;

  std::int32_t billing = store.AddFunction("Billing");
  std::int32_t claims = store.AddFunction("Claims");
  std::int32_t fees = store.AddRuleSet("Fees");
  std::int32_t taxes = store.AddRuleSet("Taxes");
  std::int32_t billingFees = store.AddCall(billing, fees, 1);
  std::int32_t claimsFees = store.AddCall(claims, fees, 1);
  std::int32_t claimsTaxes = store.AddCall(claims, taxes, 2);
  std::int32_t baseFee = store.AddRule(fees, "Base fee", 1);
  std::int32_t lateFee = store.AddRule(fees, "Late fee", 2);
  std::string functionKey = "BUSINESSFUNC#" + std::to_string(billing);
  std::string setKey = "RULESET#" + std::to_string(fees);
  std::string ruleKey = "RULE#" + std::to_string(baseFee);
  std::string programKey = AddProgram("FEE");

  platform::XmlDocument document;
  platform::XmlElement definitions = LoadDefinitions();
  catalogue::AttributeLists lists = catalogue::BuildAttributeLists(definitions);
  DetailPanes panes{services, objects, {repository.Schema().Entity("RULE"), document, definitions, lists}};

 private:
  explicit DetailPanesTest(const std::shared_ptr<test::Fault>& shared);
  std::string AddProgram(const std::string& name);
  platform::XmlElement LoadDefinitions();

  platform::Subscription objectChanged_;
};

}  // namespace qmrules::browser
