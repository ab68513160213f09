#include "desktop/options/optionchecks.h"

#include <gtest/gtest.h>

namespace qmrules::desktop {
namespace {

std::string Name(const std::string& text) {
  return CheckObjectName(text).toStdString();
}

std::string Templates(const std::vector<ListedText>& texts) {
  return CheckTemplates(texts).toStdString();
}

std::string Folders(const std::string& folder) {
  return CheckFolders(std::vector<ListedText>{{folder, true}}).toStdString();
}

TEST(OptionChecks, ANameIsNeitherBlankNorPadded) {
  EXPECT_EQ(Name("Unassigned"), "");
  EXPECT_EQ(Name("未割当"), "");
  EXPECT_EQ(Name(""), "Enter a name.");
  EXPECT_EQ(Name("  "), "Enter a name.");
  EXPECT_EQ(Name(" Unassigned"), "The name has blanks around it; take them away.");
  EXPECT_EQ(Name("Unassigned "), "The name has blanks around it; take them away.");
}

TEST(OptionChecks, AStoredTextHoldsNoControlCharacter) {
  EXPECT_EQ(CheckStoredText(std::string("two\nlines")).toStdString(), "");
  EXPECT_EQ(CheckStoredText(std::string("a\x02z")).toStdString(), "The text holds a control character; type it anew.");
  EXPECT_EQ(Name("a\x02z"), "The text holds a control character; type it anew.");
}

TEST(OptionChecks, ATemplateIsAPattern) {
  EXPECT_EQ(Templates({}), "");
  EXPECT_EQ(Templates({{"FILLER*", true}, {"WS-[A-F]##?", false}}), "");
  EXPECT_EQ(Templates({{"WS-[A", false}}),
            "“WS-[A” is no template: each “[” needs its “]”, and a range goes upwards, as in [A-F].");
  EXPECT_EQ(Templates({{"WS-[F-A]", true}}),
            "“WS-[F-A]” is no template: each “[” needs its “]”, and a range goes upwards, as in [A-F].");
}

TEST(OptionChecks, AListHasNoEmptyAndNoRepeatedLines) {
  EXPECT_EQ(Templates({{"A*", true}, {" ", true}}), "A line of the list is empty.");
  EXPECT_EQ(Templates({{"A*", true}, {"a*", false}}), "“a*” stands in the list twice.");
}

TEST(OptionChecks, AFolderLiesWithinTheWorkspace) {
  EXPECT_EQ(Folders("policy/copy"), "");
  EXPECT_EQ(Folders("policy\\copy"), "");
  EXPECT_EQ(Folders("."), "");
  EXPECT_EQ(Folders("policy/../copy"), "");
  EXPECT_EQ(Folders("/usr/copy"), "“/usr/copy” is named from the root of the disk; name it relative to the workspace.");
  EXPECT_EQ(Folders("C:\\copy"), "“C:\\copy” is named from the root of the disk; name it relative to the workspace.");
  EXPECT_EQ(Folders("policy/../../copy"),
            "“policy/../../copy” lies outside the workspace; copy it into the workspace.");
}

}  // namespace
}  // namespace qmrules::desktop
