#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/xml.h"
#include "platform/xmlloaderror.h"
#include "support/errortext.h"
#include "support/temporaryfolder.h"

// Documents made to harm the reader.

namespace qmrules::platform {
namespace {

using test::TemporaryFolder;

using test::ErrorText;

std::string Nested(int depth) {
  std::string text;
  for (int i = 0; i < depth; ++i) text += "<a>";
  for (int i = 0; i < depth; ++i) text += "</a>";
  return text;
}

TEST(XmlHostile, EntitiesThatMultiplyAreRefusedAtTheFirst) {
  std::string text = "<!DOCTYPE r [\n<!ENTITY a0 \"lol\">\n";
  for (int i = 1; i < 30; ++i) {
    const std::string before = "&a" + std::to_string(i - 1) + ";";
    text += "<!ENTITY a" + std::to_string(i) + " \"" + before + before + before + "\">\n";
  }
  EXPECT_EQ(LoadError(text + "]>\n<r>&a29;</r>"),
            "a.xml:2:18: The document defines the entity \"a0\"; entities are not taken");
}

TEST(XmlHostile, ParameterEntityIsRefused) {
  EXPECT_EQ(LoadError("<!DOCTYPE r [<!ENTITY % p \"<!ELEMENT r ANY>\"> %p;]><r/>"),
            "a.xml:1:45: The document defines the entity \"p\"; entities are not taken");
}

TEST(XmlHostile, FilesFromOutsideAreNotRead) {
  const TemporaryFolder folder;
  folder.Write("secret.txt", "secret");
  const std::string uri = "file://" + (folder.File("secret.txt"));
  EXPECT_EQ(LoadError("<!DOCTYPE r [\n<!ENTITY x SYSTEM\n \"" + uri + "\">\n]><r>&x;</r>").substr(0, 8), "a.xml:3:");
  XmlDocument document;
  document.loadXML("<!DOCTYPE r SYSTEM \"" + uri + "\"><r a='1'/>");
  EXPECT_EQ(document.documentElement().xml(), R"(<r a="1"/>)");
}

TEST(XmlHostile, UnparsedEntityIsRefused) {
  EXPECT_EQ(LoadError("<!DOCTYPE r [<!NOTATION n SYSTEM 'n'>\n<!ENTITY x SYSTEM 'x' NDATA n>]><r/>"),
            "a.xml:2:30: The document defines the entity \"x\"; entities are not taken");
}

TEST(XmlHostile, EntityOfAnUnreadDeclarationIsRefused) {
  EXPECT_EQ(LoadError("<!DOCTYPE r SYSTEM \"none.dtd\"><r>&x;</r>"), "a.xml:1:37: Entity 'x' not defined");
  EXPECT_EQ(LoadError("<!DOCTYPE r SYSTEM \"none.dtd\"><r a='&x;'/>"), "a.xml:1:40: Entity 'x' not defined");
}

TEST(XmlHostile, DefaultValuesThatMultiplyAreRefused) {
  EXPECT_EQ(LoadError("<!DOCTYPE r [<!ATTLIST a b CDATA \"xxxxxxxx\">]><r><a/><a/><a/></r>"),
            "a.xml:1:44: The document gives the attribute \"b\" a default value; such are not taken");
}

TEST(XmlHostile, HarmlessDeclarationsAreTaken) {
  XmlDocument document;
  document.loadXML("<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r b CDATA #IMPLIED c (x|y) #IMPLIED>]><r b='1' c='x'/>");
  EXPECT_EQ(document.documentElement().xml(), R"(<r b="1" c="x"/>)");
}

TEST(XmlHostile, ThePredefinedEntitiesStay) {
  XmlDocument document;
  document.loadXML("<r>&lt;&gt;&amp;&quot;&apos;&#65;&#x1F600;</r>");
  EXPECT_EQ(document.documentElement().text(), "<>&\"'A😀");
}

TEST(XmlHostile, DepthIsBounded) {
  EXPECT_EQ(LoadError(Nested(256)), "(no error)");
  EXPECT_EQ(LoadError(Nested(257)), "a.xml:1:771: Elements are nested more than 256 deep");
  EXPECT_EQ(LoadError(Nested(1000000)), "a.xml:1:771: Elements are nested more than 256 deep");
  EXPECT_EQ(LoadError(Nested(4), {.depth = 3}), "a.xml:1:12: Elements are nested more than 3 deep");
  EXPECT_EQ(LoadError(Nested(2048), {.depth = 2048}), "(no error)");
}

TEST(XmlHostile, SizeIsBounded) {
  EXPECT_EQ(LoadError("<r></r>", {.bytes = 7}), "(no error)");
  EXPECT_EQ(LoadError("<rr></r>", {.bytes = 7}), "a.xml: the document has 8 bytes, and at most 7 are read");
}

TEST(XmlHostile, FileIsMeasuredBeforeItIsRead) {
  const TemporaryFolder folder;
  folder.Write("a.xml", "");
  std::filesystem::resize_file(folder.File("a.xml"), std::uintmax_t{1} << 40);
  EXPECT_EQ(ErrorText([&] { XmlDocument().load(folder.File("a.xml")); }),
            "The file \"" + (folder.File("a.xml")) +
                "\" cannot be read: it has 1099511627776 bytes, and at most 268435456 are read.");
}

TEST(XmlHostile, HugeAttributeWithinTheLimitIsKeptWhole) {
  const std::string value(20000000, 'x');
  XmlDocument document;
  document.loadXML("<r a='" + value + "'/>");
  EXPECT_EQ(document.documentElement().getAttribute("a"), value);
}

TEST(XmlHostile, HugeAttributeBeyondTheLimitIsRefused) {
  EXPECT_EQ(LoadError("<r a='" + std::string(1000000, 'x') + "'/>", {.bytes = 1000000}),
            "a.xml: the document has 1000009 bytes, and at most 1000000 are read");
}

TEST(XmlHostile, HugeAttributeWithoutEndIsRefused) {
  EXPECT_EQ(LoadError("<r a='" + std::string(1000000, 'x')), "a.xml:1:1000007: AttValue: ' expected");
}

TEST(XmlHostile, ManyAttributesAreTakenInReasonableTime) {
  std::string text = "<r";
  for (int i = 0; i < 2000; ++i) text += " a" + std::to_string(i) + "='1'";
  XmlDocument document;
  document.loadXML(text + "/>");
  EXPECT_EQ(document.documentElement().getAttribute("a1999"), "1");
}

}  // namespace
}  // namespace qmrules::platform
