#include "platform/keyedcollection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace qmrules::platform {
namespace {

using testing::ElementsAre;

using Numbers = KeyedCollection<int>;

std::vector<int> ItemsOf(const Numbers& collection) {
  return {collection.begin(), collection.end()};
}

// 1, 2 and 3 under "one", "two" and "three".
Numbers OneTwoThree() {
  Numbers numbers;
  numbers.Add(1, "one");
  numbers.Add(2, "two");
  numbers.Add(3, "three");
  return numbers;
}

TEST(KeyedCollection, EmptyOneHasNothing) {
  Numbers numbers;
  EXPECT_TRUE(numbers.Empty());
  EXPECT_EQ(numbers.Count(), 0U);
  EXPECT_EQ(numbers.begin(), numbers.end());
  EXPECT_EQ(numbers.Find(""), nullptr);
  EXPECT_FALSE(numbers.Remove("a"));
}

TEST(KeyedCollection, ItemsKeepTheOrderOfAdding) {
  EXPECT_THAT(ItemsOf(OneTwoThree()), ElementsAre(1, 2, 3));
}

TEST(KeyedCollection, KeysCompareWithoutCase) {
  Numbers numbers;
  EXPECT_TRUE(numbers.Add(1, "Größe"));
  EXPECT_TRUE(numbers.Contains("GRÖßE"));
  EXPECT_FALSE(numbers.Add(2, "größe"));
  EXPECT_EQ(*numbers.Find("größe"), 1);
  EXPECT_EQ(numbers.Count(), 1U);
}

TEST(KeyedCollection, EmptyTextIsAKey) {
  Numbers numbers;
  EXPECT_TRUE(numbers.Add(1, ""));
  EXPECT_FALSE(numbers.Add(2, ""));
  EXPECT_EQ(*numbers.Find(""), 1);
}

TEST(KeyedCollection, ItemsWithoutKeyAreReachedByPlaceOnly) {
  Numbers numbers;
  numbers.Add(5);
  numbers.Add(5);
  EXPECT_FALSE(numbers.Contains(""));
  EXPECT_EQ(numbers.At(1), 5);
  numbers.At(2) = 6;
  EXPECT_THAT(ItemsOf(numbers), ElementsAre(5, 6));
}

TEST(KeyedCollection, InsertionBeforeAndAfterANeighbour) {
  Numbers numbers = OneTwoThree();
  EXPECT_TRUE(numbers.AddBefore("ONE", 0, "zero"));
  EXPECT_TRUE(numbers.AddAfter("Two", 25, "two and a half"));
  EXPECT_TRUE(numbers.AddAfter("three", 4, "four"));
  EXPECT_THAT(ItemsOf(numbers), ElementsAre(0, 1, 2, 25, 3, 4));
}

TEST(KeyedCollection, InsertionUnderATakenKeyChangesNothing) {
  Numbers numbers = OneTwoThree();
  EXPECT_FALSE(numbers.AddBefore("one", 9, "Three"));
  EXPECT_FALSE(numbers.AddAfter("one", 9, "Three"));
  EXPECT_THAT(ItemsOf(numbers), ElementsAre(1, 2, 3));
  EXPECT_EQ(*numbers.Find("three"), 3);
}

TEST(KeyedCollection, MissingNeighbourIsAnError) {
  Numbers numbers = OneTwoThree();
  EXPECT_THROW(numbers.AddBefore("ten", 9, "nine"), std::out_of_range);
  EXPECT_THROW(numbers.AddAfter("ten", 9, "nine"), std::out_of_range);
  EXPECT_EQ(numbers.Count(), 3U);
}

TEST(KeyedCollection, PlacesCountFromOne) {
  Numbers numbers = OneTwoThree();
  EXPECT_EQ(numbers.At(1), 1);
  EXPECT_EQ(std::as_const(numbers).At(3), 3);
  EXPECT_THROW(numbers.At(0), std::out_of_range);
  EXPECT_THROW(numbers.At(4), std::out_of_range);
  EXPECT_THROW(numbers.RemoveAt(0), std::out_of_range);
  EXPECT_THROW(numbers.RemoveAt(4), std::out_of_range);
}

TEST(KeyedCollection, RemovalByKeyFreesTheKey) {
  Numbers numbers = OneTwoThree();
  EXPECT_TRUE(numbers.Remove("TWO"));
  EXPECT_FALSE(numbers.Remove("two"));
  EXPECT_TRUE(numbers.Add(22, "two"));
  EXPECT_THAT(ItemsOf(numbers), ElementsAre(1, 3, 22));
}

TEST(KeyedCollection, RemovalByPlaceFreesTheKey) {
  Numbers numbers = OneTwoThree();
  numbers.Add(4);
  numbers.RemoveAt(4);
  numbers.RemoveAt(1);
  EXPECT_FALSE(numbers.Contains("one"));
  EXPECT_TRUE(numbers.Add(11, "one"));
  EXPECT_THAT(ItemsOf(numbers), ElementsAre(2, 3, 11));
}

TEST(KeyedCollection, ReferencesOutliveOtherItems) {
  Numbers numbers = OneTwoThree();
  int* two = numbers.Find("two");
  numbers.Remove("one");
  numbers.RemoveAt(2);
  for (int i = 0; i < 1000; ++i) numbers.Add(i, "key" + std::to_string(i));
  EXPECT_EQ(two, numbers.Find("two"));
  EXPECT_EQ(*two, 2);
}

TEST(KeyedCollection, MovedCollectionKeepsItsKeys) {
  Numbers numbers = OneTwoThree();
  Numbers moved = std::move(numbers);
  EXPECT_EQ(*moved.Find("three"), 3);
  EXPECT_TRUE(moved.AddAfter("two", 25, "more"));
  Numbers assigned;
  assigned.Add(9, "nine");
  assigned = std::move(moved);
  EXPECT_FALSE(assigned.Contains("nine"));
  EXPECT_THAT(ItemsOf(assigned), ElementsAre(1, 2, 25, 3));
}

TEST(KeyedCollection, ClearedCollectionTakesItsKeysAgain) {
  Numbers numbers = OneTwoThree();
  numbers.Clear();
  EXPECT_TRUE(numbers.Empty());
  EXPECT_TRUE(numbers.Add(7, "one"));
}

TEST(KeyedCollection, HoldsItemsThatOnlyMove) {
  KeyedCollection<std::unique_ptr<int>> numbers;
  numbers.Add(std::make_unique<int>(1), "one");
  numbers.Add(std::make_unique<int>(2));
  EXPECT_EQ(**numbers.Find("one"), 1);
  EXPECT_EQ(*numbers.At(2), 2);
}

TEST(KeyedCollection, IteratorsWalkBothWays) {
  const Numbers numbers = OneTwoThree();
  auto at = numbers.end();
  EXPECT_EQ(*--at, 3);
  EXPECT_EQ(*at--, 3);
  EXPECT_EQ(*at++, 2);
  EXPECT_EQ(*at, 3);
}

// Straight from the description: a list of pairs, searched from the front.
class PlainCollection {
 public:
  bool Insert(std::size_t place, int item, const std::string& key) {
    if (Place(key) < items_.size()) return false;
    items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(place), {key, item});
    return true;
  }
  bool Remove(const std::string& key) {
    const std::size_t place = Place(key);
    if (place == items_.size()) return false;
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(place));
    return true;
  }
  std::size_t Place(const std::string& key) const {
    return static_cast<std::size_t>(std::ranges::find(items_, key, &std::pair<std::string, int>::first) -
                                    items_.begin());
  }
  std::size_t Count() const { return items_.size(); }
  std::vector<int> Items() const {
    std::vector<int> result;
    for (const auto& [key, item] : items_) result.push_back(item);
    return result;
  }

 private:
  std::vector<std::pair<std::string, int>> items_;
};

