#include "workbench/options/sourceoptions.h"

#include <gtest/gtest.h>

#include "workbench/options/defaultoptions.h"

namespace qmrules::workbench {
namespace {

TEST(SourceOptions, AreAtFirstToldFromTheSources) {
  const auto values = ReadSourceOptions(DefaultProjectOptions());
  EXPECT_EQ(values, SourceOptions{});
  EXPECT_EQ(values.format, "auto");
  EXPECT_TRUE(values.copybookFolders.empty());
}

TEST(SourceOptions, AreReadAsTheyWerePut) {
  auto document = DefaultProjectOptions();
  const SourceOptions values{"wide", {"copybooks", "old/<copy> & more"}};
  PutSourceOptions(document, values);
  EXPECT_EQ(ReadSourceOptions(document), values);
  PutSourceOptions(document, {"free", {"one"}});
  EXPECT_EQ(ReadSourceOptions(document), (SourceOptions{"free", {"one"}}));
  EXPECT_EQ(document.selectNodes("//STRINGS[@NAME='CopybookFolders']/STRING").size(), 1U);
}

TEST(SourceOptions, AFolderThatIsNotCheckedDoesNotCount) {
  auto document = DefaultProjectOptions();
  PutSourceOptions(document, {"auto", {"one", "two"}});
  document.selectSingleNode("//STRING[@VALUE='one']").setAttribute("CHECKED", "false");
  EXPECT_EQ(ReadSourceOptions(document).copybookFolders, std::vector<std::string>{"two"});
}

TEST(SourceOptions, ADocumentWithoutThemGetsThem) {
  platform::XmlDocument document;
  document.loadXML("<OPTIONS TITLE=\"Project Options\"><CASE NAME=\"Ferrowood\"/></OPTIONS>");
  EXPECT_EQ(ReadSourceOptions(document), SourceOptions{});
  PutSourceOptions(document, {"fixed", {"copybooks"}});
  EXPECT_EQ(ReadSourceOptions(document), (SourceOptions{"fixed", {"copybooks"}}));
  EXPECT_TRUE(document.selectSingleNode("/OPTIONS/CASE[@NAME='Ferrowood']"));
  EXPECT_EQ(document.selectNodes("//LIST[@NAME='SourceFormat']/CASE").size(), 4U);
}

}  // namespace
}  // namespace qmrules::workbench
