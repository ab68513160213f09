// Sets of bytes and the places that operands can be, against plain vectors of bits.

#include "workbench/flow/storageplace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace qmrules::workbench::flow {

void PrintTo(const ByteInterval& interval, std::ostream* out) {
  *out << interval.begin << ".." << interval.end;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::size_t kBits = 60;
using Bits = std::vector<bool>;

Bits BitsOf(const ByteSet& set) {
  Bits bits(kBits, false);
  std::uint64_t behind = 0;
  bool first = true;
  for (const ByteInterval& interval : set.Intervals()) {
    EXPECT_LT(interval.begin, interval.end);
    if (!first) {
      EXPECT_LT(behind, interval.begin) << "intervals touch";
    }
    first = false;
    behind = interval.end;
    for (std::uint64_t bit = interval.begin; bit < interval.end; ++bit) bits[bit] = true;
  }
  return bits;
}

class RandomSets {
 public:
  explicit RandomSets(unsigned seed) : random_(seed) {}
  ByteInterval Interval() {
    const std::uint64_t a = random_() % kBits, b = random_() % kBits;
    return {std::min(a, b), std::max(a, b)};
  }
  ByteSet Set() {
    ByteSet set;
    for (std::size_t count = random_() % 8; count > 0; --count) {
      const ByteInterval interval = Interval();
      set.Add({interval.begin, std::min(interval.end, interval.begin + 6)});
    }
    return set;
  }

 private:
  std::mt19937 random_;
};

template <typename Keep>
Bits Combined(const Bits& left, const Bits& right, Keep keep) {
  Bits bits(kBits);
  for (std::size_t at = 0; at < kBits; ++at) bits[at] = keep(left[at], right[at]);
  return bits;
}

TEST(ByteSets, DoWhatBitsDo) {
  RandomSets random(7);
  for (int round = 0; round < 4000; ++round) {
    const ByteSet left = random.Set(), right = random.Set();
    const ByteInterval interval = random.Interval();
    const Bits a = BitsOf(left), b = BitsOf(right), c = BitsOf(ByteSet(interval));
    ByteSet sum = left, rest = left, sumOfOne = left, restOfOne = left;
    sum.Add(right);
    rest.Remove(right);
    sumOfOne.Add(interval);
    restOfOne.Remove(interval);
    const auto either = [](bool x, bool y) { return x || y; };
    const auto butNot = [](bool x, bool y) { return x && !y; };
    const auto both = [](bool x, bool y) { return x && y; };
    ASSERT_EQ(BitsOf(sum), Combined(a, b, either));
    ASSERT_EQ(BitsOf(sumOfOne), Combined(a, c, either));
    ASSERT_EQ(BitsOf(rest), Combined(a, b, butNot));
    ASSERT_EQ(BitsOf(restOfOne), Combined(a, c, butNot));
    ASSERT_EQ(BitsOf(left.Within(right)), Combined(a, b, both));
    ASSERT_EQ(BitsOf(left.Within(interval)), Combined(a, c, both));
    ASSERT_EQ(left.Overlaps(right), !left.Within(right).Empty());
    ASSERT_EQ(left.Overlaps(interval), !left.Within(interval).Empty());
    ASSERT_EQ(left.Bytes(), static_cast<std::uint64_t>(std::count(a.begin(), a.end(), true)));
  }
}

TEST(ByteSets, AnEmptyIntervalChangesNothing) {
  ByteSet set({4, 8});
  set.Add({6, 6});
  set.Remove({5, 5});
  EXPECT_THAT(set.Intervals(), ElementsAre(ByteInterval{4, 8}));
  EXPECT_FALSE(set.Overlaps({5, 5}));
}

TEST(StoragePlaces, AnExactPlaceIsItsBytes) {
  EXPECT_THAT((StoragePlace{1, {3, 7}, {}}.Bytes().Intervals()), ElementsAre(ByteInterval{3, 7}));
  EXPECT_TRUE((StoragePlace{1, {3, 3}, {}}.Bytes().Empty()));
}

TEST(StoragePlaces, OccurrencesStandApartByTheirStep) {
  const StoragePlace place{1, {2, 4}, {{5, 3}}};
  EXPECT_THAT(place.Bytes().Intervals(), ElementsAre(ByteInterval{2, 4}, ByteInterval{7, 9}, ByteInterval{12, 14}));
}

TEST(StoragePlaces, OccurrencesThatTouchAreOneInterval) {
  const StoragePlace place{1, {0, 3}, {{30, 100000}, {3, 10}}};
  EXPECT_THAT(place.Bytes(4).Intervals(), ElementsAre(ByteInterval{0, 3000000}));
}

TEST(StoragePlaces, TooManyIntervalsBecomeTheOneAroundThemAll) {
  const StoragePlace place{1, {1, 2}, {{10, 3}, {3, 2}}};
  EXPECT_THAT(place.Bytes(6).Intervals().size(), 6U);
  EXPECT_THAT(place.Bytes(5).Intervals(), ElementsAre(ByteInterval{1, 25}));
}

TEST(StoragePlaces, DimensionsCanComeInAnyOrder) {
  const StoragePlace outer{1, {0, 1}, {{10, 2}, {2, 3}}}, inner{1, {0, 1}, {{2, 3}, {10, 2}}};
  EXPECT_EQ(outer.Bytes(), inner.Bytes());
  EXPECT_EQ(outer.Bytes().Bytes(), 6U);
}

TEST(StoragePlaces, HugeSizesDoNotOverflow) {
  const std::uint64_t huge = ~std::uint64_t{0} / 2;
  const StoragePlace place{1, {huge, huge + 5}, {{huge, 4000000000U}}};
  EXPECT_THAT(place.Bytes(10).Intervals(), ElementsAre(ByteInterval{huge, ~std::uint64_t{0}}));
}

}  // namespace
}  // namespace qmrules::workbench::flow
