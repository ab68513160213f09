#include "shell/utf16.h"

#include <gtest/gtest.h>

#include <string>

namespace qmrules::shell {
namespace {

TEST(CharacterCount, CountsUtf16CodeUnits) {
  EXPECT_EQ(CharacterCount(""), 0U);
  EXPECT_EQ(CharacterCount("abc"), 3U);
  EXPECT_EQ(CharacterCount("é語"), 2U);
  EXPECT_EQ(CharacterCount("😀"), 2U);
  EXPECT_EQ(CharacterCount("a😀b"), 4U);
}

TEST(CharacterCount, EachMalformedByteIsOne) {
  EXPECT_EQ(CharacterCount("\xFF\xE2\x82"), 3U);
  EXPECT_EQ(CharacterCount("\xED\xA0\x80"), 3U);
}

TEST(LeftCharacters, ShortTextComesBackWhole) {
  EXPECT_EQ(LeftCharacters("", 5), "");
  EXPECT_EQ(LeftCharacters("abc", 3), "abc");
  EXPECT_EQ(LeftCharacters("語語語", 3), "語語語");
  EXPECT_EQ(LeftCharacters("abc", 1000), "abc");
}

TEST(LeftCharacters, CutsCharactersAndNotBytes) {
  EXPECT_EQ(LeftCharacters("語é日本", 3), "語é日");
  EXPECT_EQ(LeftCharacters("abc", 0), "");
}

TEST(LeftCharacters, PairThatWouldBeSplitIsLeftOut) {
  EXPECT_EQ(LeftCharacters("a😀b", 1), "a");
  EXPECT_EQ(LeftCharacters("a😀b", 2), "a");
  EXPECT_EQ(LeftCharacters("a😀b", 3), "a😀");
  EXPECT_EQ(LeftCharacters("😀", 1), "");
}

TEST(LeftCharacters, MalformedBytesAreCutOneByOne) {
  EXPECT_EQ(LeftCharacters("\xFF\xFE\xFD", 2), "\xFF\xFE");
}

TEST(CutWithEllipsis, TextOfExactlyTheLimitIsKeptWhole) {
  const std::string text(255, 'x');
  EXPECT_EQ(CutWithEllipsis(text, 255), text);
}

TEST(CutWithEllipsis, OneCharacterMoreIsCutToTheLimitAndDots) {
  EXPECT_EQ(CutWithEllipsis(std::string(256, 'x'), 255), std::string(255, 'x') + "...");
}

TEST(CutWithEllipsis, CountsCharactersAndNotBytes) {
  std::string text;
  for (int i = 0; i < 255; ++i) {
    text += "語";
  }
  EXPECT_EQ(CutWithEllipsis(text, 255), text);
  EXPECT_EQ(CutWithEllipsis(text + "é", 255), text + "...");
}

TEST(CutWithEllipsis, PairOverTheLimitIsLeftOutWhole) {
  const std::string text(254, 'x');
  EXPECT_EQ(CutWithEllipsis(text + "😀", 255), text + "...");
  EXPECT_EQ(CutWithEllipsis(text + "😀", 256), text + "😀");
}

TEST(CutWithEllipsis, KeepsFewerCharactersThanTheLimitWhenTold) {
  EXPECT_EQ(CutWithEllipsis(std::string(1024, 'x'), 1024, 1021), std::string(1024, 'x'));
  EXPECT_EQ(CutWithEllipsis(std::string(1025, 'x'), 1024, 1021), std::string(1021, 'x') + "...");
}

}  // namespace
}  // namespace qmrules::shell
