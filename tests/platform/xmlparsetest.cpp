#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/xml.h"
#include "platform/xmlloaderror.h"
#include "support/errortext.h"

namespace qmrules::platform {
namespace {

using test::ErrorText;

using namespace std::string_view_literals;

TEST(XmlParse, ErrorNamesSourceLineAndColumn) {
  EXPECT_EQ(LoadError("<r>\n  <a>\n  </r>"), "a.xml:3:7: Opening and ending tag mismatch: a line 2 and r");
}

TEST(XmlParse, SourceOfATextHasAName) {
  EXPECT_EQ(ErrorText([] { XmlDocument().loadXML("<r"); }), "XML text:1:3: Couldn't find end of Start Tag r line 1");
}

struct BrokenXml {
  const char* defect;
  std::string_view text;
  const char* error;
};

TEST(XmlParse, BrokenTextsAreRefused) {
  const BrokenXml cases[] = {
      {"empty", "", "a.xml:1:1: Document is empty"},
      {"only blanks", " \n ", "a.xml:2:2: Start tag expected, '<' not found"},
      {"no element", "text", "a.xml:1:1: Start tag expected, '<' not found"},
      {"only a declaration", "<?xml version='1.0'?>", "a.xml:1:22: Start tag expected, '<' not found"},
      {"end missing", "<r><a/>", "a.xml:1:8: Premature end of data in tag r line 1"},
      {"two roots", "<r/><s/>", "a.xml:1:5: Extra content at the end of the document"},
      {"text behind the root", "<r/>x", "a.xml:1:5: Extra content at the end of the document"},
      {"attribute twice", "<r a='1' a='2'/>", "a.xml:1:15: Attribute a redefined"},
      {"attribute without quotes", "<r a=1/>", "a.xml:1:6: AttValue: \" or ' expected"},
      {"bare ampersand", "<r>a & b</r>", "a.xml:1:7: EntityRef: no name"},
      {"undefined entity", "<r>&foo;</r>", "a.xml:1:9: Entity 'foo' not defined"},
      {"control character", "<r>\x01</r>", "a.xml:1:4: PCDATA invalid Char value 1"},
      {"control character by reference", "<r a='&#1;'/>", "a.xml:1:11: CharRef: invalid xmlChar value 1"},
      {"malformed UTF-8", "<r>\xFF</r>", "a.xml:1:4: Input is not proper UTF-8, indicate encoding !"},
      {"undeclared prefix", "<n:r/>", "a.xml:1:5: Namespace prefix n on r is not defined"},
      {"declaration not at the front", " <?xml version='1.0'?><r/>",
       "a.xml:1:7: XML declaration allowed only at the start of the document"},
      {"NUL within", "<r>a\0b</r>"sv, "a.xml:1:5: Char 0x0 out of allowed range"},
      {"NUL behind the root", "<r/>\0<s/>"sv, "a.xml:1:5: A NUL character stands behind the root element"},
      {"unknown encoding", "<?xml version='1.0'\n encoding='FOO'?><r/>",
       "a.xml:2:12: The encoding \"FOO\" is not known"},
      {"encoding with a way to pass over errors", "<?xml version='1.0' encoding='UTF-8//IGNORE'?><r/>",
       "a.xml:1:36: String not closed expecting \" or '"},
  };
  for (const auto& each : cases) EXPECT_EQ(LoadError(each.text), each.error) << each.defect;
}

TEST(XmlParse, FailurePrintsNothing) {
  testing::internal::CaptureStderr();
  EXPECT_NE(LoadError("<r>&foo;<a></r>"), "(no error)");
  EXPECT_NE(LoadError("<r>\xFF</r>"), "(no error)");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(XmlParse, FailedLoadLeavesTheDocumentAsBefore) {
  XmlDocument document;
  document.loadXML("<?xml version='1.0' encoding='ISO-8859-1'?><r a='1'/>");
  const XmlElement root = document.documentElement();
  EXPECT_THROW(document.loadXML("<s>"), Error);
  EXPECT_EQ(document.documentElement(), root);
  EXPECT_EQ(root.xml(), R"(<r a="1"/>)");
}

TEST(XmlParse, ElementsOfTheFormerContentStayUsable) {
  XmlDocument document;
  document.loadXML("<r><a/></r>");
  XmlElement old = document.documentElement();
  document.loadXML("<s/>");
  old.firstChild().setAttribute("i", "1");
  EXPECT_EQ(old.xml(), R"(<r><a i="1"/></r>)");
  EXPECT_EQ(ErrorText([&] { document.documentElement().appendChild(old); }),
            "The element \"r\" belongs to another document; place a copy made by importNode.");
}

TEST(XmlParse, TextIsUtf8WhateverItsDeclarationSays) {
  for (const auto* encoding : {"UTF-8", "ISO-8859-1", "SHIFT_JIS", "EUC-KR", "ISO-8859-5", "UTF-16", "IBM1047"}) {
    XmlDocument document;
    document.loadXML("<?xml version=\"1.0\" encoding=\"" + std::string(encoding) + "\"?><r n=\"é日가Д\"/>");
    EXPECT_EQ(document.documentElement().getAttribute("n"), "é日가Д") << encoding;
  }
}

TEST(XmlParse, ByteOrderMarkIsPassedOver) {
  XmlDocument document;
  document.loadXML("\xEF\xBB\xBF<?xml version='1.0' encoding='EUC-KR'?><r/>");
  EXPECT_EQ(document.documentElement().nodeName(), "r");
}

TEST(XmlParse, XmlIsAUtf8TextThatLoadsAgain) {
  XmlDocument document;
  document.loadXML("<?xml version='1.0' encoding='SHIFT_JIS'?><!-- c --><r n='日'/>");
  EXPECT_EQ(document.xml(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- c -->\n<r n=\"日\"/>\n");
}

TEST(XmlParse, LineEndsAreNormalised) {
  XmlDocument document;
  document.loadXML("<r>a\r\nb\rc\nd</r>");
  EXPECT_EQ(document.documentElement().text(), "a\nb\nc\nd");
}

TEST(XmlParse, LinesBeyond65535AreStillTold) {
  const std::string text = "<r>" + std::string(100000, '\n') + "<a></r>";
  EXPECT_EQ(LoadError(text), "a.xml:100001:8: Opening and ending tag mismatch: a line 100001 and r");
}

}  // namespace
}  // namespace qmrules::platform
