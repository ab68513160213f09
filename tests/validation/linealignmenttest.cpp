#include "validation/linealignment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "platform/linereader.h"

namespace qmrules::validation {
namespace {

// Each pair as its sign with the places of its lines: "=0,0 ~1,1 <2 >3".
std::string Aligned(std::string_view left, std::string_view right) {
  std::string text;
  for (const LinePair& pair : AlignLines(platform::SplitLines(left), platform::SplitLines(right))) {
    text += text.empty() ? "" : " ";
    text += "=~<>"[static_cast<int>(pair.kind)];
    if (pair.left) text += std::to_string(*pair.left);
    if (pair.left && pair.right) text += ',';
    if (pair.right) text += std::to_string(*pair.right);
  }
  return text;
}

// The pieces that differ in brackets.
std::string Marked(const std::vector<LinePiece>& pieces) {
  std::string text;
  for (const LinePiece& piece : pieces) text += piece.differs ? "[" + piece.text + "]" : piece.text;
  return text;
}

TEST(LineAlignment, EqualTextsGoTogetherLineByLine) {
  EXPECT_EQ(Aligned("a\nb\n", "a\nb\n"), "=0,0 =1,1");
  EXPECT_EQ(Aligned("", ""), "");
}

TEST(LineAlignment, BlanksAtTheEndsOfALineDoNotCount) {
  EXPECT_EQ(Aligned("ADD 1\n\nSTOP\n", "   ADD 1  \n   \n\tSTOP\n"), "=0,0 =1,1 ~2,2");
}

TEST(LineAlignment, AnAddedLineStandsAloneOnTheRight) {
  EXPECT_EQ(Aligned("a\nb\n", "a\nx\nb\n"), "=0,0 >1 =1,2");
}

TEST(LineAlignment, ARemovedLineStandsAloneOnTheLeft) {
  EXPECT_EQ(Aligned("a\nx\nb\n", "a\nb\n"), "=0,0 <1 =2,1");
}

TEST(LineAlignment, WhatLiesBetweenEqualLinesGoesTogetherFromTheTop) {
  EXPECT_EQ(Aligned("a\nx\ny\nb\n", "a\nz\nb\n"), "=0,0 ~1,1 <2 =3,2");
  EXPECT_EQ(Aligned("x\n", "y\nz\n"), "~0,0 >1");
}

TEST(LineAlignment, ATextBesideNothingStandsAlone) {
  EXPECT_EQ(Aligned("a\nb\n", ""), "<0 <1");
  EXPECT_EQ(Aligned("", "a\n"), ">0");
}

// The length of a longest common subsequence, by its definition.
std::size_t LongestCommon(const std::string& left, const std::string& right) {
  if (left.empty() || right.empty()) return 0;
  const auto leftRest = left.substr(1);
  const auto rightRest = right.substr(1);
  if (left.front() == right.front()) return 1 + LongestCommon(leftRest, rightRest);
  return std::max(LongestCommon(leftRest, right), LongestCommon(left, rightRest));
}

TEST(LineAlignment, HasAsManyEqualLinesAsCanBeAndEveryLineOnce) {
  std::mt19937_64 random(7);
  const auto text = [&random] {
    std::string letters;
    for (auto count = random() % 9; count > 0; --count) letters += static_cast<char>('a' + random() % 3);
    return letters;
  };
  for (int round = 0; round < 2'000; ++round) {
    const std::string left = text();
    const std::string right = text();
    const auto lines = [](const std::string& letters) {
      std::vector<std::string_view> views;
      for (std::size_t place = 0; place < letters.size(); ++place)
        views.push_back(std::string_view(letters).substr(place, 1));
      return views;
    };
    std::string leftSeen;
    std::string rightSeen;
    std::size_t same = 0;
    for (const LinePair& pair : AlignLines(lines(left), lines(right))) {
      if (pair.left) leftSeen += left[*pair.left];
      if (pair.right) rightSeen += right[*pair.right];
      if (pair.kind == LinePairKind::Same) {
        ++same;
        ASSERT_EQ(left[*pair.left], right[*pair.right]);
      }
      if (pair.kind == LinePairKind::Changed) {
        ASSERT_NE(left[*pair.left], right[*pair.right]);
      }
    }
    ASSERT_EQ(leftSeen, left);
    ASSERT_EQ(rightSeen, right);
    ASSERT_EQ(same, LongestCommon(left, right)) << left << " and " << right;
  }
}

TEST(LineAlignment, ManyThousandDifferentLinesGoTogetherFromTheTop) {
  std::vector<std::string> texts;
  for (int line = 0; line < 5'000; ++line) texts.push_back("line " + std::to_string(line));
  std::vector<std::string_view> left(texts.begin(), texts.end());
  std::vector<std::string_view> right = left;
  right.front() = "x";
  right.back() = "y";
  right.insert(right.begin(), "z");
  left.insert(left.begin(), "z");
  left[3'000] = "w";
  const auto pairs = AlignLines(left, right);
  ASSERT_EQ(pairs.size(), 5'001U);
  EXPECT_EQ(pairs[0].kind, LinePairKind::Same);
  EXPECT_EQ(pairs[1].kind, LinePairKind::Changed);
  EXPECT_EQ(pairs[2].kind, LinePairKind::Same);
  EXPECT_EQ(pairs[3'000].kind, LinePairKind::Changed);
  EXPECT_EQ(pairs[5'000].kind, LinePairKind::Changed);
}

TEST(WordDifferences, AreTheWordsThatDiffer) {
  const auto words = CompareWords("MOVE WS-FEE TO WS-TOTAL.", "MOVE WS-TAX TO WS-TOTAL.");
  EXPECT_EQ(Marked(words.left), "MOVE [WS-FEE] TO WS-TOTAL.");
  EXPECT_EQ(Marked(words.right), "MOVE [WS-TAX] TO WS-TOTAL.");
}

TEST(WordDifferences, AreSignsAndBlanksToo) {
  const auto words = CompareWords("ADD 1 TO X.", "ADD  1 TO X");
  EXPECT_EQ(Marked(words.left), "ADD[ ]1 TO X[.]");
  EXPECT_EQ(Marked(words.right), "ADD[  ]1 TO X");
}

TEST(WordDifferences, ExistInLinesThatDifferInCase) {
  EXPECT_EQ(Marked(CompareWords("Stop Run", "STOP Run").left), "[Stop] Run");
}

TEST(WordDifferences, LeaveTheBlanksAtTheEndsAlone) {
  const auto words = CompareWords("ADD 1", "     ADD 2  ");
  EXPECT_EQ(Marked(words.left), "ADD [1]");
  EXPECT_EQ(Marked(words.right), "     ADD [2]  ");
  EXPECT_EQ(Marked(CompareWords("   ", "A").left), "   ");
}

TEST(WordDifferences, DoNotCutCharactersApart) {
  const auto words = CompareWords("料金 = 1", "税金 = 1");
  EXPECT_EQ(Marked(words.left), "[料金] = 1");
  EXPECT_EQ(Marked(words.right), "[税金] = 1");
}

TEST(WordDifferences, OfEndlessLinesAreWhatLiesBetweenTheirCommonEnds) {
  std::string left = "A";
  std::string right = "A";
  for (int word = 0; word < 3'000; ++word) {
    left += ",l" + std::to_string(word);
    right += ",r" + std::to_string(word);
  }
  const auto words = CompareWords(left + ",Z", right + ",Z");
  ASSERT_EQ(words.left.size(), 3U);
  EXPECT_EQ(words.left[0], (LinePiece{"A,", false}));
  EXPECT_TRUE(words.left[1].differs);
  EXPECT_EQ(words.left[2], (LinePiece{",Z", false}));
}

}  // namespace
}  // namespace qmrules::validation
