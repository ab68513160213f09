#pragma once

#include <string>

#include "catalogue/attributeschema.h"
#include "editing/editingtest.h"
#include "editing/rules.h"

namespace qmrules::editing {

// A rule set with room for rules that have attributes of the site's own.
class ExtendedRules : public EditingTest {
 protected:
  static constexpr const char* kSchema = R"(<repstry><entities><entity name="RULE"><entityattrs>
    <entityattr name="Status" type="CHAR" length="20" system="false" description="Rule Status" default="new">
      <const value="new"/><const value="approved"/>
    </entityattr>
    <entityattr name="Weight" type="INTEGER" system="false" description="Weight" default="5"/>
    <entityattr name="Audited" type="BOOLEAN" system="false" description="Audited" default=""/>
    <entityattr name="Remark" type="LONGTEXT" system="false" description="Remark"/>
    <entityattr name="Owner" type="CHAR" length="8" system="false" description="Business Owner" default=""/>
  </entityattrs></entity></entities></repstry>)";

  ExtendedRules() : EditingTest(kSchema) {
    schema.loadXML(kSchema);
    lists = catalogue::BuildAttributeLists(schema.selectSingleNode(catalogue::kRuleAttributesPath));
  }

  platform::XmlDocument schema;
  catalogue::AttributeLists lists;
  std::int32_t function = store.AddFunction("Billing");
  std::int32_t set = store.AddRuleSet("Fees");
};

}  // namespace qmrules::editing
