#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/xml.h"
#include "support/errortext.h"

namespace qmrules::platform {
namespace {

using test::ErrorText;

using namespace std::string_view_literals;
using testing::ElementsAre;
using testing::IsEmpty;

XmlDocument Parsed(std::string_view text) {
  XmlDocument document;
  document.loadXML(text);
  return document;
}

std::vector<std::string> NamesOf(const std::vector<XmlElement>& elements) {
  std::vector<std::string> names;
  for (const auto& element : elements) names.push_back(element.nodeName());
  return names;
}

TEST(XmlElement, DefaultHandleIsNoElement) {
  const XmlElement none;
  EXPECT_FALSE(none);
  EXPECT_EQ(none, XmlElement());
  EXPECT_EQ(ErrorText([&] { none.nodeName(); }), "The XML element that is asked for is not there.");
  EXPECT_EQ(ErrorText([&] { none.selectSingleNode("a"); }), "The XML element that is asked for is not there.");
  EXPECT_EQ(ErrorText([&] { none.firstChild(); }), "The XML element that is asked for is not there.");
  EXPECT_EQ(ErrorText([&] { XmlElement().setAttribute("a", "b"); }), "The XML element that is asked for is not there.");
  EXPECT_EQ(ErrorText([&] { XmlElement().appendChild(none); }), "The XML element that is asked for is not there.");
}

TEST(XmlElement, WalkPassesOverAllThatIsNoElement) {
  const XmlDocument document = Parsed("<!-- c --><?p i?><r> text <a/> <!-- c --> <![CDATA[x]]><b/>tail</r><!-- d -->");
  const XmlElement root = document.documentElement();
  const XmlElement first = root.firstChild();
  EXPECT_EQ(root.nodeName(), "r");
  EXPECT_EQ(first.tagName(), "a");
  EXPECT_EQ(first.nextSibling().nodeName(), "b");
  EXPECT_FALSE(first.nextSibling().nextSibling());
  EXPECT_FALSE(first.firstChild());
  EXPECT_EQ(first.parentNode(), root);
  EXPECT_FALSE(root.parentNode());
  EXPECT_FALSE(root.nextSibling());
}

TEST(XmlElement, AttributesAreReadAndToldFromAbsentOnes) {
  const XmlElement root = Parsed("<r a='1' b=''/>").documentElement();
  EXPECT_EQ(root.getAttribute("a"), "1");
  EXPECT_EQ(root.getAttribute("b"), "");
  EXPECT_EQ(root.getAttribute("c"), std::nullopt);
  EXPECT_EQ(root.getAttribute("A"), std::nullopt);
  EXPECT_EQ(root.getAttribute(""), std::nullopt);
  EXPECT_EQ(root.AttributeOr("b", "x"), "");
  EXPECT_EQ(root.AttributeOr("c", "x"), "x");
}

TEST(XmlElement, AttributesAreAddedInOrderReplacedAndRemoved) {
  XmlElement root = Parsed("<r a='1'/>").documentElement();
  root.setAttribute("z", "2");
  root.setAttribute("b", "3");
  root.setAttribute("a", "4");
  EXPECT_EQ(root.xml(), R"(<r a="4" z="2" b="3"/>)");
  root.removeAttribute("z");
  root.removeAttribute("none");
  EXPECT_EQ(root.xml(), R"(<r a="4" b="3"/>)");
}

TEST(XmlElement, AnyTextThatXmlCanHoldGoesThroughAnAttribute) {
  XmlDocument document = Parsed("<r/>");
  const std::string text = "&amp; <a> \"q\" 'p' \t\r\n é日😀\x7F\xC2\x85\xEF\xBF\xBD &#65000;";
  document.documentElement().setAttribute("a", text);
  EXPECT_EQ(document.documentElement().getAttribute("a"), text);
  EXPECT_EQ(Parsed(document.xml()).documentElement().getAttribute("a"), text);
  EXPECT_EQ(Parsed(document.documentElement().xml()).documentElement().getAttribute("a"), text);
}

TEST(XmlElement, CharactersThatXmlCannotHoldAreRefusedWithTheAttribute) {
  XmlElement root = Parsed("<r a='old'/>").documentElement();
  EXPECT_EQ(ErrorText([&] { root.setAttribute("Name", "é\x01"); }),
            "The attribute \"Name\" cannot hold the character U+0001 (character 2 of its text).");
  EXPECT_EQ(ErrorText([&] { root.setAttribute("a", "ab\0"sv); }),
            "The attribute \"a\" cannot hold the character U+0000 (character 3 of its text).");
  EXPECT_EQ(ErrorText([&] { root.setAttribute("a", "😀\xEF\xBF\xBE"); }),
            "The attribute \"a\" cannot hold the character U+FFFE (character 3 of its text).");
  EXPECT_EQ(ErrorText([&] { root.setAttribute("a", "\xEF\xBF\xBF"); }),
            "The attribute \"a\" cannot hold the character U+FFFF (character 1 of its text).");
  EXPECT_EQ(root.xml(), R"(<r a="old"/>)");
}

TEST(XmlElement, EveryControlCharacterButThreeIsRefused) {
  XmlElement root = Parsed("<r/>").documentElement();
  for (char code = 0; code < 32; ++code) {
    const bool allowed = code == '\t' || code == '\n' || code == '\r';
    EXPECT_EQ(ErrorText([&] { root.setAttribute("a", std::string(1, code)); }) == "(no error)", allowed) << int{code};
  }
}

TEST(XmlElement, MalformedUtf8IsRefusedWithTheAttribute) {
  XmlElement root = Parsed("<r/>").documentElement();
  EXPECT_EQ(ErrorText([&] { root.setAttribute("Name", "ab\xC3("); }),
            "The text for the attribute \"Name\" is not valid UTF-8 at byte offset 2.");
  EXPECT_EQ(root.getAttribute("Name"), std::nullopt);
}

TEST(XmlElement, NamesThatXmlDoesNotAllowAreRefused) {
  XmlDocument document = Parsed("<r/>");
  XmlElement root = document.documentElement();
  for (const auto name : {"", " ", "1a", "a b", "a=", "<", "xmlns", "xmlns:a"}) {
    EXPECT_EQ(ErrorText([&] { root.setAttribute(name, "x"); }),
              "\"" + std::string(name) + "\" is not a name for an XML attribute.");
  }
  for (const auto name : {"", "1a", "a b", "a/", "a:b"}) {
    EXPECT_EQ(ErrorText([&] { document.createElement(name); }),
              "\"" + std::string(name) + "\" is not a name for an XML element.");
  }
  EXPECT_EQ(root.xml(), "<r/>");
}

TEST(XmlElement, NamesThatAreNoTextAreRefused) {
  XmlDocument document = Parsed("<r/>");
  const std::string expected = "A name for XML holds a NUL character or is not valid UTF-8.";
  for (const auto name : {"a\0b"sv, "\0"sv, "\xFF"sv}) {
    EXPECT_EQ(ErrorText([&] { document.documentElement().setAttribute(name, "x"); }), expected);
    EXPECT_EQ(ErrorText([&] { document.createElement(name); }), expected);
  }
}

TEST(XmlElement, NamesMayBeOfAnyScript) {
  XmlDocument document;
  XmlElement root = document.appendChild(document.createElement("規則"));
  root.setAttribute("Größe", "1");
  EXPECT_EQ(document.selectSingleNode("//規則[@Größe='1']"), root);
  EXPECT_EQ(document.selectSingleNode("/child::規則"), root);
}

TEST(XmlElement, PrefixedAttributesAreNamedAsWritten) {
  XmlElement root = Parsed("<n:r xmlns:n='urn:n' n:a='1' a='2' xml:space='preserve'/>").documentElement();
  EXPECT_EQ(root.nodeName(), "n:r");
  EXPECT_EQ(root.getAttribute("n:a"), "1");
  EXPECT_EQ(root.getAttribute("a"), "2");
  EXPECT_EQ(root.getAttribute("xml:space"), "preserve");
  root.setAttribute("n:a", "3");
  root.setAttribute("n:b", "4");
  EXPECT_EQ(root.xml(), R"(<n:r xmlns:n="urn:n" n:a="3" a="2" xml:space="preserve" n:b="4"/>)");
  EXPECT_EQ(ErrorText([&] { root.setAttribute("m:b", "4"); }),
            "The prefix of the attribute \"m:b\" is not declared in the document.");
}

TEST(XmlElement, SelectionComesInDocumentOrderWhateverTheExpression) {
  const XmlDocument document = Parsed("<r><a i='1'><b i='2'/></a><c i='3'/><a i='4'/></r>");
  EXPECT_THAT(NamesOf(document.selectNodes("//c | //a | //b")), ElementsAre("a", "b", "c", "a"));
  EXPECT_EQ(document.selectSingleNode("//a[last()] | //b").getAttribute("i"), "2");
  EXPECT_THAT(NamesOf(document.selectSingleNode("//b").selectNodes("ancestor::*")), ElementsAre("r", "a"));
}

TEST(XmlElement, SelectionStartsAtTheElement) {
  const XmlDocument document = Parsed("<r><a><b/></a><b/></r>");
  const XmlElement a = document.selectSingleNode("r/a");
  EXPECT_EQ(a.selectNodes("b").size(), 1U);
  EXPECT_EQ(a.selectNodes(".//b").size(), 1U);
  EXPECT_EQ(a.selectNodes("//b").size(), 2U);
  EXPECT_EQ(a.selectSingleNode(".."), document.documentElement());
}

TEST(XmlElement, SelectionWithoutHitIsNoElement) {
  const XmlDocument document = Parsed("<r a='1'>text</r>");
  EXPECT_FALSE(document.selectSingleNode("//none"));
  EXPECT_THAT(document.selectNodes("//none"), IsEmpty());
  EXPECT_FALSE(XmlDocument().selectSingleNode("//a"));
}

TEST(XmlElement, SelectedNodesThatAreNoElementsArePassedOver) {
  const XmlDocument document = Parsed("<r a='1'>text<b/><!-- c --></r>");
  EXPECT_THAT(NamesOf(document.selectNodes("//@a | //node()")), ElementsAre("r", "b"));
  EXPECT_EQ(document.selectSingleNode("/r/node()").nodeName(), "b");
}

TEST(XmlElement, RefusedExpressionIsNamedWithTheColumn) {
  const XmlDocument document = Parsed("<r/>");
  EXPECT_EQ(ErrorText([&] { document.selectNodes("//é["); }),
            "The XPath expression \"//é[\" is refused at column 5: Invalid expression.");
  EXPECT_EQ(ErrorText([&] { document.selectSingleNode("a]"); }),
            "The XPath expression \"a]\" is refused at column 2: Invalid expression.");
  EXPECT_EQ(ErrorText([&] { document.selectSingleNode(""); }),
            "The XPath expression \"\" is refused at column 1: Invalid expression.");
  EXPECT_EQ(ErrorText([&] { document.selectSingleNode("none()"); }),
            "The XPath expression \"none()\" is refused at column 7: Unregistered function.");
  EXPECT_EQ(ErrorText([&] { document.selectSingleNode("n:a"); }),
            "The XPath expression \"n:a\" is refused at column 4: Undefined namespace prefix.");
}

TEST(XmlElement, ExpressionThatGivesNoNodesIsRefused) {
  EXPECT_EQ(ErrorText([] { Parsed("<r/>").selectNodes("count(//r)"); }),
            "The XPath expression \"count(//r)\" does not select elements.");
}

TEST(XmlElement, ExpressionThatIsNoTextIsRefused) {
  const XmlDocument document = Parsed("<r/>");
  for (const auto xpath : {"r\0"sv, "\xFF"sv}) {
    EXPECT_EQ(ErrorText([&] { document.selectNodes(xpath); }),
              "An XPath expression holds a NUL character or is not valid UTF-8.");
  }
}

TEST(XmlElement, RefusedExpressionPrintsNothing) {
  testing::internal::CaptureStderr();
  EXPECT_THROW(Parsed("<r/>").selectNodes("//["), Error);
  EXPECT_THROW(Parsed("<r/>").selectNodes("none()"), Error);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(XmlElement, ChildrenAreAppendedAndInserted) {
  XmlDocument document = Parsed("<r><b/></r>");
  XmlElement root = document.documentElement();
  const XmlElement c = root.appendChild(document.createElement("c"));
  const XmlElement a = root.insertBefore(document.createElement("a"), root.firstChild());
  EXPECT_EQ(root.xml(), "<r><a/><b/><c/></r>");
  EXPECT_EQ(root.firstChild(), a);
  EXPECT_EQ(c.parentNode(), root);
}

TEST(XmlElement, InsertionBeforeNoElementAppends) {
  XmlDocument document = Parsed("<r/>");
  XmlElement root = document.documentElement();
  root.insertBefore(document.createElement("a"), root.firstChild());
  root.insertBefore(document.createElement("b"), XmlElement());
  EXPECT_EQ(root.xml(), "<r><a/><b/></r>");
}

TEST(XmlElement, ChildIsMovedFromItsPresentPlace) {
  XmlDocument document = Parsed("<r><a><x/></a><b/><c/></r>");
  XmlElement root = document.documentElement();
  root.appendChild(document.selectSingleNode("//a"));
  root.insertBefore(document.selectSingleNode("//x"), document.selectSingleNode("//c"));
  EXPECT_EQ(root.xml(), "<r><b/><x/><c/><a/></r>");
}

TEST(XmlElement, InsertionBeforeItselfChangesNothing) {
  XmlDocument document = Parsed("<r><a/><b/></r>");
  XmlElement root = document.documentElement();
  root.insertBefore(root.firstChild(), root.firstChild());
  EXPECT_EQ(root.xml(), "<r><a/><b/></r>");
}

TEST(XmlElement, ElementCannotBePlacedWithinItself) {
  XmlDocument document = Parsed("<r><a><b/></a></r>");
  const XmlElement a = document.selectSingleNode("//a");
  XmlElement b = document.selectSingleNode("//b");
  EXPECT_EQ(ErrorText([&] { b.appendChild(a); }), "The element \"a\" cannot be placed within itself.");
  EXPECT_EQ(ErrorText([&] { b.appendChild(b); }), "The element \"b\" cannot be placed within itself.");
  EXPECT_EQ(document.documentElement().xml(), "<r><a><b/></a></r>");
}

TEST(XmlElement, ElementOfAnotherDocumentIsRejected) {
  XmlDocument document = Parsed("<r><a/></r>");
  const XmlDocument other = Parsed("<s><t/></s>");
  XmlElement root = document.documentElement();
  const XmlElement foreign = other.selectSingleNode("//t");
  const std::string expected = "The element \"t\" belongs to another document; place a copy made by importNode.";
  EXPECT_EQ(ErrorText([&] { root.appendChild(foreign); }), expected);
  EXPECT_EQ(ErrorText([&] { root.insertBefore(foreign, root.firstChild()); }), expected);
  EXPECT_EQ(ErrorText([&] { root.insertBefore(root.firstChild(), foreign); }), expected);
  EXPECT_EQ(ErrorText([&] { root.removeChild(foreign); }), expected);
  EXPECT_EQ(ErrorText([&] { XmlDocument().appendChild(foreign); }), expected);
  EXPECT_EQ(other.documentElement().xml(), "<s><t/></s>");
}

TEST(XmlElement, ReferenceHasToBeAChild) {
  XmlDocument document = Parsed("<r><a><b/></a></r>");
  XmlElement root = document.documentElement();
  EXPECT_EQ(ErrorText([&] { root.insertBefore(document.createElement("c"), document.selectSingleNode("//b")); }),
            "The element \"b\" is not a child of \"r\".");
  EXPECT_EQ(ErrorText([&] { root.removeChild(document.selectSingleNode("//b")); }),
            "The element \"b\" is not a child of \"r\".");
  EXPECT_EQ(ErrorText([&] { root.removeChild(root); }), "The element \"r\" is not a child of \"r\".");
}

TEST(XmlElement, RemovedChildStaysUsable) {
  XmlDocument document = Parsed("<r><a i='1'><b/></a><c/></r>");
  XmlElement root = document.documentElement();
  XmlElement a = root.firstChild();
  root.removeChild(a);
  EXPECT_EQ(root.xml(), "<r><c/></r>");
  EXPECT_FALSE(a.parentNode());
  EXPECT_FALSE(a.nextSibling());
  a.setAttribute("i", "2");
  a.removeChild(a.firstChild());
  a.appendChild(document.createElement("d"));
  EXPECT_EQ(a.selectNodes("*").size(), 1U);
  root.appendChild(a);
  EXPECT_EQ(root.xml(), R"(<r><c/><a i="2"><d/></a></r>)");
}

TEST(XmlElement, HandleKeepsItsDocumentAlive) {
  XmlElement removed;
  XmlElement kept;
  {
    XmlDocument document = Parsed("<r><a><b/></a><c/></r>");
    removed = document.selectSingleNode("//a");
    kept = document.selectSingleNode("//c");
    document.documentElement().removeChild(removed);
  }
  EXPECT_EQ(removed.xml(), "<a><b/></a>");
  EXPECT_EQ(kept.parentNode().nodeName(), "r");
}

TEST(XmlElement, PrefixesGoWithAnElementThatIsMovedOrRemoved) {
  XmlDocument document = Parsed("<r><o xmlns:n='urn:n'><n:a n:i='1'/></o></r>");
  XmlElement root = document.documentElement();
  XmlElement outer = root.firstChild();
  const XmlElement inner = outer.firstChild();
  outer.removeChild(inner);
  EXPECT_EQ(inner.xml(), R"(<n:a xmlns:n="urn:n" n:i="1"/>)");
  root.appendChild(inner);
  EXPECT_EQ(Parsed(document.xml()).documentElement().xml(),
            R"(<r><o xmlns:n="urn:n"/><n:a xmlns:n="urn:n" n:i="1"/></r>)");
}

TEST(XmlElement, TextIsAllCharacterDataWithin) {
  const XmlElement root = Parsed("<r>a<b>é&lt;</b><![CDATA[<c>]]><!-- no --><?no no?>d</r>").documentElement();
  EXPECT_EQ(root.text(), "aé<<c>d");
  EXPECT_EQ(root.firstChild().text(), "é<");
  EXPECT_EQ(Parsed("<r/>").documentElement().text(), "");
}

TEST(XmlElement, XmlOfAnElementIsUtf8WithoutDeclaration) {
  EXPECT_EQ(Parsed("<?xml version='1.0' encoding='ISO-8859-1'?><r><a n='日é'>日</a></r>").documentElement().xml(),
            R"(<r><a n="日é">日</a></r>)");
}

TEST(XmlDocument, GrowsFromNothing) {
  XmlDocument document;
  EXPECT_FALSE(document.documentElement());
  XmlElement root = document.appendChild(document.createElement("ERD"));
  root.appendChild(document.createElement("Repository"));
  EXPECT_EQ(document.xml(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ERD><Repository/></ERD>\n");
  EXPECT_EQ(document.documentElement(), root);
}

TEST(XmlDocument, SecondRootIsRefused) {
  XmlDocument document = Parsed("<r><a/></r>");
  EXPECT_EQ(ErrorText([&] { document.appendChild(document.createElement("s")); }),
            "The document has a root element; \"s\" cannot be another.");
  EXPECT_EQ(ErrorText([&] { document.appendChild(document.documentElement()); }),
            "The document has a root element; \"r\" cannot be another.");
}

TEST(XmlDocument, RootMayBePlacedUnderANewOne) {
  XmlDocument document = Parsed("<a/>");
  XmlElement outer = document.createElement("r");
  outer.appendChild(document.documentElement());
  EXPECT_FALSE(document.documentElement());
  document.appendChild(outer);
  EXPECT_EQ(document.documentElement().xml(), "<r><a/></r>");
}

TEST(XmlDocument, ImportedCopyIsDeepDetachedAndItsOwn) {
  XmlDocument document = Parsed("<r/>");
  const XmlDocument other = Parsed("<s xmlns:n='urn:n'><n:t i='1'><u/>x</n:t></s>");
  XmlElement copy = document.importNode(other.documentElement().firstChild());
  EXPECT_FALSE(copy.parentNode());
  copy.setAttribute("i", "2");
  document.documentElement().appendChild(copy);
  EXPECT_EQ(document.documentElement().xml(), R"(<r><n:t xmlns:n="urn:n" i="2"><u/>x</n:t></r>)");
  EXPECT_EQ(other.documentElement().xml(), R"(<s xmlns:n="urn:n"><n:t i="1"><u/>x</n:t></s>)");
}

TEST(XmlDocument, ImportFromTheSameDocumentCopies) {
  XmlDocument document = Parsed("<r><a/></r>");
  document.documentElement().appendChild(document.importNode(document.documentElement()));
  EXPECT_EQ(document.documentElement().xml(), "<r><a/><r><a/></r></r>");
}

TEST(XmlDocument, CopiesOfTheHandleShareTheDocument) {
  XmlDocument document = Parsed("<r/>");
  XmlDocument copy = document;
  copy.documentElement().setAttribute("a", "1");
  EXPECT_EQ(document.documentElement().getAttribute("a"), "1");
  copy.loadXML("<s/>");
  EXPECT_EQ(document.documentElement().nodeName(), "s");
}

}  // namespace
}  // namespace qmrules::platform
