#include "workbench/repository/idlist.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/error.h"
#include "support/errortext.h"

namespace qmrules::workbench::repository {
namespace {

using IDs = std::vector<std::int64_t>;

// The whole text of the error that reading the list ends with; "(no error)" when it ends with none.
std::string IDListError(std::string_view list) {
  return test::ErrorText([&] { ParseIDList(list); });
}

TEST(IDList, KeepsTheOrderOfTheList) {
  EXPECT_EQ(ParseIDList("0,17,42"), (IDs{0, 17, 42}));
  EXPECT_EQ(ParseIDList("42,0,17"), (IDs{42, 0, 17}));
}

TEST(IDList, DuplicateStaysWhereItStoodFirst) {
  EXPECT_EQ(ParseIDList("5,3,5,1,3"), (IDs{5, 3, 1}));
  EXPECT_EQ(ParseIDList("7,7,8"), (IDs{7, 8}));
}

TEST(IDList, BlanksAroundANumberArePassedOver) {
  EXPECT_EQ(ParseIDList("  0 ,  17,42 "), (IDs{0, 17, 42}));
}

TEST(IDList, LeadingZerosDoNotCount) {
  EXPECT_EQ(ParseIDList("007,7"), (IDs{7}));
}

TEST(IDList, TakesTheGreatestNumber) {
  EXPECT_EQ(ParseIDList("9223372036854775807"), (IDs{9223372036854775807}));
  EXPECT_EQ(IDListError("1,9223372036854775808"),
            "ID list \"1,9223372036854775808\" column 3: a number of at most 9223372036854775807 is expected");
}

TEST(IDList, AnythingButDigitsIsRefused) {
  EXPECT_EQ(IDListError("0,x"), "ID list \"0,x\" column 3: a number is expected");
  EXPECT_EQ(IDListError("-1"), "ID list \"-1\" column 1: a number is expected");
  EXPECT_EQ(IDListError("+1"), "ID list \"+1\" column 1: a number is expected");
  EXPECT_EQ(IDListError("1.5"), "ID list \"1.5\" column 2: a \",\" is expected");
  EXPECT_EQ(IDListError("1 2"), "ID list \"1 2\" column 3: a \",\" is expected");
  EXPECT_EQ(IDListError("1;2"), "ID list \"1;2\" column 2: a \",\" is expected");
}

TEST(IDList, EmptyItemIsRefused) {
  EXPECT_EQ(IDListError(""), "ID list \"\" column 1: a number is expected");
  EXPECT_EQ(IDListError("1,"), "ID list \"1,\" column 3: a number is expected");
  EXPECT_EQ(IDListError("1,,2"), "ID list \"1,,2\" column 3: a number is expected");
  EXPECT_EQ(IDListError(",1"), "ID list \",1\" column 1: a number is expected");
}

TEST(IDList, PartOfATextStopsAtItsEnd) {
  const std::string_view text = "ID in 12,345";
  EXPECT_EQ(ParseIDList({"filter", text}, 6, 11), (IDs{12, 34}));
}

TEST(IDList, PartOfATextIsNamedByTheWholeText) {
  std::string told;
  try {
    ParseIDList({"filter", "ID in 12,x"}, 6, 10);
  } catch (const platform::Error& error) {
    told = error.what();
  }
  EXPECT_EQ(told, "filter \"ID in 12,x\" column 10: a number is expected");
}

TEST(IDList, AMillionIDsKeepTheirOrder) {
  std::string list = "0";
  IDs expected = {0};
  // A walk through all residues of a prime: each once, in no rising order.
  constexpr std::int64_t kPrime = 1000003;
  for (std::int64_t id = 17; id != 0 && expected.size() < 1000000; id = (id + 17) % kPrime) {
    expected.push_back(id);
    list += "," + std::to_string(id);
  }
  list += ",17,34,0";
  ASSERT_EQ(expected.size(), 1000000U);
  EXPECT_EQ(ParseIDList(list), expected);
}

}  // namespace
}  // namespace qmrules::workbench::repository
