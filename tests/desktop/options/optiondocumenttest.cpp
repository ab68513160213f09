#include "desktop/options/optiondocument.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "desktop/icons/iconset.h"
#include "desktop/options/folderoptions.h"
#include "support/errortext.h"
#include "workbench/options/defaultoptions.h"

namespace qmrules::desktop {
namespace {

using platform::XmlDocument;
using platform::XmlElement;

const OptionSpec& Option(std::string_view name) {
  for (const OptionSpec& option : OptionTable()) {
    if (option.name == name) return option;
  }
  throw std::out_of_range("no such option: " + std::string(name));
}

XmlDocument DefaultsOf(OptionScope scope) {
  switch (scope) {
    case OptionScope::Project:
      return workbench::DefaultProjectOptions();
    case OptionScope::Folder:
      return FolderOptions({});
    case OptionScope::Workspace:
      break;
  }
  return workbench::DefaultGlobalOptions();
}

XmlDocument Parsed(std::string_view text) {
  XmlDocument document;
  document.loadXML(text);
  return document;
}

void Put(XmlDocument& document, std::string_view name, const OptionValue& value) {
  const auto undo = WriteOption(document, DefaultsOf(Option(name).scope), Option(name), value);
}

TEST(OptionTable, EveryOptionHasItsNodeInTheDocumentsThatAProjectStartsWith) {
  for (const OptionSpec& option : OptionTable()) {
    EXPECT_EQ(DefaultsOf(option.scope).selectNodes(option.path).size(), 1U) << option.name;
    EXPECT_TRUE(ReadOption(DefaultsOf(option.scope), option)) << option.name;
  }
}

// Whatever can hold a value.
TEST(OptionTable, HoldsEveryOptionOfThoseDocuments) {
  for (const auto scope : {OptionScope::Project, OptionScope::Workspace}) {
    const XmlDocument document = DefaultsOf(scope);
    std::vector<XmlElement> held;
    for (const OptionSpec& option : OptionTable()) held.push_back(document.selectSingleNode(option.path));
    for (const auto& node : document.selectNodes("//*[@VALUE and not(self::STRING)] | //STRINGS | //CASE[@CHECKED]")) {
      EXPECT_NE(std::ranges::find(held, node), held.end()) << node.xml();
    }
  }
}

TEST(OptionTable, OffersTheChoicesThatTheDocumentsList) {
  for (const OptionSpec& option : OptionTable()) {
    if (option.kind != OptionKind::Choice) continue;
    std::vector<std::string> listed;
    for (const auto& node : DefaultsOf(option.scope).selectSingleNode(option.path).selectNodes("CASE")) {
      listed.push_back(node.AttributeOr("NAME", ""));
    }
    std::vector<std::string> offered;
    for (const OptionChoice& choice : option.choices) offered.emplace_back(choice.value);
    EXPECT_EQ(offered, listed) << option.name;
  }
}

TEST(OptionTable, TheOptionsOfAPageStandTogether) {
  std::set<const OptionPageSpec*> finished;
  const OptionPageSpec* page = nullptr;
  for (const OptionSpec& option : OptionTable()) {
    if (option.page == page) continue;
    EXPECT_TRUE(finished.insert(option.page).second) << option.page->caption;
    page = option.page;
  }
}

TEST(OptionTable, EveryPageHasAPicture) {
  const IconSet icons(IconSet::Background::Light);
  for (const OptionSpec& option : OptionTable()) EXPECT_FALSE(icons.Svg(option.page->icon).isEmpty());
}

TEST(OptionTable, EveryDefaultIsAllowed) {
  for (const OptionSpec& option : OptionTable()) {
    if (option.check == nullptr) continue;
    EXPECT_EQ(option.check(*ReadOption(DefaultsOf(option.scope), option)).toStdString(), "") << option.name;
  }
}

TEST(OptionDocument, AWrittenValueIsReadAgain) {
  XmlDocument document = workbench::DefaultProjectOptions();
  const std::vector<ListedText> folders{{"copy", true}, {"old/copy", false}};
  Put(document, "UnassignedBFName", std::string("Homeless <&>"));
  Put(document, "UnassignedRSDescr", std::string("two\nlines"));
  Put(document, "SegmentValidation", std::string("valid"));
  Put(document, "CollapseSpaces", true);
  Put(document, "const.move", false);
  Put(document, "CopybookFolders", folders);
  EXPECT_EQ(ReadOption(document, Option("UnassignedBFName")), OptionValue(std::string("Homeless <&>")));
  EXPECT_EQ(ReadOption(Parsed(document.xml()), Option("UnassignedRSDescr")), OptionValue(std::string("two\nlines")));
  EXPECT_EQ(ReadOption(document, Option("SegmentValidation")), OptionValue(std::string("valid")));
  EXPECT_EQ(ReadOption(document, Option("CollapseSpaces")), OptionValue(true));
  EXPECT_EQ(ReadOption(document, Option("const.move")), OptionValue(false));
  EXPECT_EQ(ReadOption(document, Option("CopybookFolders")), OptionValue(folders));
}

TEST(OptionDocument, ASwitchIsWrittenInWords) {
  XmlDocument document = workbench::DefaultProjectOptions();
  Put(document, "CollapseSpaces", true);
  Put(document, "const.move", false);
  EXPECT_EQ(document.selectSingleNode(Option("CollapseSpaces").path).getAttribute("VALUE"), "true");
  EXPECT_EQ(document.selectSingleNode(Option("const.move").path).getAttribute("CHECKED"), "false");
}

TEST(OptionDocument, APresenceIsTheNode) {
  XmlDocument document = workbench::DefaultGlobalOptions();
  Put(document, "QMGlossary", false);
  EXPECT_FALSE(document.selectSingleNode(Option("QMGlossary").path));
  EXPECT_EQ(ReadOption(document, Option("QMGlossary")), OptionValue(false));
  Put(document, "QMGlossary", true);
  EXPECT_TRUE(document.selectSingleNode(Option("QMGlossary").path));
}

TEST(OptionDocument, ElementsOfTextsThatStayKeepWhatElseTheyHold) {
  XmlDocument document = workbench::DefaultProjectOptions();
  auto list = document.selectSingleNode(Option("BlackListTemplates").path);
  list.firstChild().setAttribute("SINCE", "1999");
  list.appendChild(document.createElement("REMARK"));
  Put(document, "BlackListTemplates", std::vector<ListedText>{{"WS-*", true}, {"FILLER*", true}});
  EXPECT_EQ(list.selectNodes("STRING").size(), 2U);
  EXPECT_EQ(list.selectSingleNode("STRING[@VALUE='FILLER*']").getAttribute("SINCE"), "1999");
  EXPECT_EQ(list.selectSingleNode("STRING[@VALUE='FILLER*']").getAttribute("CHECKED"), "true");
  EXPECT_TRUE(list.selectSingleNode("REMARK"));
  EXPECT_EQ(ReadOption(document, Option("BlackListTemplates")),
            OptionValue(std::vector<ListedText>{{"WS-*", true}, {"FILLER*", true}}));
}

TEST(OptionDocument, ANodeThatIsMissingComesWithThoseAroundIt) {
  XmlDocument document = Parsed("<OPTIONS><CASE NAME='Ferrowood'><OTHER/></CASE></OPTIONS>");
  EXPECT_FALSE(ReadOption(document, Option("ClosureOptions")));
  Put(document, "ClosureOptions", std::string("triggered"));
  EXPECT_EQ(ReadOption(document, Option("ClosureOptions")), OptionValue(std::string("triggered")));
  EXPECT_EQ(document.selectNodes("/OPTIONS/CASE").size(), 1U);
  EXPECT_TRUE(document.selectSingleNode("/OPTIONS/CASE/OTHER"));
  Put(document, "SourceFormat", std::string("free"));
  EXPECT_EQ(ReadOption(document, Option("SourceFormat")), OptionValue(std::string("free")));
}

// The document without the layout of its text.
std::string Content(const XmlDocument& document) {
  std::string text = document.documentElement().xml();
  std::erase_if(text, [](char character) { return character == ' ' || character == '\n'; });
  return text;
}

TEST(OptionDocument, EveryWriteCanBeTakenBack) {
  for (const OptionSpec& option : OptionTable()) {
    const std::string root = DefaultsOf(option.scope).documentElement().nodeName();
    for (XmlDocument document : {DefaultsOf(option.scope), Parsed("<" + root + "><A/></" + root + ">")}) {
      const std::string before = Content(document);
      OptionValue other = std::string("other");
      if (option.kind == OptionKind::Texts) other = std::vector<ListedText>{{"A*", true}};
      if (option.kind == OptionKind::Boolean) other = true;
      if (option.kind == OptionKind::Presence) other = !std::get<bool>(*ReadOption(document, option));
      const auto undo = WriteOption(document, DefaultsOf(option.scope), option, other);
      EXPECT_EQ(ReadOption(document, option), other) << option.name;
      undo();
      EXPECT_EQ(Content(document), before) << option.name;
    }
  }
}

TEST(FolderOptions, HoldTheEncoding) {
  XmlDocument document = FolderOptions("IBM037");
  EXPECT_EQ(EncodingOf(document), "IBM037");
  Put(document, "sourceEncoding", std::string());
  EXPECT_EQ(EncodingOf(document), "");
}

TEST(OptionDocument, ATextThatXmlCannotHoldChangesNothing) {
  XmlDocument document = Parsed("<OPTIONS/>");
  EXPECT_THROW(Put(document, "UnassignedBFName", std::string("a\x01z")), platform::Error);
  EXPECT_EQ(document.documentElement().xml(), "<OPTIONS/>");
}

TEST(OptionDocument, ADocumentWithoutARootHasNoPlaceForAnOption) {
  XmlDocument document;
  EXPECT_EQ(test::ErrorText([&] { Put(document, "CollapseSpaces", true); }),
            "There is no place for the option CollapseSpaces.");
}

}  // namespace
}  // namespace qmrules::desktop
