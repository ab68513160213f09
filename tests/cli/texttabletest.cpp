#include "cli/texttable.h"

#include <gtest/gtest.h>

#include <sstream>

#include "cli/displaywidth.h"

namespace qmrules::cli {
namespace {

std::string Printed(const TextTable& table, bool bold = false, const std::string& indent = "") {
  std::ostringstream out;
  table.Print(out, bold, indent);
  return out.str();
}

TEST(TextTable, ColumnsAreAsWideAsTheirWidestCell) {
  TextTable table({"A", "Title"});
  table.Add({"long cell", "x"});
  table.Add({"y", "z"});
  EXPECT_EQ(Printed(table), "A          Title\nlong cell  x\ny          z\n");
}

TEST(TextTable, LinesHaveNoBlanksAtTheirEnd) {
  TextTable table({"A", "B"});
  table.Add({"", ""});
  EXPECT_EQ(Printed(table), "A  B\n\n");
}

TEST(TextTable, WideCharactersTakeTwoColumns) {
  TextTable table({"Name", "Key"});
  table.Add({"規則", "1"});
  table.Add({"abcde", "2"});
  EXPECT_EQ(Printed(table), "Name   Key\n規則   1\nabcde  2\n");
}

TEST(TextTable, ALongCellIsCutAtTheWidestColumn) {
  TextTable table;
  table.Add({std::string(60, 'x'), "k"});
  table.Add({std::string(61, 'y'), "k"});
  EXPECT_EQ(Printed(table), std::string(60, 'x') + "  k\n" + std::string(57, 'y') + "...  k\n");
}

TEST(TextTable, ACellIsOneLineWithoutControlCharacters) {
  TextTable table;
  table.Add({"a\nb\tc\x1b[1md", "\xff"});
  EXPECT_EQ(Printed(table), "a b c [1md  ?\n");
}

TEST(TextTable, TitlesAreBoldOnRequest) {
  TextTable table({"A"});
  table.Add({"b"});
  EXPECT_EQ(Printed(table, true, "  "), "  \x1b[1mA\x1b[0m\n  b\n");
}

TEST(DisplayWidth, CombiningCharactersTakeNone) {
  EXPECT_EQ(DisplayWidth("e\xCC\x81"), 1U);
  EXPECT_EQ(DisplayWidth("한국"), 4U);
}

TEST(DisplayWidth, ACutNeverSplitsAWideCharacter) {
  EXPECT_EQ(LeftColumns("a規則", 2), "a");
  EXPECT_EQ(LeftColumns("a規則", 3), "a規");
}

TEST(DisplayWidth, TurnsOfTheDirectionOfWritingAreTakenOut) {
  EXPECT_EQ(OneLine("a\u202Eb\u2066c"), "a b c");
}

}  // namespace
}  // namespace qmrules::cli
