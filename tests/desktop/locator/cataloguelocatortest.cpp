#include "desktop/locator/cataloguelocator.h"

#include <gtest/gtest.h>

#include "platform/objectkey.h"
#include "support/teststore.h"

namespace qmrules::desktop {
namespace {

class CatalogueLocatorTest : public testing::Test {
 protected:
  std::vector<LocatorEntry> Find(std::string_view text, std::size_t limit = 50) {
    CatalogueLocator locator(store_.Repository(), store_.ProjectKey());
    const auto search = locator.Find(text, limit);
    while (search->Continue()) {
    }
    return search->Best();
  }

  std::vector<std::string> Names(std::string_view text, std::size_t limit = 50) {
    std::vector<std::string> names;
    for (const auto& entry : Find(text, limit)) names.push_back(entry.name);
    return names;
  }

  std::int32_t AddProgram(const std::string& entity, const std::string& name, const std::string& file) {
    const auto id = store_.Add(entity, name, {{"Source", file}});
    store_.Repository().object(platform::MakeKey(entity, id))->Link("BelongsTo", store_.ProjectKey());
    return id;
  }

  test::TestStore store_;
};

TEST_F(CatalogueLocatorTest, FindsFunctionsRuleSetsRulesAndPrograms) {
  const auto function = store_.AddFunction("Premium billing");
  const auto set = store_.AddRuleSet("Premium checks");
  store_.AddCall(function, set, 1);
  const auto rule = store_.AddRule(set, "Premium is positive", 1);
  const auto program = AddProgram("COBOL", "PREMCALC", "policy/premcalc.cbl");
  AddProgram("COBOL", "POLICY", "policy/premium.cbl");
  EXPECT_EQ(Find("prem"),
            (std::vector<LocatorEntry>{
                {"COBOL", "PREMCALC", "policy/premcalc.cbl", platform::MakeKey("COBOL", program), 0, 0},
                {"RULESET", "Premium checks", "Premium billing", platform::MakeKey("RULESET", set), function, 0},
                {"BUSINESSFUNC", "Premium billing", "", platform::MakeKey("BUSINESSFUNC", function), 0, 0},
                {"RULE", "Premium is positive", "Premium billing / Premium checks", platform::MakeKey("RULE", rule),
                 function, set}}));
}

TEST_F(CatalogueLocatorTest, FindsProgramsOfEveryLanguage) {
  for (const char* const entity : {"COBOL", "NATURAL", "PLI", "RPG"})
    AddProgram(entity, std::string("P") + entity, "f");
  EXPECT_EQ(Names("p").size(), 4U);
}

TEST_F(CatalogueLocatorTest, WordStartsComeFirstThenShortNamesThenTheAlphabet) {
  for (const char* const name : {"Recalc", "Calculate all", "Calc b", "calc a", "Calc"}) store_.AddFunction(name);
  EXPECT_EQ(Names("calc"), (std::vector<std::string>{"Calc", "calc a", "Calc b", "Calculate all", "Recalc"}));
}

TEST_F(CatalogueLocatorTest, GivesTheBestAndNoMoreThanTheLimit) {
  for (int at = 0; at < 40; ++at) store_.AddFunction("Function with a number " + std::to_string(at));
  store_.AddFunction("Function");
  const auto names = Names("function", 3);
  ASSERT_EQ(names.size(), 3U);
  EXPECT_EQ(names[0], "Function");
  EXPECT_EQ(names[1], "Function with a number 0");
}

TEST_F(CatalogueLocatorTest, SeesTheProjectOnly) {
  const auto set = store_.Add("RULESET", "Premium of others");
  store_.Repository().object(platform::MakeKey("RULESET", set))->Link("BelongsTo", store_.OtherProjectKey());
  store_.AddRule(set, "Premium rule of others", 1);
  const auto function = store_.Add("BUSINESSFUNC", "Premium function of others");
  store_.Repository().object(platform::MakeKey("BUSINESSFUNC", function))->Link("BelongsTo", store_.OtherProjectKey());
  EXPECT_TRUE(Find("premium").empty());
}

TEST_F(CatalogueLocatorTest, ARuleSetOfSeveralFunctionsIsOfferedOnceAtItsFirstPlace) {
  const auto later = store_.AddFunction("Z function");
  const auto first = store_.AddFunction("A function");
  const auto set = store_.AddRuleSet("Shared");
  store_.AddCall(later, set, 1);
  store_.AddCall(first, set, 5);
  const auto rule = store_.AddRule(set, "Shared rule", 1);
  EXPECT_EQ(Find("shared"),
            (std::vector<LocatorEntry>{
                {"RULESET", "Shared", "A function (+1)", platform::MakeKey("RULESET", set), first, 0},
                {"RULE", "Shared rule", "A function / Shared (+1)", platform::MakeKey("RULE", rule), first, set}}));
}

TEST_F(CatalogueLocatorTest, ARuleSetThatAFunctionTriggersTwiceHasOnePlace) {
  const auto function = store_.AddFunction("Function");
  const auto set = store_.AddRuleSet("Twice");
  store_.AddCall(function, set, 1);
  store_.AddCall(function, set, 2);
  EXPECT_EQ(Find("twice").at(0).place, "Function");
}

TEST_F(CatalogueLocatorTest, ARuleSetWithoutAFunctionHasNoPlace) {
  const auto set = store_.AddRuleSet("Homeless");
  const auto rule = store_.AddRule(set, "Homeless rule", 1);
  EXPECT_EQ(Find("homeless"), (std::vector<LocatorEntry>{
                                  {"RULESET", "Homeless", "", platform::MakeKey("RULESET", set), 0, 0},
                                  {"RULE", "Homeless rule", "Homeless", platform::MakeKey("RULE", rule), 0, set}}));
}

TEST_F(CatalogueLocatorTest, SignsOfTheQueryLanguagesAreText) {
  for (const char* const name : {"a*b", "aXb", "50% | (all)", "x~y&z", "[draft]", "rule #1", "rule 11"}) {
    store_.AddFunction(name);
  }
  EXPECT_EQ(Names("a*b"), std::vector<std::string>{"a*b"});
  EXPECT_EQ(Names("| (all)"), std::vector<std::string>{"50% | (all)"});
  EXPECT_EQ(Names("~y&"), std::vector<std::string>{"x~y&z"});
  EXPECT_EQ(Names("[draft]"), std::vector<std::string>{"[draft]"});
  EXPECT_EQ(Names("#1"), std::vector<std::string>{"rule #1"});
  EXPECT_TRUE(Names("\\").empty());
  EXPECT_TRUE(Names(",").empty());
}

TEST_F(CatalogueLocatorTest, AnEmptyTextFindsNothing) {
  store_.AddFunction("Function");
  EXPECT_TRUE(Find("").empty());
  EXPECT_TRUE(Find("  ").empty());
  EXPECT_TRUE(Find("function", 0).empty());
}

TEST_F(CatalogueLocatorTest, AnEmptyCatalogueIsNoFailure) {
  EXPECT_TRUE(Find("anything").empty());
}

TEST_F(CatalogueLocatorTest, ATextThatIsTypedOnIsSearchedForFromThere) {
  for (const char* const name : {"Late fee", "Late order", "Elated", "Plate", "Late"}) store_.AddFunction(name);
  CatalogueLocator locator(store_.Repository(), store_.ProjectKey());
  const auto first = locator.Find("lat", 50);
  while (first->Continue()) {
  }
  EXPECT_EQ(first->Percent(), 100);
  // Nothing is left to be searched, so what is new is not found.
  store_.AddFunction("Late and new");
  const auto narrowed = first->NarrowedTo("late ");
  ASSERT_NE(narrowed, nullptr);
  EXPECT_FALSE(narrowed->Continue());
  std::vector<std::string> names;
  for (const auto& entry : narrowed->Best()) names.push_back(entry.name);
  EXPECT_EQ(names, (std::vector<std::string>{"Late", "Late fee", "Late order", "Plate", "Elated"}));
  const auto further = narrowed->NarrowedTo("late f");
  ASSERT_NE(further, nullptr);
  EXPECT_FALSE(further->Continue());
  ASSERT_EQ(further->Best().size(), 1U);
  EXPECT_EQ(further->Best()[0], Find("late fee").at(0));
}

TEST_F(CatalogueLocatorTest, AnotherTextIsSearchedForAnew) {
  for (const char* const name : {"Late fee", "Late order", "Late"}) store_.AddFunction(name);
  CatalogueLocator locator(store_.Repository(), store_.ProjectKey());
  const auto all = locator.Find("late", 50);
  while (all->Continue()) {
  }
  EXPECT_EQ(all->NarrowedTo("lat"), nullptr);
  EXPECT_EQ(all->NarrowedTo("xlate"), nullptr);
  EXPECT_EQ(locator.Find("", 50)->NarrowedTo("late"), nullptr);
  // One of the matches was left out, and it may be the one that the longer text means.
  const auto best = locator.Find("late", 2);
  while (best->Continue()) {
  }
  EXPECT_EQ(best->NarrowedTo("late o"), nullptr);
}

// More IDs than one run, with gaps.
TEST_F(CatalogueLocatorTest, RunsOfIDsLeaveNothingOut) {
  const auto transaction = store_.Repository().BeginTransaction();
  const auto set = store_.AddRuleSet("Set");
  int expected = 0;
  for (int at = 0; at < 9000; ++at) {
    if (at % 1000 == 999) {
      store_.AddRule(set, "Wanted " + std::to_string(at), at);
      ++expected;
    } else {
      store_.Add("RULE", "x", {{"RuleName", std::string("other")}});
    }
  }
  transaction->Commit();
  EXPECT_EQ(Names("wanted", 100).size(), static_cast<std::size_t>(expected));
}

}  // namespace
}  // namespace qmrules::desktop
