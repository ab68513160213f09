#include "platform/linereader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/textstream.h"
#include "support/errortext.h"

namespace qmrules::platform {
namespace {

using test::ErrorText;

using testing::ElementsAre;
using testing::IsEmpty;

TEST(LineReader, EmptyTextHasNoLine) {
  LineReader reader("");
  EXPECT_TRUE(reader.AtEnd());
  EXPECT_FALSE(reader.Next());
  EXPECT_FALSE(reader.SkipLine());
  EXPECT_EQ(reader.Row(), 0U);
  EXPECT_THAT(SplitLines(""), IsEmpty());
}

TEST(LineReader, FinalLineEndStartsNoFurtherLine) {
  EXPECT_THAT(SplitLines("a\nb\n"), ElementsAre("a", "b"));
  EXPECT_THAT(SplitLines("a\r\nb\r\n"), ElementsAre("a", "b"));
}

TEST(LineReader, LastLineWithoutLineEndCounts) {
  EXPECT_THAT(SplitLines("a\nb"), ElementsAre("a", "b"));
}

TEST(LineReader, EmptyLinesCount) {
  EXPECT_THAT(SplitLines("\n"), ElementsAre(""));
  EXPECT_THAT(SplitLines("\r\n\n"), ElementsAre("", ""));
  EXPECT_THAT(SplitLines("a\n\n\nb"), ElementsAre("a", "", "", "b"));
}

TEST(LineReader, CrLfAndLfMayBeMixed) {
  EXPECT_THAT(SplitLines("a\r\nb\nc\r\n"), ElementsAre("a", "b", "c"));
}

TEST(LineReader, LoneCrBelongsToItsLine) {
  EXPECT_THAT(SplitLines("a\rb\nc"), ElementsAre("a\rb", "c"));
  EXPECT_THAT(SplitLines("a\r"), ElementsAre("a\r"));
  EXPECT_THAT(SplitLines("\r"), ElementsAre("\r"));
  EXPECT_THAT(SplitLines("a\n\rb"), ElementsAre("a", "\rb"));
}

TEST(LineReader, OnlyTheCrNextToLfIsPartOfTheLineEnd) {
  EXPECT_THAT(SplitLines("a\r\r\nb"), ElementsAre("a\r", "b"));
}

TEST(LineReader, OtherSeparatorsEndNoLine) {
  EXPECT_THAT(SplitLines("a\x0B\x0C\x1A"
                         "b\xC2\x85"
                         "c\xE2\x80\xA8"
                         "d"),
              ElementsAre("a\x0B\x0C\x1A"
                          "b\xC2\x85"
                          "c\xE2\x80\xA8"
                          "d"));
}

TEST(LineReader, NulEndsNoLine) {
  const std::string_view text("a\0b\nc", 5);
  EXPECT_THAT(SplitLines(text), ElementsAre(std::string_view("a\0b", 3), "c"));
}

TEST(LineReader, RowsCountFromOneAndSkippedLinesCount) {
  LineReader reader("a\nb\nc");
  EXPECT_EQ(reader.Row(), 0U);
  EXPECT_EQ(reader.Next(), "a");
  EXPECT_EQ(reader.Row(), 1U);
  EXPECT_TRUE(reader.SkipLine());
  EXPECT_EQ(reader.Row(), 2U);
  EXPECT_FALSE(reader.AtEnd());
  EXPECT_EQ(reader.Next(), "c");
  EXPECT_EQ(reader.Row(), 3U);
  EXPECT_TRUE(reader.AtEnd());
  EXPECT_FALSE(reader.SkipLine());
  EXPECT_EQ(reader.Row(), 3U);
}

TEST(LineReader, LinesAreViewsIntoTheText) {
  const std::string text = "first\r\nsecond";
  const auto lines = SplitLines(text);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].data(), text.data());
  EXPECT_EQ(lines[1].data(), text.data() + 7);
}

TEST(TextStream, ReadsAndSkipsToTheEnd) {
  TextStream stream("a.cbl", "one\r\ntwo\nthree");
  EXPECT_EQ(stream.ReadLine(), "one");
  stream.SkipLine();
  EXPECT_FALSE(stream.AtEndOfStream());
  EXPECT_EQ(stream.ReadLine(), "three");
  EXPECT_TRUE(stream.AtEndOfStream());
  EXPECT_EQ(stream.Row(), 3U);
}

TEST(TextStream, ReadingPastTheEndNamesFileAndRow) {
  TextStream stream("src/a.cbl", "one\ntwo\n");
  stream.SkipLine();
  stream.SkipLine();
  EXPECT_EQ(ErrorText([&] { stream.ReadLine(); }),
            "The file \"src/a.cbl\" ends after line 2; there is no further line.");
}

TEST(TextStream, SkippingPastTheEndDoesNothing) {
  TextStream stream("a.cbl", "");
  EXPECT_TRUE(stream.AtEndOfStream());
  stream.SkipLine();
  EXPECT_TRUE(stream.AtEndOfStream());
  EXPECT_EQ(stream.Row(), 0U);
}

}  // namespace
}  // namespace qmrules::platform
