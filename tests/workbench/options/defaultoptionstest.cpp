#include "workbench/options/defaultoptions.h"

#include <gtest/gtest.h>

#include <string>

namespace qmrules::workbench {
namespace {

const std::string catalogue = "/LIST[@NAME='FW']/CASE[@NAME='CRD']/LIST[@NAME='CRDOptions']";
const std::string fromRoot = "/OPTIONS/CASE[@NAME='Ferrowood']" + catalogue;
const std::string fromAnywhere = "/" + catalogue;

struct OptionCase {
  std::string path;
  std::string attribute;  // "" for a node that is no value itself
  std::string value;
};

// Every path by which an option is read, in the words in which it is read.
const OptionCase projectOptions[] = {
    {fromRoot + "/CASE[@NAME='CRDConfig']", "", ""},
    {fromRoot + "/CASE[@NAME='CRDConfig']/TEXT[@NAME=\"UnassignedBFName\"]", "VALUE", "Unassigned Business Function"},
    {fromRoot + "/CASE[@NAME='CRDConfig']/TEXT[@NAME=\"UnassignedBFDescr\"]", "VALUE",
     "Holds rule sets that belong to no other business function."},
    {fromRoot + "/CASE[@NAME='CRDConfig']/TEXT[@NAME=\"UnassignedRSName\"]", "VALUE", "Unassigned Rule Set"},
    {fromRoot + "/CASE[@NAME='CRDConfig']/TEXT[@NAME=\"UnassignedRSDescr\"]", "VALUE",
     "Holds rules that belong to no other rule set."},
    {fromRoot + "/CASE[@NAME='RuleValidation']", "", ""},
    {fromRoot + "/CASE[@NAME='RuleValidation']/LIST[@NAME='SegmentValidation']", "VALUE", "leave"},
    {fromAnywhere + "/CASE[@NAME='RuleValidation']/BOOL[@NAME='CollapseSpaces']", "VALUE", "false"},
    {fromAnywhere + "/CASE[@NAME='AutoDetect']/STRINGS[@NAME='BlackListTemplates']", "", ""},
    {fromAnywhere + "/CASE[@NAME='RuleExport']/LIST[@NAME='ClosureOptions']", "VALUE", "none"},
    {"//CASE[@ID='ImpactAnalysis']/GROUP[@NAME='Relationships']/LIST[@NAME='Internal']/CASE[@NAME='const.move']",
     "CHECKED", "true"},
    {"/OPTIONS/CASE[@NAME='Sources']//CASE[@NAME='COBOL']/LIST[@NAME='SourceFormat']", "VALUE", "auto"},
    {"/OPTIONS/CASE[@NAME='Sources']//CASE[@NAME='COBOL']/STRINGS[@NAME='CopybookFolders']", "", ""},
};

TEST(DefaultOptions, EveryPathOfTheProjectSelectsOneNodeWithItsValue) {
  const auto document = DefaultProjectOptions();
  for (const auto& [path, attribute, value] : projectOptions) {
    const auto nodes = document.selectNodes(path);
    ASSERT_EQ(nodes.size(), 1U) << path;
    EXPECT_NE(nodes.front().AttributeOr("TITLE", ""), "") << path;
    EXPECT_EQ(attribute.empty() ? "" : nodes.front().AttributeOr(attribute, "(none)"), value) << path;
  }
}

TEST(DefaultOptions, TheGlossaryIsInstalled) {
  const auto document = DefaultGlobalOptions();
  const auto nodes = document.selectNodes(
      "/OPTIONS/CASE[@NAME='Methods']/LIST[@NAME='Methods']/CASE[@NAME='Quillglass']/LIST[@NAME='Components']"
      "/CASE[@NAME='QMGlossary']");
  EXPECT_EQ(nodes.size(), 1U);
}

TEST(DefaultOptions, TheBlackListHasTwoExamplesThatDoNotCount) {
  const auto document = DefaultProjectOptions();
  const auto examples = document.selectNodes("//STRINGS[@NAME='BlackListTemplates']/*");
  ASSERT_EQ(examples.size(), 2U);
  for (const auto& example : examples) {
    EXPECT_NE(example.AttributeOr("VALUE", ""), "");
    EXPECT_EQ(example.AttributeOr("CHECKED", ""), "false");
  }
}

TEST(DefaultOptions, AChoiceListsItsValuesAndHasOneOfThem) {
  const auto document = DefaultProjectOptions();
  const auto choices = [&](const std::string& name) {
    std::string text;
    for (const auto& choice : document.selectNodes("//LIST[@NAME='" + name + "']/CASE")) {
      text += choice.AttributeOr("NAME", "") + ",";
    }
    return text;
  };
  EXPECT_EQ(choices("SegmentValidation"), "leave,delete,valid,");
  EXPECT_EQ(choices("ClosureOptions"), "none,triggered,");
  EXPECT_EQ(choices("SourceFormat"), "auto,fixed,wide,free,");
  for (const auto& list : document.selectNodes("//LIST[@VALUE]")) {
    const auto chosen = list.selectNodes("CASE[@NAME='" + list.AttributeOr("VALUE", "") + "']");
    EXPECT_EQ(chosen.size(), 1U) << list.AttributeOr("NAME", "");
  }
}

TEST(DefaultOptions, EveryNodeThatAUserReadsHasATitle) {
  for (const auto& document : {DefaultProjectOptions(), DefaultGlobalOptions()}) {
    for (const auto& node : document.selectNodes("//*[not(self::STRING)]")) {
      EXPECT_NE(node.AttributeOr("TITLE", ""), "") << node.xml();
    }
  }
}

TEST(DefaultOptions, EachCallMakesADocumentOfItsOwn) {
  DefaultProjectOptions().selectSingleNode("//TEXT").setAttribute("VALUE", "changed");
  EXPECT_EQ(DefaultProjectOptions().selectSingleNode("//TEXT").AttributeOr("VALUE", ""),
            "Unassigned Business Function");
}

}  // namespace
}  // namespace qmrules::workbench