TEST(KeyedCollection, BehavesAsAPlainListUnderAnyOperations) {
  std::mt19937 random(20260131);
  const auto below = [&random](std::size_t limit) { return random() % limit; };
  Numbers numbers;
  PlainCollection plain;
  for (int step = 0; step < 5000; ++step) {
    const std::string key = "k" + std::to_string(below(40));
    const std::string neighbour = "k" + std::to_string(below(40));
    const std::size_t place = plain.Place(neighbour);
    const bool hasNeighbour = place < plain.Count();
    const auto choice = below(5);
    if (choice == 0) {
      ASSERT_EQ(numbers.Add(step, key), plain.Insert(plain.Count(), step, key));
    } else if (choice == 1) {
      ASSERT_EQ(numbers.Remove(key), plain.Remove(key));
    } else if (!hasNeighbour) {
      ASSERT_FALSE(numbers.Remove(neighbour));
    } else if (choice == 2) {
      ASSERT_EQ(numbers.AddBefore(neighbour, step, key), plain.Insert(place, step, key));
    } else if (choice == 3) {
      ASSERT_EQ(numbers.AddAfter(neighbour, step, key), plain.Insert(place + 1, step, key));
    } else {
      numbers.RemoveAt(place + 1);
      plain.Remove(neighbour);
    }
    ASSERT_EQ(ItemsOf(numbers), plain.Items());
  }
}

}  // namespace
}  // namespace qmrules::platform
