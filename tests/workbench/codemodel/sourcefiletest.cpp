#include "workbench/codemodel/sourcefile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qmrules::workbench::codemodel {
namespace {

std::vector<std::string> RowsOf(const std::string& text) {
  const SourceFile file("A.cbl", text);
  std::vector<std::string> rows;
  for (std::uint32_t row = 1; row <= file.Rows(); ++row) rows.emplace_back(file.Row(row));
  return rows;
}

using Rows = std::vector<std::string>;

TEST(SourceFile, RowsEndWithAnyLineEnd) {
  EXPECT_EQ(RowsOf("a\nb\r\nc\rd"), (Rows{"a", "b", "c", "d"}));
  EXPECT_EQ(RowsOf("a\n\nb\r\rc\r\n\r\n"), (Rows{"a", "", "b", "", "c", ""}));
  EXPECT_EQ(RowsOf("\r\r\n\n"), (Rows{"", "", ""}));
}

TEST(SourceFile, TheTextBehindTheLastLineEndIsARowWhenThereIsAny) {
  EXPECT_EQ(RowsOf("a\n"), (Rows{"a"}));
  EXPECT_EQ(RowsOf("a\nb"), (Rows{"a", "b"}));
  EXPECT_EQ(RowsOf("a\r"), (Rows{"a"}));
  EXPECT_EQ(RowsOf("\n"), (Rows{""}));
  EXPECT_EQ(RowsOf(""), Rows{});
}

TEST(SourceFile, RowsBeginBehindTheLineEndBefore) {
  const SourceFile file("lib/A.cbl", "ab\r\nc\rd\n");
  EXPECT_EQ(file.Name(), "lib/A.cbl");
  ASSERT_EQ(file.Rows(), 3U);
  EXPECT_EQ(file.RowStart(1), 0U);
  EXPECT_EQ(file.RowStart(2), 4U);
  EXPECT_EQ(file.RowStart(3), 6U);
  EXPECT_EQ(file.RowStart(4), 8U);
}

TEST(SourceFile, AnOffsetLiesInARow) {
  const SourceFile file("A.cbl", "ab\r\nc\rd");
  EXPECT_EQ(file.RowOf(0), 1U);
  EXPECT_EQ(file.RowOf(3), 1U);  // the line end belongs to its row
  EXPECT_EQ(file.RowOf(4), 2U);
  EXPECT_EQ(file.RowOf(6), 3U);
  EXPECT_EQ(file.RowOf(7), 3U);  // the end of the text
  EXPECT_EQ(SourceFile("A.cbl", "").RowOf(0), 1U);
}

TEST(SourceFile, ColumnsOfAsciiCountBytes) {
  const SourceFile file("A.cbl", "ab\ncde\n");
  EXPECT_TRUE(file.IsAscii());
  EXPECT_EQ(file.Column(0), 1U);
  EXPECT_EQ(file.Column(1), 2U);
  EXPECT_EQ(file.Column(3), 1U);
  EXPECT_EQ(file.Column(5), 3U);
  EXPECT_EQ(file.Character(5), 5U);
}

TEST(SourceFile, ColumnsAndCharactersCountUtf16Units) {
  // Letters of two, three and four bytes.
  const SourceFile file("A.cbl", "\u00e9a\u65e5b\n\U0001f600c\nd");
  EXPECT_FALSE(file.IsAscii());
  EXPECT_EQ(file.Column(2), 2U);
  EXPECT_EQ(file.Column(6), 4U);
  EXPECT_EQ(file.Character(6), 3U);
  EXPECT_EQ(file.Column(8), 1U);
  EXPECT_EQ(file.Column(12), 3U);
  EXPECT_EQ(file.Character(8), 5U);
  EXPECT_EQ(file.Character(12), 7U);
  EXPECT_EQ(file.Character(14), 9U);
  EXPECT_EQ(file.Character(14, 3), 9U);
}

TEST(SourceFile, OneLetterAboveAsciiIsSeenAnywhere) {
  for (std::size_t at = 0; at < 20; ++at) {
    std::string text(20, 'a');
    text[at] = '\xe9';
    EXPECT_FALSE(SourceFile("A.cbl", text).IsAscii()) << at;
  }
}

TEST(SourceFile, OffsetIsTheWayBackFromCharacter) {
  const std::string text = "\u00e9a\u65e5b\r\n\U0001f600c\n\nd\xe9";
  const SourceFile file("A.cbl", text);
  for (std::uint32_t offset = 0; offset < text.size(); ++offset) {
    if ((static_cast<unsigned char>(text[offset]) & 0xC0) == 0x80) continue;
    EXPECT_EQ(file.Offset(file.Character(offset)), offset);
  }
  // The second half of a pair is not parted from its first one.
  EXPECT_EQ(file.Offset(file.Character(9) + 1), 9U);
  EXPECT_EQ(file.Offset(1000), text.size());
  EXPECT_EQ(SourceFile("A.cbl", "abc").Offset(2), 2U);
  EXPECT_EQ(SourceFile("A.cbl", "abc").Offset(1000), 3U);
  EXPECT_EQ(SourceFile("A.cbl", "").Offset(0), 0U);
}

TEST(SourceFile, ManyLineEndsOfEitherKindAreFound) {
  std::string text(100'000, '\r');
  EXPECT_EQ(SourceFile("A.cbl", text).Rows(), 100'000U);
  text += std::string(100'000, '\n');
  EXPECT_EQ(SourceFile("A.cbl", text).Rows(), 199'999U);
}

}  // namespace
}  // namespace qmrules::workbench::codemodel
