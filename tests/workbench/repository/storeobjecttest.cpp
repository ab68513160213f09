#include <gtest/gtest.h>

#include "platform/objectkey.h"
#include "support/errortext.h"
#include "support/teststore.h"
#include "workbench/repository/fetchrows.h"

namespace qmrules::test {
namespace {

using platform::MakeKey;
using platform::Value;

const std::string kOwnAttributes =
    "<repstry><entities><entity name='RULE'><entityattrs>"
    "<entityattr name='Billable' type='BOOLEAN' system='false' description='To Be Billed'/>"
    "<entityattr name='Weight' type='INTEGER' system='false'/>"
    "<entityattr name='Note' type='LONGTEXT' system='false'/>"
    "</entityattrs></entity></entities></repstry>";

platform::Timestamp At(const char* text) {
  return *platform::ParseTimestamp(text);
}

TEST(StoreObject, NewObjectHasItsNameAndTheSystemAttributes) {
  TestStore store;
  const auto rule = store.Repository().NewObject("RULE", "n1");
  EXPECT_EQ(rule->Key(), "RULE#1");
  EXPECT_EQ(rule->ObjectID(), "RULE#1");
  EXPECT_EQ(rule->EntityDef().Name(), "RULE");
  EXPECT_EQ(rule->Attrs("Name"), Value("n1"));
  EXPECT_EQ(rule->Attrs("Created"), Value(At("2026-01-31 12:00:00")));
  EXPECT_EQ(rule->Attrs("CreatedBy"), Value("analyst"));
  EXPECT_EQ(rule->Attrs("Modified"), Value(At("2026-01-31 12:00:00")));
  EXPECT_EQ(rule->Attrs("ModifiedBy"), Value("analyst"));
  EXPECT_TRUE(rule->Attrs("SID").IsAbsent());
  EXPECT_TRUE(rule->Attrs("Description").IsAbsent());
}

TEST(StoreObject, EntitiesCountTheirObjectsApart) {
  TestStore store;
  EXPECT_EQ(store.Repository().NewObject("RULE", "n1")->Key(), "RULE#1");
  EXPECT_EQ(store.Repository().NewObject("RULEIO", "n2")->Key(), "RULEIO#1");
  EXPECT_EQ(store.Repository().NewObject("RULE", "n3")->Key(), "RULE#2");
}

TEST(StoreObject, TheIDOfADeletedObjectIsNotGivenAgain) {
  TestStore store;
  store.Repository().NewObject("RULE", "n1")->Delete();
  EXPECT_EQ(store.Repository().NewObject("RULE", "n2")->Key(), "RULE#2");
  store.Repository().object("RULE#2")->Delete();
  store.Reopen();
  EXPECT_EQ(store.Repository().NewObject("RULE", "n3")->Key(), "RULE#3");
}

TEST(StoreObject, AnUnknownEntityIsRefused) {
  TestStore store;
  EXPECT_EQ(ErrorText([&] { store.Repository().NewObject("TABLE", "a"); }), "The repository has no entity \"TABLE\".");
  EXPECT_EQ(ErrorText([&] { store.Repository().object("TABLE#1"); }), "The repository has no entity \"TABLE\".");
  EXPECT_EQ(ErrorText([&] { store.Repository().FindObject("TABLE", "a"); }), "The repository has no entity \"TABLE\".");
  EXPECT_EQ(ErrorText([&] { store.Repository().CountObjects("TABLE", {}); }),
            "The repository has no entity \"TABLE\".");
}

TEST(StoreObject, AKeyIsTakenInAnyCaseOfItsEntity) {
  TestStore store;
  store.Repository().NewObject("RULE", "n1");
  EXPECT_EQ(store.Repository().object(" rule #1")->Key(), "RULE#1");
}

TEST(StoreObject, AKeyWithoutAnObjectAndAMalformedOneAreRefused) {
  TestStore store;
  EXPECT_EQ(ErrorText([&] { store.Repository().object("RULE#17"); }),
            "There is no object RULE#17; it may have been deleted.");
  EXPECT_EQ(ErrorText([&] { store.Repository().object("RULE"); }),
            "\"RULE\" is not an object key. A key is an entity name, \"#\" and a number, as RULE#17.");
}

TEST(StoreObject, AnEmptyNameIsRefused) {
  TestStore store;
  EXPECT_EQ(ErrorText([&] { store.Repository().NewObject("RULESET", ""); }), "A Rule Set needs a name.");
  const auto key = store.Repository().NewObject("RULESET", "S")->Key();
  EXPECT_EQ(ErrorText([&] { store.Put(key, "Name", ""); }), "A Rule Set needs a name.");
  EXPECT_EQ(ErrorText([&] { store.Put(key, "Name", Value()); }), "A Rule Set needs a name.");
  EXPECT_EQ(store.Get(key, "Name"), Value("S"));
}

// What the refusal of a taken name says, for the creation of an object and for its change of name.
void ExpectUniqueNames(const std::string& entity, const std::string& caption) {
  TestStore store;
  const auto first = store.Repository().NewObject(entity, "Taken")->Key();
  const auto second = store.Repository().NewObject(entity, "taken")->Key();  // another case is another name
  const std::string text = caption + " \"Taken\" exists already as " + first + "; choose another name.";
  EXPECT_EQ(ErrorText([&] { store.Repository().NewObject(entity, "Taken"); }), text);
  EXPECT_EQ(ErrorText([&] { store.Put(second, "Name", "Taken"); }), text);
  store.Put(first, "Name", "Taken");  // its own name is no other's
  EXPECT_EQ(store.Get(second, "Name"), Value("taken"));
}

TEST(StoreObject, NaturalNamesAreUniqueWhereTheEntityHasThem) {
  ExpectUniqueNames("BUSINESSFUNC", "Business Function");
  ExpectUniqueNames("RULESET", "Rule Set");
  ExpectUniqueNames("PROJECT", "Project");
}

TEST(StoreObject, OtherEntitiesShareNames) {
  TestStore store;
  for (const auto* entity : {"RULE", "RULEIO", "RULECOND", "RULELOG", "RULESETCALL", "COBOL", "PROGRAM"}) {
    store.Repository().NewObject(entity, "same");
    EXPECT_NO_THROW(store.Repository().NewObject(entity, "same")) << entity;
  }
}

TEST(StoreObject, FindObjectTakesExactlyTheNameAndTheOldestOfSeveral) {
  TestStore store;
  store.Repository().NewObject("COBOL", "other");
  const auto first = store.Repository().NewObject("COBOL", "GSS1")->Key();
  store.Repository().NewObject("COBOL", "GSS1");
  EXPECT_EQ(store.Repository().FindObject("COBOL", "GSS1")->Key(), first);
  EXPECT_EQ(store.Repository().FindObject("cobol", "GSS1")->Key(), first);
  EXPECT_EQ(store.Repository().FindObject("COBOL", "gss1"), nullptr);
  EXPECT_EQ(store.Repository().FindObject("COBOL", "GSS"), nullptr);
  EXPECT_EQ(store.Repository().FindObject("COBOL", ""), nullptr);
  EXPECT_EQ(store.Repository().FindObject("RULESET", "GSS1"), nullptr);
}

TEST(StoreObject, FindObjectSeesEveryProject) {
  TestStore store;
  const auto set = store.Repository().NewObject("RULESET", "Elsewhere");
  set->Link("BelongsTo", store.OtherProjectKey());
  EXPECT_EQ(store.Repository().FindObject("RULESET", "Elsewhere")->Key(), set->Key());
}

TEST(StoreObject, EachTypeGivesBackWhatItWasGiven) {
  TestStore store(kOwnAttributes);
  const auto key = store.Repository().NewObject("RULE", "n")->Key();
  const std::string text = "Zeile 1\r\n\tÄ\xF0\x9F\x8E\xB2 'quoted' \"double\" \\ &|~(),";
  store.Put(key, "Description", text);
  store.Put(key, "RuleName", text);
  store.Put(key, "SeqNo", std::int64_t{-9223372036854775807} - 1);
  store.Put(key, "Validated", At("1999-12-31 23:59:59"));
  store.Put(key, "Billable", true);
  store.Reopen();
  EXPECT_EQ(store.Get(key, "Description"), Value(text));
  EXPECT_EQ(store.Get(key, "RuleName"), Value(text));
  EXPECT_EQ(store.Get(key, "SeqNo"), Value(std::int64_t{-9223372036854775807} - 1));
  EXPECT_EQ(store.Get(key, "Validated"), Value(At("1999-12-31 23:59:59")));
  EXPECT_EQ(store.Get(key, "Billable"), Value(true));
}

TEST(StoreObject, ValuesAreTakenInTheFormsThatTheTypeKnows) {
  TestStore store(kOwnAttributes);
  const auto key = store.Repository().NewObject("RULE", "n")->Key();
  store.Put(key, "SeqNo", "42");
  store.Put(key, "RuleName", 42);
  store.Put(key, "Validated", "2025-02-03T04:05Z");
  store.Put(key, "Billable", "FALSE");
  EXPECT_EQ(store.Get(key, "SeqNo"), Value(42));
  EXPECT_EQ(store.Get(key, "RuleName"), Value("42"));
  EXPECT_EQ(store.Get(key, "Validated"), Value(At("2025-02-03 04:05:00")));
  EXPECT_EQ(store.Get(key, "Billable"), Value(false));
}

TEST(StoreObject, AnEmptyTextLeavesANumberADateAndABooleanUnset) {
  TestStore store(kOwnAttributes);
  const auto key = store.Repository().NewObject("RULE", "n")->Key();
  for (const auto* attribute : {"SeqNo", "Validated", "Billable", "SID"}) {
    store.Put(key, attribute, Value());
    EXPECT_TRUE(store.Get(key, attribute).IsAbsent()) << attribute;
  }
  for (const auto* attribute : {"SeqNo", "Validated", "Billable"}) {
    store.Put(key, attribute, "");
    EXPECT_TRUE(store.Get(key, attribute).IsAbsent()) << attribute;
  }
  store.Put(key, "Description", "");
  EXPECT_EQ(store.Get(key, "Description").Text(), "");
}

TEST(StoreObject, ARefusedValueIsNamedWithObjectAttributeAndType) {
  TestStore store(kOwnAttributes);
  const auto rule = store.Repository().NewObject("RULE", "n");
  rule->Edit();
  EXPECT_EQ(ErrorText([&] { rule->Attrs("SeqNo", "five"); }),
            "RULE#1, attribute SeqNo (INTEGER): \"five\" is not a whole number.");
  EXPECT_EQ(ErrorText([&] { rule->Attrs("SeqNo", 1.5); }),
            "RULE#1, attribute SeqNo (INTEGER): \"1.5\" is not a whole number.");
  EXPECT_EQ(ErrorText([&] { rule->Attrs("Validated", "yesterday"); }),
            "RULE#1, attribute Validated (TIMESTAMP): \"yesterday\" is not a date and time such as \"2026-01-31 "
            "18:30:00\".");
  EXPECT_EQ(ErrorText([&] { rule->Attrs("Billable", "yes"); }),
            "RULE#1, attribute Billable (BOOLEAN): \"yes\" is neither true nor false.");
  EXPECT_EQ(ErrorText([&] { rule->Attrs("RuleName", "a\xFF"); }),
            "RULE#1, attribute RuleName (CHAR): the text is not UTF-8.");
  EXPECT_EQ(ErrorText([&] { rule->Attrs("Note", "\xC3"); }),
            "RULE#1, attribute Note (LONGTEXT): the text is not UTF-8.");
  rule->Attrs("RuleName", "kept");
  rule->Post();
  EXPECT_EQ(store.Get("RULE#1", "RuleName"), Value("kept"));
  EXPECT_TRUE(store.Get("RULE#1", "SeqNo").IsAbsent());
}

TEST(StoreObject, AnUnknownAttributeIsRefusedAndIDIsNone) {
  TestStore store;
  const auto rule = store.Repository().NewObject("RULE", "n");
  EXPECT_EQ(ErrorText([&] { rule->Attrs("Colour"); }), "The entity RULE has no attribute \"Colour\".");
  EXPECT_EQ(ErrorText([&] { rule->Attrs("ID"); }), "The entity RULE has no attribute \"ID\".");
  EXPECT_EQ(ErrorText([&] { rule->Attrs("ObjectID"); }), "The entity RULE has no attribute \"ObjectID\".");
  rule->Edit();
  EXPECT_EQ(ErrorText([&] { rule->Attrs("ID", 5); }), "The entity RULE has no attribute \"ID\".");
  EXPECT_EQ(rule->EntityDef().FindAttr("ID"), nullptr);
}

TEST(StoreObject, SIDIsOneAttributeHoweverItIsWritten) {
  TestStore store;
  const auto rule = store.Repository().NewObject("RULE", "n");
  rule->Edit();
  rule->Attrs("SID", "RULESET#1");
  rule->Attrs("Sid", "RULESET#2");
  EXPECT_EQ(rule->Attrs("sid"), Value("RULESET#2"));
  rule->Post();
  EXPECT_EQ(store.Get("RULE#1", "SID"), Value("RULESET#2"));
  EXPECT_EQ(rule->EntityDef().FindAttr("Sid"), rule->EntityDef().FindAttr("SID"));
  EXPECT_EQ(Select(store.Repository(), "RULE", "SID,Sid:Again", "sid=RULESET#2", {"Sid", "Again"}),
            "RULESET#2|RULESET#2");
}

TEST(StoreObject, PutsStandBetweenEditAndPostOnly) {
  TestStore store;
  const auto rule = store.Repository().NewObject("RULE", "n");
  EXPECT_EQ(ErrorText([&] { rule->Attrs("RuleName", "a"); }),
            "RULE#1 is not open for change: Edit comes before a change of RuleName.");
  EXPECT_EQ(ErrorText([&] { rule->Post(); }), "RULE#1 is not open for change: Edit comes before Post.");
  rule->Edit();
  rule->Attrs("RuleName", "a");
  EXPECT_EQ(rule->Attrs("RuleName"), Value("a"));
  EXPECT_TRUE(store.Get("RULE#1", "RuleName").IsAbsent());
  rule->Post();
  EXPECT_EQ(store.Get("RULE#1", "RuleName"), Value("a"));
  EXPECT_EQ(ErrorText([&] { rule->Attrs("RuleName", "b"); }),
            "RULE#1 is not open for change: Edit comes before a change of RuleName.");
}

TEST(StoreObject, AHandleThatIsDroppedWithoutPostWritesNothing) {
  TestStore store;
  {
    const auto rule = store.Repository().NewObject("RULE", "n");
    rule->Edit();
    rule->Attrs("RuleName", "a");
  }
  EXPECT_TRUE(store.Get("RULE#1", "RuleName").IsAbsent());
}

TEST(StoreObject, ChangesOfDifferentAttributesThroughTwoHandlesBothStand) {
  TestStore store;
  const auto key = store.Repository().NewObject("RULE", "n")->Key();
  const auto one = store.Repository().object(key);
  const auto other = store.Repository().object(key);
  EXPECT_TRUE(one->Attrs("RuleName").IsAbsent());
  EXPECT_TRUE(other->Attrs("Valid").IsAbsent());
  one->Edit();
  other->Edit();
  one->Attrs("RuleName", "by one");
  other->Attrs("Valid", "by other");
  one->Post();
  other->Post();
  EXPECT_EQ(store.Get(key, "RuleName"), Value("by one"));
  EXPECT_EQ(store.Get(key, "Valid"), Value("by other"));
  EXPECT_EQ(one->Attrs("Valid"), Value("by other"));
  EXPECT_EQ(other->Attrs("RuleName"), Value("by one"));
}

TEST(StoreObject, APostNotesWhoAndWhen) {
  TestStore store;
  const auto key = store.Repository().NewObject("RULE", "n")->Key();
  store.Clock().Set(At("2026-02-01 08:00:00"));
  store.Put(key, "RuleName", "a");
  EXPECT_EQ(store.Get(key, "Created"), Value(At("2026-01-31 12:00:00")));
  EXPECT_EQ(store.Get(key, "Modified"), Value(At("2026-02-01 08:00:00")));
  EXPECT_EQ(store.Get(key, "ModifiedBy"), Value("analyst"));
}

TEST(StoreObject, AnImportWritesTheSystemAttributesItself) {
  TestStore store;
  const auto rule = store.Repository().NewObject("RULE", "n");
  rule->Edit();
  rule->Attrs("Created", "2001-01-01 01:01:01");
  rule->Attrs("CreatedBy", "author");
  rule->Attrs("Modified", "2002-02-02 02:02:02");
  rule->Attrs("ModifiedBy", "editor");
  rule->Attrs("Sid", "RULESET#9");
  rule->Post();
  EXPECT_EQ(Select(store.Repository(), "RULE", "Created,CreatedBy,Modified,ModifiedBy,SID", {},
                   {"Created", "CreatedBy", "Modified", "ModifiedBy", "SID"}),
            "2001-01-01 01:01:01|author|2002-02-02 02:02:02|editor|RULESET#9");
}

TEST(StoreObject, AHandleOfADeletedObjectFailsToWrite) {
  TestStore store;
  const auto key = store.Repository().NewObject("RULE", "n")->Key();
  const auto handle = store.Repository().object(key);
  const auto untouched = store.Repository().object(key);
  handle->Edit();
  handle->Attrs("RuleName", "late");
  untouched->Edit();
  store.Repository().object(key)->Delete();
  const std::string text = "There is no object RULE#1; it may have been deleted.";
  EXPECT_EQ(ErrorText([&] { handle->Post(); }), text);
  EXPECT_EQ(ErrorText([&] { untouched->Post(); }), text);
  EXPECT_EQ(ErrorText([&] { handle->Delete(); }), text);
  EXPECT_EQ(ErrorText([&] { handle->Attrs("Valid"); }), text);
}

TEST(StoreObject, TheSchemaTellsTypesCaptionsAndExtensions) {
  TestStore store(kOwnAttributes);
  const auto& rule = store.Repository().Schema().Entity("rule");
  EXPECT_EQ(rule.FindAttr("BILLABLE")->Type(), platform::AttrType::Boolean);
  EXPECT_EQ(rule.FindAttr("Billable")->Caption(), "To Be Billed");
  EXPECT_EQ(rule.FindAttr("Weight")->Caption(), "Weight");
  EXPECT_EQ(rule.FindAttr("Validated")->Type(), platform::AttrType::Timestamp);
  EXPECT_EQ(rule.FindAttr("SourceText")->Type(), platform::AttrType::LongText);
  EXPECT_EQ(rule.Attrs().front()->Name(), "Name");
  EXPECT_EQ(rule.Attrs().back()->Name(), "Note");
  EXPECT_EQ(store.Repository().Schema().FindEntity("TABLE"), nullptr);
  EXPECT_EQ(store.Repository().Schema().Entity("COBOL").FindAttr("DataView")->Type(), platform::AttrType::Boolean);
  EXPECT_EQ(rule.FindAttr("DataView"), nullptr);
}

TEST(StoreObject, PrepareDeleteRefusesAMalformedKeyAndDeletesNothing) {
  TestStore store;
  const auto key = store.Repository().NewObject("RULE", "n")->Key();
  platform::KeyedCollection<std::string> keys;
  keys.Add(key);
  store.Repository().PrepareDelete(keys);
  EXPECT_EQ(store.Repository().CountObjects("RULE", {}), 1);
  keys.Add("RULE17");
  EXPECT_EQ(ErrorText([&] { store.Repository().PrepareDelete(keys); }),
            "\"RULE17\" is not an object key. A key is an entity name, \"#\" and a number, as RULE#17.");
}

TEST(StoreObject, CountObjectsCountsWhatPassesTheFilter) {
  TestStore store;
  for (int i = 0; i < 5; ++i) store.Add("RULE", "n", {{"SeqNo", i}});
  EXPECT_EQ(store.Repository().CountObjects("RULE", {}), 5);
  EXPECT_EQ(store.Repository().CountObjects("RULE", ""), 5);
  EXPECT_EQ(store.Repository().CountObjects("RULE", "SeqNo>=3"), 2);
  EXPECT_EQ(store.Repository().CountObjects("RULE", "ID in 0,2,2,4,99"), 2);
  EXPECT_EQ(store.Repository().CountObjects("RULE", "ID in 0"), 0);
  EXPECT_EQ(ErrorText([&] { store.Repository().CountObjects("RULE", "SeqNo"); }),
            "filter \"SeqNo\" column 6: an operator is expected (=, <>, <, <=, >, >=, like, in)");
}

}  // namespace
}  // namespace qmrules::test
