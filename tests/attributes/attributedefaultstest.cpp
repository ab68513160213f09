#include "attributes/attributedefaults.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalogue/gateway.h"
#include "platform/error.h"
#include "support/teststore.h"

namespace qmrules::attributes {
namespace {

std::string Document(const std::string& attributes) {
  return "<repstry><entities><entity name=\"RULE\"><entityattrs>" + attributes +
         "</entityattrs></entity></entities></repstry>";
}

// Keeps the statements that it is asked to run.
class StatementRecorder final : public platform::Database {
 public:
  std::unique_ptr<platform::Recordset> OpenRecordset(std::string_view) override { return nullptr; }
  void Execute(std::string_view statement) override { statements.emplace_back(statement); }
  std::int64_t RecordsAffected() const override { return 0; }

  std::vector<std::string> statements;
};

std::vector<std::string> StatementsFor(const std::string& attributes) {
  platform::XmlDocument document;
  document.loadXML(Document(attributes));
  StatementRecorder recorder;
  ApplyAttributeDefaults(recorder, document);
  return recorder.statements;
}

TEST(AttributeDefaults, OneStatementServesAnAttributeWithValues) {
  EXPECT_EQ(StatementsFor("<entityattr name='Status' system='false' default='new'><const value='new'/>"
                          "<const value='approved'/></entityattr>"),
            (std::vector<std::string>{"update VekRULETbl set Status='new' where Status not in ('new','approved')"}));
}

TEST(AttributeDefaults, AnAttributeWithoutValuesRunsNone) {
  EXPECT_TRUE(StatementsFor("<entityattr name='Status' system='false' default='new'/>").empty());
}

TEST(AttributeDefaults, TextsAreEscapedAndSafe) {
  EXPECT_EQ(StatementsFor("<entityattr name='Owner' default=\"O'Neil\"><const value=\"O'Neil\"/>"
                          "<const value='a&#9;b'/></entityattr>"),
            (std::vector<std::string>{"update VekRULETbl set Owner='O''Neil' where Owner not in ('O''Neil','a\tb')"}));
}

TEST(AttributeDefaults, OtherEntitiesAreLeftAlone) {
  platform::XmlDocument document;
  document.loadXML(
      "<entities><entity name='RULESET'><entityattrs><entityattr name='Kind' default='a'>"
      "<const value='a'/></entityattr></entityattrs></entity></entities>");
  StatementRecorder recorder;
  ApplyAttributeDefaults(recorder, document);
  EXPECT_TRUE(recorder.statements.empty());
}

TEST(AttributeDefaults, ANameThatIsNoColumnIsRefusedBeforeAnyStatement) {
  platform::XmlDocument document;
  document.loadXML(
      Document("<entityattr name='Status' default='a'><const value='a'/></entityattr>"
               "<entityattr name=\"x='1' where 1=1--\" default='a'><const value='a'/></entityattr>"));
  StatementRecorder recorder;
  try {
    ApplyAttributeDefaults(recorder, document);
    FAIL();
  } catch (const platform::Error& error) {
    EXPECT_STREQ(error.what(),
                 "The schema document has a rule attribute named \"x='1' where 1=1--\". A name has letters and digits "
                 "only. Correct the attribute's name.");
  }
  EXPECT_TRUE(recorder.statements.empty());
}

class StoredAttributes : public testing::Test {
 protected:
  static constexpr const char* kAttributes =
      "<entityattr name='Status' type='CHAR' length='20' system='false' description='Status' default='new'>"
      "<const value='new'/><const value=\"client's\"/></entityattr>"
      "<entityattr name='Remark' type='LONGTEXT' system='false' description='Remark'/>";

  std::int32_t RuleWith(const std::string& status) {
    const auto rule = store.AddRule(set, "Rule", 1);
    store.Put(catalogue::MakeKey("RULE", rule), "Status", status);
    return rule;
  }

  std::string StatusOf(std::int32_t rule) { return store.Get(catalogue::MakeKey("RULE", rule), "Status").Text(); }

  StoredAttributes() { document.loadXML(Document(kAttributes)); }

  platform::XmlDocument document;
  test::TestStore store{Document(kAttributes)};
  std::int32_t set = store.AddRuleSet("Fees");
};

TEST_F(StoredAttributes, AValueThatLeftTheListFallsBackToTheDefault) {
  const auto stale = RuleWith("retired");
  const auto kept = RuleWith("client's");
  const auto another = RuleWith("new");
  ApplyAttributeDefaults(store.Repository().Database(), document);
  EXPECT_EQ(StatusOf(stale), "new");
  EXPECT_EQ(StatusOf(kept), "client's");
  EXPECT_EQ(StatusOf(another), "new");
}

TEST_F(StoredAttributes, ASecondRunFindsNothingToChange) {
  RuleWith("retired");
  ApplyAttributeDefaults(store.Repository().Database(), document);
  ApplyAttributeDefaults(store.Repository().Database(), document);
  EXPECT_EQ(store.Repository().Database().RecordsAffected(), 0);
}

}  // namespace
}  // namespace qmrules::attributes
