#include "workbench/repository/fetchlist.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/errortext.h"

namespace qmrules::workbench::repository {
namespace {

// The whole text of the error that reading the list ends with; "(no error)" when it ends with none.
std::string ListError(std::string_view list) {
  return test::ErrorText([&] { ParseFetchList(list); });
}

TEST(FetchList, EmptyTextHasNoItems) {
  EXPECT_TRUE(ParseFetchList("").empty());
}

TEST(FetchList, NamesAreDeliveredUnderThemselves) {
  EXPECT_EQ(ParseFetchList("ID,IOName"),
            (std::vector<FetchItem>{{"ID", "ID", Sort::None, 1}, {"IOName", "IOName", Sort::None, 4}}));
}

TEST(FetchList, AliasTakesThePlaceOfTheName) {
  EXPECT_EQ(ParseFetchList("Name:RuleSetName,ID:SetID"),
            (std::vector<FetchItem>{{"Name", "RuleSetName", Sort::None, 1}, {"ID", "SetID", Sort::None, 18}}));
}

TEST(FetchList, GreaterSortsUpwards) {
  EXPECT_EQ(ParseFetchList(">SeqNo"), (std::vector<FetchItem>{{"SeqNo", "SeqNo", Sort::Ascending, 1}}));
}

TEST(FetchList, LessSortsDownwards) {
  EXPECT_EQ(ParseFetchList("<When"), (std::vector<FetchItem>{{"When", "When", Sort::Descending, 1}}));
}

TEST(FetchList, SortMarkStandsBeforeAnyItem) {
  EXPECT_EQ(ParseFetchList("ID,>IOName,Kind"), (std::vector<FetchItem>{{"ID", "ID", Sort::None, 1},
                                                                       {"IOName", "IOName", Sort::Ascending, 4},
                                                                       {"Kind", "Kind", Sort::None, 12}}));
}

TEST(FetchList, SortMarkAndAliasGoTogether) {
  EXPECT_EQ(ParseFetchList(">Name:FuncName,<ID:FuncID"),
            (std::vector<FetchItem>{{"Name", "FuncName", Sort::Ascending, 1}, {"ID", "FuncID", Sort::Descending, 16}}));
}

TEST(FetchList, NameMayHoldDigitsSignsAndForeignLetters) {
  EXPECT_EQ(ParseFetchList("My_Attr-2.x:\xC3\x84nderung,ID"),
            (std::vector<FetchItem>{{"My_Attr-2.x", "\xC3\x84nderung", Sort::None, 1}, {"ID", "ID", Sort::None, 22}}));
}

TEST(FetchList, ColumnsCountUtf16Units) {
  // U+1F600 takes two units.
  EXPECT_EQ(ParseFetchList("\xF0\x9F\x98\x80,ID").back().column, 4U);
}

TEST(FetchList, EmptyItemIsRefused) {
  EXPECT_EQ(ListError("ID,,Name"), "fetch list \"ID,,Name\" column 4: an attribute name is expected");
  EXPECT_EQ(ListError(","), "fetch list \",\" column 1: an attribute name is expected");
}

TEST(FetchList, CommaAtTheEndIsRefused) {
  EXPECT_EQ(ListError("ID,"), "fetch list \"ID,\" column 4: an attribute name is expected");
}

TEST(FetchList, BlanksAreRefused) {
  EXPECT_EQ(ListError(" "), "fetch list \" \" column 1: an attribute name is expected");
  EXPECT_EQ(ListError("ID, Name"), "fetch list \"ID, Name\" column 4: an attribute name is expected");
  EXPECT_EQ(ListError("ID ,Name"), "fetch list \"ID ,Name\" column 3: a \",\" or a \":\" is expected");
  EXPECT_EQ(ListError("> SeqNo"), "fetch list \"> SeqNo\" column 2: an attribute name is expected");
  EXPECT_EQ(ListError("ID:FuncID "), "fetch list \"ID:FuncID \" column 10: a \",\" is expected");
}

TEST(FetchList, EmptyAliasIsRefused) {
  EXPECT_EQ(ListError("ID:"), "fetch list \"ID:\" column 4: an alias is expected");
  EXPECT_EQ(ListError("ID:,Name"), "fetch list \"ID:,Name\" column 4: an alias is expected");
}

TEST(FetchList, DoubledSortMarkIsRefused) {
  EXPECT_EQ(ListError(">>SeqNo"), "fetch list \">>SeqNo\" column 2: an attribute name is expected");
  EXPECT_EQ(ListError("ID,<>SeqNo"), "fetch list \"ID,<>SeqNo\" column 5: an attribute name is expected");
  EXPECT_EQ(ListError(">"), "fetch list \">\" column 2: an attribute name is expected");
}

TEST(FetchList, SortMarkBehindTheColonIsRefused) {
  EXPECT_EQ(ListError("Name:>Alias"), "fetch list \"Name:>Alias\" column 6: an alias is expected");
}

TEST(FetchList, StrayColonIsRefused) {
  EXPECT_EQ(ListError(":Alias"), "fetch list \":Alias\" column 1: an attribute name is expected");
  EXPECT_EQ(ListError("A::B"), "fetch list \"A::B\" column 3: an alias is expected");
  EXPECT_EQ(ListError("A:B:C"), "fetch list \"A:B:C\" column 4: a \",\" is expected");
}

TEST(FetchList, ErrorCountsUtf16Units) {
  EXPECT_EQ(ListError("\xF0\x9F\x98\x80,!"),
            "fetch list \"\xF0\x9F\x98\x80,!\" column 4: an attribute name is expected");
}

TEST(FetchList, ErrorShowsTheBeginningOfALongList) {
  const std::string names(300, 'x');
  EXPECT_EQ(ListError(names + ","),
            "fetch list \"" + std::string(200, 'x') + "...\" column 302: an attribute name is expected");
}

}  // namespace
}  // namespace qmrules::workbench::repository
