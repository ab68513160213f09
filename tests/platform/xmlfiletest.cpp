#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/encoding.h"
#include "platform/xml.h"
#include "support/errortext.h"
#include "support/temporaryfolder.h"

namespace qmrules::platform {
namespace {

using test::TemporaryFolder;

using test::ErrorText;

class XmlFile : public testing::Test {
 protected:
  // A document of this text, which is UTF-8 whatever its declaration says.
  static XmlDocument Parsed(std::string_view text) {
    XmlDocument document;
    document.loadXML(text);
    return document;
  }
  static std::string Declaration(const std::string& encoding) {
    return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>\n";
  }
  std::string LoadError(std::string_view name) const {
    return ErrorText([&] { XmlDocument().load(folder_.File(name)); });
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.File("a.xml");
};

TEST_F(XmlFile, EachEncodingIsWrittenAndReadBack) {
  const std::pair<const char*, const char*> cases[] = {
      {"UTF-8", "é日가Д😀\\~"}, {"ISO-8859-1", "éß\\~"}, {"SHIFT_JIS", "日本ｶﾅ\\~"}, {"sjis", "日\\~"},
      {"EUC-KR", "가나\\~"},   {"ISO-8859-5", "Да\\~"}, {"CP1252", "€é\\~"},        {"UTF-16", "é日😀\\~"},
  };
  for (const auto& [encoding, text] : cases) {
    XmlDocument document = Parsed(Declaration(encoding) + "<r/>");
    document.documentElement().setAttribute("n", text);
    document.save(path_);
    XmlDocument again;
    again.load(path_);
    EXPECT_EQ(again.documentElement().getAttribute("n"), text) << encoding;
    again.save(folder_.File("b.xml"));
    EXPECT_EQ(folder_.Read("b.xml"), folder_.Read("a.xml")) << encoding;
  }
}

TEST_F(XmlFile, BytesAreThoseOfTheDeclaredEncoding) {
  Parsed(Declaration("ISO-8859-1") + "<r n=\"é\">ß</r>").save(path_);
  EXPECT_EQ(folder_.Read("a.xml"), Declaration("ISO-8859-1") + "<r n=\"\xE9\">\xDF</r>\n");
  Parsed(Declaration("SHIFT_JIS") + "<r n=\"日\">本</r>").save(path_);
  EXPECT_EQ(folder_.Read("a.xml"), Declaration("SHIFT_JIS") + "<r n=\"\x93\xFA\">\x96\x7B</r>\n");
  Parsed(Declaration("EUC-KR") + "<r n=\"가\"/>").save(path_);
  EXPECT_EQ(folder_.Read("a.xml"), Declaration("EUC-KR") + "<r n=\"\xB0\xA1\"/>\n");
  Parsed(Declaration("ISO-8859-5") + "<r n=\"Да\"/>").save(path_);
  EXPECT_EQ(folder_.Read("a.xml"), Declaration("ISO-8859-5") + "<r n=\"\xB4\xD0\"/>\n");
}

TEST_F(XmlFile, BackslashOfShiftJisIsNoYenSign) {
  Parsed(Declaration("SHIFT_JIS") + "<r n=\"a\\b~¥\"/>").save(path_);
  EXPECT_EQ(folder_.Read("a.xml"), Declaration("SHIFT_JIS") + "<r n=\"a\\b~&#165;\"/>\n");
  XmlDocument document;
  document.load(path_);
  EXPECT_EQ(document.documentElement().getAttribute("n"), "a\\b~¥");
}

TEST_F(XmlFile, WithoutDeclarationUtf8IsWritten) {
  Parsed("<r n='é日'/>").save(path_);
  EXPECT_EQ(folder_.Read("a.xml"), Declaration("UTF-8") + "<r n=\"é日\"/>\n");
}

TEST_F(XmlFile, CharacterThatTheEncodingLacksGoesOutAsAReference) {
  XmlDocument document = Parsed(Declaration("ISO-8859-1") + "<r n=\"é日\"><![CDATA[<😀>]]></r>");
  document.save(path_);
  EXPECT_EQ(folder_.Read("a.xml"), Declaration("ISO-8859-1") + "<r n=\"\xE9&#26085;\">&lt;&#128512;&gt;</r>\n");
  XmlDocument again;
  again.load(path_);
  EXPECT_EQ(again.documentElement().getAttribute("n"), "é日");
  EXPECT_EQ(again.documentElement().text(), "<😀>");
}

TEST_F(XmlFile, NameThatTheEncodingLacksIsRefusedAndTheOldFileStands) {
  folder_.Write("a.xml", "old");
  XmlDocument document = Parsed(Declaration("ISO-8859-1") + "<r><a 規='1'/></r>");
  EXPECT_EQ(ErrorText([&] { document.save(path_); }),
            "The file \"" + path_ + "\" cannot be written. The character U+898F cannot be written in ISO-8859-1.");
  EXPECT_EQ(folder_.Read("a.xml"), "old");
}

TEST_F(XmlFile, WhitespaceOfAttributesComesBack) {
  XmlDocument document = Parsed("<r/>");
  document.documentElement().setAttribute("n", "a\r\nb\tc\n");
  document.save(path_);
  EXPECT_EQ(folder_.Read("a.xml"), Declaration("UTF-8") + "<r n=\"a&#13;&#10;b&#9;c&#10;\"/>\n");
  document.load(path_);
  EXPECT_EQ(document.documentElement().getAttribute("n"), "a\r\nb\tc\n");
}

TEST_F(XmlFile, UrlIsThePathLastLoadedOrSaved) {
  XmlDocument document;
  EXPECT_EQ(document.url(), "");
  document.loadXML("<r/>");
  EXPECT_EQ(document.url(), "");
  document.save(path_);
  EXPECT_EQ(document.url(), path_);
  EXPECT_THROW(document.load(folder_.File("none.xml")), Error);
  EXPECT_EQ(document.url(), path_);
  document.loadXML("<s/>");
  EXPECT_EQ(document.url(), "");
  document.load(path_);
  EXPECT_EQ(document.url(), path_);
}

TEST_F(XmlFile, BackslashSeparatesToo) {
  std::filesystem::create_directory(folder_.File("inner"));
  Parsed("<r/>").save(folder_.Path().string() + "\\inner\\b.xml");
  XmlDocument document;
  document.load(folder_.File("inner\\b.xml"));
  EXPECT_EQ(document.documentElement().nodeName(), "r");
}

TEST_F(XmlFile, MissingFileIsNamed) {
  EXPECT_EQ(LoadError("none.xml"),
            "The file \"" + (folder_.File("none.xml")) + "\" cannot be read: there is no such file.");
}

TEST_F(XmlFile, BrokenFileIsNamedWithThePlaceAndTheDocumentStays) {
  folder_.Write("a.xml", "<r>\n<a>\n</r>");
  XmlDocument document = Parsed("<old/>");
  EXPECT_EQ(ErrorText([&] { document.load(path_); }), path_ + ":3:5: Opening and ending tag mismatch: a line 2 and r");
  EXPECT_EQ(document.documentElement().xml(), "<old/>");
}

TEST_F(XmlFile, EmptyFileIsRefused) {
  folder_.Write("a.xml", "");
  EXPECT_EQ(LoadError("a.xml"), path_ + ":1:1: Document is empty");
}

TEST_F(XmlFile, FileWithoutDeclarationHasToBeUtf8) {
  folder_.Write("a.xml", "<r>\n\xE9</r>");
  EXPECT_EQ(LoadError("a.xml"), path_ + ":2:1: Input is not proper UTF-8, indicate encoding !");
}

TEST_F(XmlFile, BytesThatAreNoTextInTheDeclaredEncodingAreRefused) {
  folder_.Write("a.xml", Declaration("SHIFT_JIS") + "<r n=\"\x93\"/>");
  EXPECT_NE(LoadError("a.xml"), "(no error)");
}

TEST_F(XmlFile, UnknownEncodingIsRefused) {
  folder_.Write("a.xml", Declaration("FOO") + "<r/>");
  EXPECT_EQ(LoadError("a.xml"), path_ + ":1:35: Unsupported encoding FOO");
}

TEST_F(XmlFile, ByteOrderMarkTellsTheEncoding) {
  folder_.Write("a.xml", "\xEF\xBB\xBF<r n='é'/>");
  XmlDocument document;
  document.load(path_);
  EXPECT_EQ(document.documentElement().getAttribute("n"), "é");
  folder_.Write("a.xml", "\xFF\xFE" + EncodeText("<r n='日'/>", "UTF-16LE"));
  document.load(path_);
  EXPECT_EQ(document.documentElement().getAttribute("n"), "日");
}

TEST_F(XmlFile, EmptyDocumentIsNotSaved) {
  folder_.Write("a.xml", "old");
  XmlDocument document;
  EXPECT_EQ(ErrorText([&] { document.save(path_); }),
            "The file \"" + path_ + "\" cannot be written: the document is empty.");
  EXPECT_EQ(folder_.Read("a.xml"), "old");
}

TEST_F(XmlFile, FailedSaveLeavesNothingBehind) {
  const std::string path = folder_.File("none/a.xml");
  EXPECT_EQ(ErrorText([&] { Parsed("<r/>").save(path); }),
            "The file \"" + path + "\" cannot be written: there is no such folder.");
  EXPECT_EQ(folder_.EntryCount(), 0U);
}

TEST_F(XmlFile, SavingReplacesTheFileWhole) {
  folder_.Write("a.xml", std::string(10000, 'x'));
  Parsed("<r/>").save(path_);
  EXPECT_EQ(folder_.Read("a.xml"), Declaration("UTF-8") + "<r/>\n");
  EXPECT_EQ(folder_.EntryCount(), 1U);
}

TEST_F(XmlFile, TextOfNothingElseIsChangedByLoadingAndSaving) {
  const std::string text =
      Declaration("UTF-8") + "<!-- é -->\n<r>\n  <a n=\"1\"/>\n\n  <?p i?>text\n</r>\n<!-- end -->\n";
  folder_.Write("a.xml", text);
  XmlDocument document;
  document.load(path_);
  document.save(path_);
  EXPECT_EQ(folder_.Read("a.xml"), text);
}

}  // namespace
}  // namespace qmrules::platform
