#include "workbench/options/optionsfile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>

#include "support/errortext.h"
#include "support/temporaryfolder.h"

namespace qmrules::workbench {
namespace {

using platform::XmlDocument;
using test::ErrorText;

constexpr const char* optionsText = R"(<OPTIONS><CASE NAME="A"><TEXT NAME="T" VALUE="old"/></CASE></OPTIONS>)";
constexpr const char* textPath = "/OPTIONS/CASE[@NAME='A']/TEXT[@NAME='T']";

class OptionsFileTest : public testing::Test {
 protected:
  OptionsFileTest() : path_(folder_.Write("Options.xml", optionsText)) {}

  static std::string ValueIn(const platform::XmlDocument& document) {
    return RequireOption(document, textPath, "Options.xml").AttributeOr("VALUE", "");
  }
  std::string StoredValue() const { return ValueIn(OptionsFile(path_).Document()); }

  test::TemporaryFolder folder_;
  std::string path_;
};

TEST_F(OptionsFileTest, TheFileIsReadWhenItIsFirstAskedFor) {
  OptionsFile options(folder_.File("Later.xml"));
  folder_.Write("Later.xml", optionsText);
  EXPECT_EQ(ValueIn(options.Document()), "old");
}

TEST_F(OptionsFileTest, TheDocumentIsReadOnce) {
  OptionsFile options(path_);
  options.Document();
  std::filesystem::remove(path_);
  EXPECT_EQ(ValueIn(options.Document()), "old");
}

TEST_F(OptionsFileTest, AMissingFileIsTold) {
  const auto path = folder_.File("None.xml");
  EXPECT_EQ(ErrorText([&] { OptionsFile(path).Document(); }),
            path + " is missing; put back a copy of the file, or take the options file of a new workspace.");
}

TEST_F(OptionsFileTest, AFileThatIsNoXmlIsTold) {
  const auto path = folder_.Write("Broken.xml", "<OPTIONS><CASE></OPTIONS>");
  const auto text = ErrorText([&] { OptionsFile(path).Document(); });
  EXPECT_EQ(text.substr(0, path.size() + 3), path + ":1:") << text;
}

TEST_F(OptionsFileTest, AnotherDocumentIsNoOptionsDocument) {
  const auto path = folder_.Write("Other.xml", "<repstry/>");
  EXPECT_EQ(ErrorText([&] { OptionsFile(path).Document(); }),
            path +
                " lacks the option /OPTIONS; put back a copy of the file, or take the node from the options file of a "
                "new workspace.");
}

TEST_F(OptionsFileTest, AFailedReadingIsTriedAnew) {
  OptionsFile options(folder_.File("Later.xml"));
  ErrorText([&] { options.Document(); });
  folder_.Write("Later.xml", optionsText);
  EXPECT_EQ(ValueIn(options.Document()), "old");
}

TEST_F(OptionsFileTest, AMissingNodeIsToldWithFileAndPath) {
  OptionsFile options(path_);
  EXPECT_EQ(
      ErrorText([&] { RequireOption(options.Document(), "/OPTIONS/LIST", "Options.xml"); }),
      "Options.xml lacks the option /OPTIONS/LIST; put back a copy of the file, or take the node from the options "
      "file of a new workspace.");
  EXPECT_EQ(ErrorText([&] { options.DisplayDialog("/OPTIONS/LIST"); }),
            path_ +
                " lacks the option /OPTIONS/LIST; put back a copy of the file, or take the node from the options "
                "file of a new workspace.");
}

TEST_F(OptionsFileTest, WithoutAScreenTheStoredOptionsAreTaken) {
  OptionsFile options(path_);
  EXPECT_TRUE(options.DisplayDialog("/OPTIONS/CASE[@NAME='A']"));
  EXPECT_EQ(test::ReadBytes(path_), optionsText);
}

TEST_F(OptionsFileTest, AcceptedOptionsHoldAndAreStored) {
  OptionsFile options(path_, [](const XmlDocument& copy, std::string_view node) {
    copy.selectSingleNode(node).selectSingleNode("TEXT").setAttribute("VALUE", "new");
    return true;
  });
  auto& document = options.Document();
  EXPECT_TRUE(options.DisplayDialog("/OPTIONS/CASE[@NAME='A']"));
  EXPECT_EQ(ValueIn(document), "new");
  EXPECT_EQ(StoredValue(), "new");
}

TEST_F(OptionsFileTest, ACancelledDialogChangesNothing) {
  OptionsFile options(path_, [](const XmlDocument& copy, std::string_view node) {
    copy.selectSingleNode(node).selectSingleNode("TEXT").setAttribute("VALUE", "new");
    return false;
  });
  EXPECT_FALSE(options.DisplayDialog("/OPTIONS/CASE[@NAME='A']"));
  EXPECT_EQ(ValueIn(options.Document()), "old");
  EXPECT_EQ(test::ReadBytes(path_), optionsText);
}

TEST_F(OptionsFileTest, AFailingDialogChangesNothing) {
  OptionsFile options(path_, [](const XmlDocument& copy, std::string_view node) -> bool {
    copy.selectSingleNode(node).selectSingleNode("TEXT").setAttribute("VALUE", "new");
    throw std::runtime_error("the window is gone");
  });
  EXPECT_THROW(options.DisplayDialog("/OPTIONS/CASE[@NAME='A']"), std::runtime_error);
  EXPECT_EQ(ValueIn(options.Document()), "old");
}

TEST_F(OptionsFileTest, OptionsThatCannotBeStoredDoNotHold) {
  const auto path = folder_.Write("gone/Options.xml", optionsText);
  OptionsFile options(path, [&](const XmlDocument& copy, std::string_view node) {
    copy.selectSingleNode(node).selectSingleNode("TEXT").setAttribute("VALUE", "new");
    std::filesystem::remove_all(folder_.Path() / "gone");
    return true;
  });
  EXPECT_EQ(ErrorText([&] { options.DisplayDialog("/OPTIONS/CASE[@NAME='A']"); }),
            "The file \"" + path + "\" cannot be written: there is no such folder.");
  EXPECT_EQ(ValueIn(options.Document()), "old");
}

TEST_F(OptionsFileTest, SaveStoresTheDocumentAsItStands) {
  OptionsFile options(path_);
  options.Document().selectSingleNode(textPath).setAttribute("VALUE", "saved \u00e9");
  options.Save();
  EXPECT_EQ(StoredValue(), "saved \u00e9");
}

TEST_F(OptionsFileTest, BackslashesAreTakenInThePath) {
  EXPECT_EQ(ValueIn(OptionsFile(folder_.Path().string() + "\\Options.xml").Document()), "old");
}

}  // namespace
}  // namespace qmrules::workbench
