#include "workbench/codemodel/textpool.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace qmrules::workbench::codemodel {
namespace {

TEST(TextPool, EqualTextsShareANumberAndTheEmptyTextIsZero) {
  TextPool pool;
  EXPECT_EQ(pool.Add(""), 0U);
  const TextId first = pool.Add("MOVE");
  EXPECT_NE(first, 0U);
  EXPECT_NE(pool.Add("move"), first);
  EXPECT_EQ(pool.Add("MOVE"), first);
  EXPECT_EQ(pool.Get(first), "MOVE");
  EXPECT_EQ(pool.Get(0), "");
}

TEST(TextPool, NumbersStayWhileThePoolGrows) {
  TextPool pool;
  std::vector<TextId> numbers;
  for (int text = 0; text < 10'000; ++text) numbers.push_back(pool.Add(fmt::format("TEXT-{}", text)));
  for (int text = 0; text < 10'000; ++text) {
    ASSERT_EQ(pool.Add(fmt::format("TEXT-{}", text)), numbers[static_cast<std::size_t>(text)]);
    ASSERT_EQ(pool.Get(numbers[static_cast<std::size_t>(text)]), fmt::format("TEXT-{}", text));
  }
}

TEST(TextPool, TakenTextsStandAtTheirNumbersAndThePoolBeginsAnew) {
  TextPool pool;
  pool.Add("B");
  pool.Add("A");
  EXPECT_THAT(pool.Take(), ::testing::ElementsAre("", "B", "A"));
  EXPECT_EQ(pool.Add("A"), 1U);
  EXPECT_THAT(pool.Take(), ::testing::ElementsAre("", "A"));
}

}  // namespace
}  // namespace qmrules::workbench::codemodel
