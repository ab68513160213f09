#include "catalogue/nodekeys.h"

#include <gtest/gtest.h>

#include "platform/error.h"
#include "shell/text.h"

namespace qmrules::catalogue {
namespace {

std::string FailureOf(std::string_view image, std::string_view key) {
  try {
    return "ID " + std::to_string(NodeKeyID(image, key));
  } catch (const platform::Error& error) {
    return error.what();
  }
}

TEST(NodeKeys, AreMadeOfLettersAndIDs) {
  EXPECT_EQ(FunctionNodeKey(7), "f7");
  EXPECT_EQ(RuleSetNodeKey(7, 12), "f7s12");
  EXPECT_EQ(RuleNodeKey(7, 2147483647), "f7r2147483647");
  EXPECT_EQ(RuleSetRowKey(12), "s12");
  EXPECT_EQ(RuleRowKey(30), "r30");
  EXPECT_EQ(ElementRowKey(4), "k4");
}

TEST(NodeKeys, GiveTheIDBackByTheImage) {
  EXPECT_EQ(NodeKeyID("BUSINESSFUNC", FunctionNodeKey(7)), 7);
  EXPECT_EQ(NodeKeyID("RULESET", RuleSetNodeKey(7, 12)), 12);
  EXPECT_EQ(NodeKeyID("RULE", RuleNodeKey(7, 2147483647)), 2147483647);
}

TEST(NodeKeys, RowKeysGiveTheIDBackToo) {
  EXPECT_EQ(NodeKeyID("RULESET", RuleSetRowKey(12)), 12);
  EXPECT_EQ(NodeKeyID("RULE", RuleRowKey(30)), 30);
}

TEST(NodeKeys, ARuleSetUnderTwoFunctionsHasTwoKeysAndOneID) {
  const std::string here = RuleSetNodeKey(1, 5);
  const std::string there = RuleSetNodeKey(2, 5);
  EXPECT_NE(here, there);
  EXPECT_EQ(NodeKeyID("RULESET", here), NodeKeyID("RULESET", there));
}

TEST(NodeKeys, ARenameFindsEveryOccurrenceOfARuleSet) {
  const shell::LikePattern pattern(RuleSetOccurrences(5));
  EXPECT_TRUE(pattern.Matches(RuleSetNodeKey(1, 5)));
  EXPECT_TRUE(pattern.Matches(RuleSetNodeKey(22, 5)));
  EXPECT_FALSE(pattern.Matches(RuleSetNodeKey(1, 15)));
  EXPECT_FALSE(pattern.Matches(RuleSetNodeKey(1, 51)));
  EXPECT_FALSE(pattern.Matches(RuleNodeKey(1, 5)));
  EXPECT_FALSE(pattern.Matches(FunctionNodeKey(5)));
}

TEST(NodeKeys, OccurrencesOfARuleAreOfNothingElse) {
  const shell::LikePattern pattern(RuleOccurrences(5));
  EXPECT_TRUE(pattern.Matches(RuleNodeKey(1, 5)));
  EXPECT_FALSE(pattern.Matches(RuleSetNodeKey(1, 5)));
  EXPECT_FALSE(pattern.Matches(RuleNodeKey(5, 1)));
}

TEST(NodeKeys, OnlyTheKeyTellsTheIDWhateverTheName) {
  // A name such as "order rules r9" never enters a key: keys have the letters f, s, r and digits only.
  EXPECT_EQ(RuleNodeKey(3, 8).find_first_not_of("frs0123456789"), std::string::npos);
  EXPECT_EQ(NodeKeyID("RULE", RuleNodeKey(3, 8)), 8);
}

TEST(NodeKeys, APlaceholderHasNoID) {
  EXPECT_EQ(FailureOf("RULE", ""), "The node key \"\" with the image \"RULE\" holds no ID.");
  EXPECT_EQ(FailureOf("BUSINESSFUNC", ""), "The node key \"\" with the image \"BUSINESSFUNC\" holds no ID.");
}

TEST(NodeKeys, KeysOfAnotherKindAreRefused) {
  EXPECT_EQ(FailureOf("RULE", "f1s2"), "The node key \"f1s2\" with the image \"RULE\" holds no ID.");
  EXPECT_EQ(FailureOf("RULESET", "f1r2"), "The node key \"f1r2\" with the image \"RULESET\" holds no ID.");
  EXPECT_EQ(FailureOf("BUSINESSFUNC", "f1s2"), "The node key \"f1s2\" with the image \"BUSINESSFUNC\" holds no ID.");
  EXPECT_EQ(FailureOf("RULELOG", "f1"), "The node key \"f1\" with the image \"RULELOG\" holds no ID.");
  EXPECT_EQ(FailureOf("RULE", "f1r99999999999"),
            "The node key \"f1r99999999999\" with the image \"RULE\" holds no ID.");
  EXPECT_EQ(FailureOf("RULE", "f1r-2"), "The node key \"f1r-2\" with the image \"RULE\" holds no ID.");
}

}  // namespace
}  // namespace qmrules::catalogue
