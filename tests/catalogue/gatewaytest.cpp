#include "catalogue/gateway.h"

#include <gtest/gtest.h>

#include <deque>

#include "catalogue/collectionitems.h"
#include "platform/error.h"
#include "support/teststore.h"

namespace qmrules::catalogue {
namespace {

using platform::KeyedCollection;

std::string SplitFailure(std::string_view key) {
  try {
    return "split as " + SplitKey(key).entity;
  } catch (const platform::Error& error) {
    return error.what();
  }
}

TEST(ObjectKeys, BlanksAroundTheEntityAreTrimmed) {
  EXPECT_EQ(MakeKey(" RULE ", 5), "RULE#5");
}

TEST(ObjectKeys, SplitIsTheInverse) {
  EXPECT_EQ(SplitKey("RULE#1234"), (ObjectKey{"RULE", 1234}));
  EXPECT_EQ(SplitKey(MakeKey("RULESET", 2147483647)), (ObjectKey{"RULESET", 2147483647}));
}

TEST(ObjectKeys, AMalformedKeyIsNamed) {
  const auto message = [](std::string_view key) {
    return "\"" + std::string(key) +
           "\" is not an object key. A key is an entity name, \"#\" and a number, as RULE#17.";
  };
  for (const char* key : {"", "RULE", "#5", " #5", "RULE#", "RULE#five", "RULE#5x", "RULE#-5", "RULE#2147483648",
                          "RULE# 5", "RULE#5#6"}) {
    EXPECT_EQ(SplitFailure(key), message(key));
  }
}

TEST(KeyedCollections, KeyExistsIsNeverAnError) {
  KeyedCollection<std::string> collection;
  collection.Add("one", "a");
  EXPECT_TRUE(KeyExists(collection, "A"));
  EXPECT_FALSE(KeyExists(collection, "b"));
  EXPECT_FALSE(KeyExists(collection, ""));
}

TEST(KeyedCollections, AddKeyedTwiceKeepsOneItem) {
  KeyedCollection<std::string> collection;
  EXPECT_TRUE(AddKeyed(collection, "17"));
  EXPECT_FALSE(AddKeyed(collection, "17"));
  EXPECT_EQ(Items(collection), (std::vector<std::string>{"17"}));
  EXPECT_TRUE(KeyExists(collection, "k17"));
}

TEST(KeyedCollections, ACopyHasTheItemsInOrderWithoutKeys) {
  KeyedCollection<std::string> collection;
  AddKeyed(collection, "b");
  AddKeyed(collection, "a");
  collection.Add("b");
  const auto copy = CopyCollection(collection);
  EXPECT_EQ(Items(copy), (std::vector<std::string>{"b", "a", "b"}));
  EXPECT_FALSE(KeyExists(copy, "kb"));
  EXPECT_EQ(collection.Count(), 3U);
}

TEST(PackIDs, FewerThanTwoItemsStay) {
  KeyedCollection<std::string> ids;
  PackIDs(ids);
  EXPECT_TRUE(ids.Empty());
  AddKeyed(ids, "5");
  PackIDs(ids);
  EXPECT_EQ(Items(ids), (std::vector<std::string>{"5"}));
  EXPECT_TRUE(KeyExists(ids, "k5"));
}

TEST(PackIDs, TwoItemsBecomeOne) {
  KeyedCollection<std::string> ids;
  AddKeyed(ids, "5");
  AddKeyed(ids, "6");
  PackIDs(ids);
  EXPECT_EQ(Items(ids), (std::vector<std::string>{"5,6"}));
  EXPECT_FALSE(KeyExists(ids, "k5"));
}

TEST(PackIDs, TheFirstTwoAreJoinedAndGoToTheEnd) {
  KeyedCollection<std::string> ids;
  for (const char* id : {"1", "2", "3"}) AddKeyed(ids, id);
  PackIDs(ids);
  EXPECT_EQ(Items(ids), (std::vector<std::string>{"3,1,2"}));
}

TEST(PackIDs, AJoinedTextOf5000CharactersIsKept) {
  KeyedCollection<std::string> ids;
  ids.Add(std::string(2499, '1'));
  ids.Add(std::string(2500, '2'));
  PackIDs(ids);
  ASSERT_EQ(ids.Count(), 1U);
  EXPECT_EQ(ids.At(1).size(), 5000U);
}

TEST(PackIDs, ALongerOneEndsThePackingForGood) {
  KeyedCollection<std::string> ids;
  ids.Add(std::string(2500, '1'));
  ids.Add(std::string(2500, '2'));
  ids.Add("3");
  ids.Add("4");
  PackIDs(ids);
  ASSERT_EQ(ids.Count(), 4U);
  EXPECT_EQ(ids.At(3), "3") << "what comes behind is not packed either";
}

TEST(PackIDs, PacksManyIDsAsTheRuleTells) {
  std::deque<std::string> plain;
  KeyedCollection<std::string> ids;
  for (int id = 1; id <= 20000; ++id) {
    plain.push_back(std::to_string(id));
    AddKeyed(ids, plain.back());
  }
  while (plain.size() >= 2) {
    const std::string joined = plain[0] + "," + plain[1];
    if (joined.size() > 5000) break;
    plain.pop_front();
    plain.pop_front();
    plain.push_back(joined);
  }
  PackIDs(ids);
  EXPECT_EQ(Items(ids), (std::vector<std::string>(plain.begin(), plain.end())));
  EXPECT_GT(ids.Count(), 1U);
}

TEST(IDList, BeginsWithAnIDThatNoObjectHas) {
  IDList list;
  EXPECT_EQ(list.Text(), "0");
  EXPECT_TRUE(list.Empty());
  list.Add(17);
  list.Add(42);
  EXPECT_EQ(list.Text(), "0,17,42");
  EXPECT_FALSE(list.Empty());
  list.Clear();
  EXPECT_EQ(list.Text(), "0");
}

TEST(IDList, IsFullPast4000Characters) {
  IDList list;
  for (int count = 0; count < 999; ++count) list.Add(100);
  list.Add(10);
  EXPECT_EQ(list.Text().size(), 4000U);
  EXPECT_FALSE(list.IsFull());
  list.Add(1);
  EXPECT_TRUE(list.IsFull());
  list.Clear();
  EXPECT_FALSE(list.IsFull());
}

class Query : public testing::Test {
 protected:
  test::TestStore store;
  platform::Repository& repository = store.Repository();
  std::int32_t function = store.AddFunction("Billing");
};

TEST_F(Query, AnIDListOfZeroDeliversNoRow) {
  const auto fetch = NewQuery(repository);
  fetch->SetRoot(fetch->AddObject(false, kBusinessFunction, "ID", "ID in " + IDList().Text()));
  EXPECT_TRUE(fetch->Execute(""));
}

TEST_F(Query, AnAliasIsTheOnlyNameOfItsField) {
  const auto fetch = NewQuery(repository);
  fetch->SetRoot(fetch->AddObject(false, kBusinessFunction, "ID:FuncID"));
  ASSERT_FALSE(fetch->Execute(""));
  EXPECT_EQ(IDField(fetch->Row(), "FuncID"), function);
  EXPECT_THROW(fetch->Row().Item("ID"), platform::Error);
}

TEST_F(Query, AnEmptyResultIsAtItsEndAtOnceAndCanBeReset) {
  const auto fetch = NewQuery(repository);
  fetch->SetRoot(fetch->AddObject(false, kRule, "ID"));
  EXPECT_TRUE(fetch->Execute(""));
  EXPECT_TRUE(fetch->Eof());
  fetch->Reset();
  fetch->SetRoot(fetch->AddObject(false, kBusinessFunction, "ID"));
  EXPECT_FALSE(fetch->Execute(""));
}

TEST_F(Query, AFieldThatIsNoIDIsRefused) {
  const auto fetch = NewQuery(repository);
  fetch->SetRoot(fetch->AddObject(false, kBusinessFunction, "Description:FuncID"));
  ASSERT_FALSE(fetch->Execute(""));
  try {
    FAIL() << IDField(fetch->Row(), "FuncID");
  } catch (const platform::Error& error) {
    EXPECT_STREQ(error.what(), "The field FuncID holds 0, which is not the ID of an object.");
  }
}

}  // namespace
}  // namespace qmrules::catalogue
