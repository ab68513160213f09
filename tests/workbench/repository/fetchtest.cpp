// Fetches of one node: fetch lists, orders, ID lists and the walk.

#include <gtest/gtest.h>

#include <numeric>

#include "support/errortext.h"
#include "support/teststore.h"
#include "workbench/repository/fetchrows.h"

namespace qmrules::test {
namespace {

using platform::Value;

class FetchOfRules : public ::testing::Test {
 protected:
  FetchOfRules() {
    Add("beta", 2);
    Add("Alpha", 3);
    Add("ALPHA", 1);
    Add("gamma", 2);
  }
  void Add(const std::string& ruleName, const Value& seqNo) {
    store.Add("RULE", "n", {{"RuleName", ruleName}, {"SeqNo", seqNo}});
  }
  std::string Rules(std::string_view list, std::initializer_list<std::string_view> names,
                    const platform::Filter& filter = {}) {
    return Select(store.Repository(), "RULE", list, filter, names);
  }
  TestStore store;
};

TEST_F(FetchOfRules, UnsortedRowsComeByID) {
  EXPECT_EQ(Rules("ID,RuleName", {"ID", "RuleName"}), "1|beta;2|Alpha;3|ALPHA;4|gamma");
}

TEST_F(FetchOfRules, AValueIsDeliveredInItsTypeAndAsText) {
  store.Put("RULE#1", "Validated", "2026-01-01 10:00:00");
  const auto fetch = store.Repository().NewFetch();
  fetch->SetRoot(fetch->AddObject(false, "RULE", "ID,SeqNo,Validated,RuleName,Description", "ID=1"));
  EXPECT_FALSE(fetch->Execute(""));
  EXPECT_EQ(fetch->Row().Item("ID").Value(), Value(1));
  EXPECT_EQ(fetch->Row().Item("SeqNo").Value(), Value(2));
  EXPECT_EQ(fetch->Row().Item("SeqNo").Text(), "2");
  EXPECT_EQ(fetch->Row().Item("Validated").Value(), Value(*platform::ParseTimestamp("2026-01-01 10:00:00")));
  EXPECT_EQ(fetch->Row().Item("Validated").Text(), "2026-01-01 10:00:00");
  EXPECT_EQ(fetch->Row().Item("RuleName").Value(), Value("beta"));
  EXPECT_TRUE(fetch->Row().Item("Description").Value().IsAbsent());
  EXPECT_EQ(fetch->Row().Item("Description").Text(), "");
}

TEST_F(FetchOfRules, AnAliasedItemIsDeliveredUnderTheAliasOnly) {
  const auto fetch = store.Repository().NewFetch();
  fetch->SetRoot(fetch->AddObject(false, "RULE", "ID:RuleID,RuleName", "ID=1"));
  fetch->Execute("");
  EXPECT_EQ(RowText(*fetch, {"RuleID", "ruleid", "RULENAME"}), "1|1|beta");
  EXPECT_EQ(ErrorText([&] { fetch->Row().Item("ID"); }), "The fetch delivers no field \"ID\".");
  EXPECT_EQ(ErrorText([&] { fetch->Row().Item("SeqNo"); }), "The fetch delivers no field \"SeqNo\".");
}

TEST_F(FetchOfRules, AttributesAreNamedInAnyCase) {
  EXPECT_EQ(Rules("id,rulename", {"ID", "RuleName"}, "ID=1"), "1|beta");
}

TEST_F(FetchOfRules, OneAttributeMayBeDeliveredTwice) {
  EXPECT_EQ(Rules("RuleName,RuleName:Again", {"RuleName", "Again"}, "ID=4"), "gamma|gamma");
}

TEST_F(FetchOfRules, AnEmptyListDeliversRowsWithoutFields) {
  const auto fetch = store.Repository().NewFetch();
  fetch->SetRoot(fetch->AddObject(false, "RULE", ""));
  int rows = 0;
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) ++rows;
  EXPECT_EQ(rows, 4);
}

TEST_F(FetchOfRules, SortingIsByNumberForNumbers) {
  Add("ten", 10);
  EXPECT_EQ(Rules("ID,>SeqNo", {"SeqNo"}), "1;2;2;3;10");
}

TEST_F(FetchOfRules, SortingUpwardsHeedsNoCaseAndTiesGoByID) {
  EXPECT_EQ(Rules("ID,>RuleName", {"ID"}), "2;3;1;4");
  EXPECT_EQ(Rules("ID,>SeqNo", {"ID"}), "3;1;4;2");
}

TEST_F(FetchOfRules, SortingDownwardsGivesTiesByFallingID) {
  EXPECT_EQ(Rules("ID,<RuleName", {"ID"}), "4;1;3;2");
  EXPECT_EQ(Rules("ID,<SeqNo", {"ID"}), "2;4;1;3");
}

TEST_F(FetchOfRules, TheLastSortItemTellsTheDirectionOfTies) {
  Add("beta", 2);
  EXPECT_EQ(Rules("ID,>RuleName,<SeqNo", {"ID"}), "2;3;5;1;4");
  EXPECT_EQ(Rules("ID,<RuleName,>SeqNo", {"ID"}), "4;1;5;3;2");
}

TEST_F(FetchOfRules, SortItemsApplyInTheirOrder) {
  EXPECT_EQ(Rules("ID,>SeqNo,<RuleName", {"ID"}), "3;4;1;2");
  EXPECT_EQ(Rules("<RuleName,ID,>SeqNo", {"ID"}), "4;1;3;2");
}

TEST_F(FetchOfRules, CaseIsFoldedBeyondASCII) {
  store.Add("RULESET", "Ärger");
  store.Add("RULESET", "zebra");
  store.Add("RULESET", "ÄRGER");
  store.Add("RULESET", "ähre");
  EXPECT_EQ(Select(store.Repository(), "RULESET", ">Name", {}, {"Name"}), "zebra;ähre;Ärger;ÄRGER");
}

TEST_F(FetchOfRules, UnsetValuesSortAsTheSmallest) {
  Add("", Value());
  EXPECT_EQ(Rules("ID,>SeqNo", {"ID"}), "5;3;1;4;2");
  EXPECT_EQ(Rules("ID,>RuleName", {"ID"}), "5;2;3;1;4");
  EXPECT_EQ(Rules("ID,>Validated", {"ID"}), "1;2;3;4;5");
}

TEST_F(FetchOfRules, ASortItemMayBeAliasedOrTheID) {
  EXPECT_EQ(Rules(">RuleName:N", {"N"}), "Alpha;ALPHA;beta;gamma");
  EXPECT_EQ(Rules("<ID", {"ID"}), "4;3;2;1");
}

TEST_F(FetchOfRules, AnEmptyResultIsAtItsEndAtOnce) {
  const auto fetch = store.Repository().NewFetch();
  fetch->SetRoot(fetch->AddObject(false, "RULE", "ID", "ID=99"));
  EXPECT_TRUE(fetch->Execute(""));
  EXPECT_TRUE(fetch->Eof());
  EXPECT_EQ(ErrorText([&] { fetch->Row(); }), "A fetch has no row past its last one.");
  EXPECT_EQ(ErrorText([&] { fetch->MoveNext(); }), "A fetch cannot move past its last row.");
  fetch->Reset();
  EXPECT_TRUE(fetch->Eof());
}

TEST_F(FetchOfRules, PastTheLastRowThereIsNone) {
  const auto fetch = store.Repository().NewFetch();
  fetch->SetRoot(fetch->AddObject(false, "RULE", "ID", "ID=1"));
  fetch->Execute("");
  const auto field = fetch->Row().Item("ID");
  fetch->MoveNext();
  EXPECT_TRUE(fetch->Eof());
  EXPECT_EQ(ErrorText([&] { fetch->Row(); }), "A fetch has no row past its last one.");
  EXPECT_EQ(ErrorText([&] { static_cast<void>(field.Value()); }), "A fetch has no row past its last one.");
  EXPECT_EQ(ErrorText([&] { static_cast<void>(field.Text()); }), "A fetch has no row past its last one.");
}

TEST_F(FetchOfRules, BeforeExecuteThereIsNoRow) {
  const auto fetch = store.Repository().NewFetch();
  EXPECT_TRUE(fetch->Eof());
  EXPECT_EQ(ErrorText([&] { fetch->Row(); }), "A fetch has no row past its last one.");
  EXPECT_EQ(ErrorText([&] { fetch->Execute(""); }), "A fetch needs a root: SetRoot comes before Execute.");
}

TEST_F(FetchOfRules, AFetchThatWasResetIsFilledAnew) {
  const auto fetch = store.Repository().NewFetch();
  fetch->Reset();
  fetch->SetRoot(fetch->AddObject(false, "RULE", "RuleName"));
  fetch->Execute("");
  EXPECT_EQ(RowText(*fetch, {"RuleName"}), "beta");
  fetch->Reset();
  EXPECT_TRUE(fetch->Eof());
  EXPECT_EQ(ErrorText([&] { fetch->Execute(""); }), "A fetch needs a root: SetRoot comes before Execute.");
  fetch->SetRoot(fetch->AddObject(false, "PROJECT", "Name"));
  EXPECT_EQ(Rows(*fetch, "", {"Name"}), "Demo;Other");
}

TEST_F(FetchOfRules, AFetchRunsAgainWithoutReset) {
  const auto fetch = store.Repository().NewFetch();
  fetch->SetRoot(fetch->AddObject(false, "RULE", "ID"));
  fetch->Execute("");
  fetch->MoveNext();
  EXPECT_EQ(Rows(*fetch, "", {"ID"}), "1;2;3;4");
}

TEST_F(FetchOfRules, AnIDListGivesItsOrder) {
  EXPECT_EQ(Rules("ID", {"ID"}, "ID in 0,3,1,4"), "3;1;4");
  EXPECT_EQ(Rules("ID", {"ID"}, "ID in (0,3,1,4)"), "3;1;4");
  EXPECT_EQ(Rules("ID", {"ID"}, "(ID in (0,3,1,4))"), "3;1;4");
  EXPECT_EQ(Rules("ID", {"ID"}, "ID in 4,3,2,1&SeqNo=2"), "4;1");
}

TEST_F(FetchOfRules, ASortItemGoesBeforeTheOrderOfTheList) {
  EXPECT_EQ(Rules(">ID", {"ID"}, "ID in 0,3,1,4"), "1;3;4");
  EXPECT_EQ(Rules("ID,>RuleName", {"ID"}, "ID in 4,1,3"), "3;1;4");
}

TEST_F(FetchOfRules, ADuplicateInTheListGivesOneRow) {
  EXPECT_EQ(Rules("ID", {"ID"}, "ID in 0,3,1,3,3,1"), "3;1");
  EXPECT_EQ(Rules("ID", {"ID"}, "ID in 0,2,2"), "2");
}

TEST_F(FetchOfRules, IDInZeroDeliversNothing) {
  EXPECT_EQ(Rules("ID", {"ID"}, "ID in 0"), "");
  EXPECT_EQ(Rules("ID", {"ID"}, "ID in (0)"), "");
  EXPECT_EQ(Rules("ID", {"ID"}, "~ID in 0"), "1;2;3;4");
}

TEST_F(FetchOfRules, ANegatedListDeliversTheOthers) {
  EXPECT_EQ(Rules("ID", {"ID"}, "~ID in 0,3,1"), "2;4");
  EXPECT_EQ(Rules("ID", {"ID"}, "~(ID in (3,1))"), "2;4");
  EXPECT_EQ(Rules("ID", {"ID"}, "~~ID in 3,1"), "1;3");
}

TEST_F(FetchOfRules, AListInAnAlternativeGivesNoOrder) {
  EXPECT_EQ(Rules("ID", {"ID"}, "ID in 4,3|SeqNo=3"), "2;3;4");
  EXPECT_EQ(Rules("ID", {"ID"}, "ID in 4,3|ID in 1"), "1;3;4");
}

TEST_F(FetchOfRules, TwoListsGiveTheirCommonRowsInTheOrderOfTheFirst) {
  EXPECT_EQ(Rules("ID", {"ID"}, "ID in 4,3,2&ID in 1,2,4"), "4;2");
  EXPECT_EQ(Rules("ID", {"ID"}, "ID in 4,3,2&~ID in 3"), "4;2");
}

TEST_F(FetchOfRules, AHundredThousandIDsStandInOneList) {
  std::string list = "0";
  for (int id = 100000; id > 0; --id) list += "," + std::to_string(id);
  EXPECT_EQ(Rules("ID", {"ID"}, "ID in " + list), "4;3;2;1");
  EXPECT_EQ(Rules("ID", {"ID"}, "~ID in " + list), "");
  EXPECT_EQ(Rules("ID", {"ID"}, "~ID in " + list + "|RuleName=beta"), "1");
  EXPECT_EQ(store.Repository().CountObjects("RULE", "ID in (" + list + ")"), 4);
}

TEST_F(FetchOfRules, AMalformedListIsToldWithTextAndColumn) {
  const auto fetch = store.Repository().NewFetch();
  EXPECT_EQ(ErrorText([&] { fetch->AddObject(false, "RULE", "ID,,Name"); }),
            "fetch list \"ID,,Name\" column 4: an attribute name is expected");
  EXPECT_EQ(ErrorText([&] { fetch->AddObject(false, "RULE", "ID, Name"); }),
            "fetch list \"ID, Name\" column 4: an attribute name is expected");
  EXPECT_EQ(ErrorText([&] { fetch->AddObject(false, "RULE", "ID", "ID in 1,x"); }),
            "filter \"ID in 1,x\" column 9: a number is expected");
  EXPECT_EQ(ErrorText([&] { fetch->AddObject(false, "RULE", "ID", "ID in "); }),
            "filter \"ID in \" column 7: a list is expected");
  EXPECT_EQ(ErrorText([&] { fetch->AddObject(false, "RULE", "ID", "(ID=1"); }),
            "filter \"(ID=1\" column 6: a \")\" is expected for the \"(\" of column 1");
}

TEST_F(FetchOfRules, AnUnknownFieldIsToldWithTextAndColumn) {
  EXPECT_EQ(ErrorText([&] { Rules("ID,>Colour:C", {"C"}); }),
            "fetch list \"ID,>Colour:C\" column 4: RULE has no attribute \"Colour\"");
  EXPECT_EQ(ErrorText([&] { Rules("ID", {"ID"}, "ID=1&Colour=red"); }),
            "filter \"ID=1&Colour=red\" column 6: RULE has no attribute \"Colour\"");
  EXPECT_EQ(ErrorText([&] { Rules("ID", {"ID"}, "SeqNo=1&SeqNo=x"); }),
            "filter \"SeqNo=1&SeqNo=x\" column 15: \"x\" is not a whole number.");
  EXPECT_EQ(ErrorText([&] { Rules("ID", {"ID"}, "Validated>soon"); }),
            "filter \"Validated>soon\" column 11: \"soon\" is not a date and time such as \"2026-01-31 18:30:00\".");
  EXPECT_EQ(ErrorText([&] { Rules("ID", {"ID"}, "RuleName like [a"); }),
            "filter \"RuleName like [a\" column 15: The pattern \"[a\" opens a list with \"[\" at column 1 and does "
            "not close it. Add \"]\", or write \"[[]\" for the character itself.");
  EXPECT_EQ(ErrorText([&] { Select(store.Repository(), "TABLE", "ID", {}, {"ID"}); }),
            "The repository has no entity \"TABLE\".");
}

TEST_F(FetchOfRules, AFailedExecuteLeavesTheFetchUsable) {
  const auto fetch = store.Repository().NewFetch();
  fetch->SetRoot(fetch->AddObject(false, "RULE", "Colour"));
  EXPECT_EQ(ErrorText([&] { fetch->Execute(""); }), "fetch list \"Colour\" column 1: RULE has no attribute \"Colour\"");
  EXPECT_TRUE(fetch->Eof());
  fetch->Reset();
  fetch->SetRoot(fetch->AddObject(false, "RULE", "ID", "ID=1"));
  EXPECT_EQ(Rows(*fetch, "", {"ID"}), "1");
}

}  // namespace
}  // namespace qmrules::test
