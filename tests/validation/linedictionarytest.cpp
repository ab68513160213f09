#include "validation/linedictionary.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace qmrules::validation {
namespace {

using Numbers = std::vector<std::int32_t>;

Numbers Enter(LineDictionary& dictionary) {
  Numbers numbers;
  dictionary.EnterAnnounced(numbers);
  return numbers;
}

TEST(LineDictionary, AnnouncedKeysGetTheNumbersThatTheyWouldGetOneByOne) {
  LineDictionary announced;
  LineDictionary single;
  Numbers together;
  Numbers apart;
  for (int key = 0; key < 1'000; ++key) {
    const std::string text = (key % 2 == 0 ? "Line " : "LINE ") + std::to_string(key * key % 301);
    announced.Announce(text);
    if (announced.IsBlockFull()) announced.EnterAnnounced(together);
    apart.push_back(single.LineId(text, true));
  }
  announced.EnterAnnounced(together);
  EXPECT_EQ(together, apart);
  EXPECT_EQ(announced.Count(), single.Count());
}

TEST(LineDictionary, AKeyAnnouncedTwiceInABlockIsEnteredOnce) {
  LineDictionary dictionary;
  for (const char* key : {"A", "B", "a", "Ä", "ä"}) dictionary.Announce(key);
  EXPECT_EQ(dictionary.Count(), 0) << "none is entered before it is asked for";
  EXPECT_EQ(Enter(dictionary), (Numbers{1, 2, 1, 3, 3}));
  EXPECT_EQ(dictionary.LineId("ä", false), 3);
}

TEST(LineDictionary, TheEmptyKeyIsNeverEntered) {
  LineDictionary dictionary;
  dictionary.Announce("");
  dictionary.Announce("A");
  EXPECT_EQ(Enter(dictionary), (Numbers{0, 1}));
  EXPECT_EQ(dictionary.LineId("", true), 0);
  EXPECT_EQ(dictionary.Count(), 1);
}

TEST(LineDictionary, KeysThatWereAnnouncedAreForgottenWithTheOthers) {
  LineDictionary dictionary;
  dictionary.Announce("A");
  dictionary.Clear(0);
  EXPECT_EQ(Enter(dictionary), Numbers{});
  EXPECT_EQ(dictionary.LineId("A", false), 0);
}

TEST(LineDictionary, ABlockIsFullByTheBytesOfItsKeysToo) {
  LineDictionary dictionary;
  dictionary.Announce("A");
  EXPECT_FALSE(dictionary.IsBlockFull());
  dictionary.Announce(std::string(100'000, 'x'));
  EXPECT_TRUE(dictionary.IsBlockFull());
  EXPECT_EQ(Enter(dictionary), (Numbers{1, 2}));
  EXPECT_FALSE(dictionary.IsBlockFull());
}

}  // namespace
}  // namespace qmrules::validation
