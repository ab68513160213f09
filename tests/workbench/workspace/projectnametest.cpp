#include "workbench/workspace/projectname.h"

#include <gtest/gtest.h>

#include <string>

#include "support/errortext.h"

namespace qmrules::workbench {
namespace {

using test::ErrorText;

std::string Refused(const std::string& name) {
  EXPECT_FALSE(IsProjectName(name));
  return ErrorText([&] { ProjectFolderName(name); });
}

TEST(ProjectName, PlainNamesAreTheFoldersName) {
  EXPECT_EQ(ProjectFolderName("Policy billing 2"), "Policy billing 2");
  EXPECT_EQ(ProjectFolderName("\u00c9tudes \u65e5\u672c"), "\u00c9tudes \u65e5\u672c");
}

TEST(ProjectName, WhatFileSystemsDoNotTakeIsEncoded) {
  EXPECT_EQ(ProjectFolderName("A/B\\C:D"), "A%2FB%5CC%3AD");
  EXPECT_EQ(ProjectFolderName("50% \"net\"?"), "50%25 %22net%22%3F");
  EXPECT_EQ(ProjectFolderName("a<b>c|d*"), "a%3Cb%3Ec%7Cd%2A");
}

TEST(ProjectName, PointsAtTheEndsAreEncoded) {
  EXPECT_EQ(ProjectFolderName("."), "%2E");
  EXPECT_EQ(ProjectFolderName(".."), "%2E%2E");
  EXPECT_EQ(ProjectFolderName(".hidden"), "%2Ehidden");
  EXPECT_EQ(ProjectFolderName("v1.2."), "v1.2%2E");
}

TEST(ProjectName, DeviceNamesAreEncoded) {
  EXPECT_EQ(ProjectFolderName("CON"), "%43ON");
  EXPECT_EQ(ProjectFolderName("nul.old"), "%6Eul.old");
  EXPECT_EQ(ProjectFolderName("COM10"), "COM10");
  EXPECT_EQ(ProjectFolderName("Console"), "Console");
}

TEST(ProjectName, TheNameIsReadOffTheFolder) {
  for (const std::string name : {"Demo", "A/B", "100%", "..", "CON", "v1.", "\u00dcbung?"}) {
    EXPECT_EQ(ProjectNameOfFolder(ProjectFolderName(name)), name);
  }
}

TEST(ProjectName, OtherFoldersHaveNoProject) {
  for (const std::string folder : {"", "a%", "a%2", "a%2f", "a%GG", "%41", ".", "a?", " a", "CON", "a\x01"}) {
    EXPECT_EQ(ProjectNameOfFolder(folder), std::nullopt) << folder;
  }
}

TEST(ProjectName, InadmissibleNamesAreTold) {
  const std::string end = ". Choose another name.";
  EXPECT_EQ(Refused(""), "The project name \"\" is not admissible: it is empty" + end);
  EXPECT_EQ(Refused("  "), "The project name \"  \" is not admissible: it is empty" + end);
  EXPECT_EQ(Refused(" a"), "The project name \" a\" is not admissible: it begins or ends with a blank" + end);
  EXPECT_EQ(Refused("a "), "The project name \"a \" is not admissible: it begins or ends with a blank" + end);
  EXPECT_EQ(Refused("a\tb"), "The project name \"a\tb\" is not admissible: it holds a control character" + end);
  EXPECT_EQ(Refused("a\xff"), "The project name \"a\xff\" is not admissible: it is not well-formed UTF-8" + end);
}

TEST(ProjectName, AFoldersNameIsBoundedInBytes) {
  EXPECT_EQ(ProjectFolderName(std::string(250, 'a')).size(), 250U);
  EXPECT_EQ(Refused(std::string(251, 'a')), "The project name \"" + std::string(100, 'a') +
                                                "...\" is not admissible: it is too long for a folder's name. Choose "
                                                "another name.");
  EXPECT_FALSE(IsProjectName(std::string(84, '/')));
}

}  // namespace
}  // namespace qmrules::workbench
