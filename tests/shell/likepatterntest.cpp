#include "shell/likepattern.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "shell/casemapping.h"
#include "shell/utf8.h"

namespace qmrules::shell {
namespace {

std::string ErrorOf(std::string_view pattern) {
  try {
    const LikePattern compiled(pattern);
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "no error";
}

TEST(LikePattern, PlainTextMatchesTheWholeTextIgnoringCase) {
  EXPECT_TRUE(MatchesPattern("abc", "ABC"));
  EXPECT_TRUE(MatchesPattern("Überweisung", "üBERWEISUNG"));
  EXPECT_FALSE(MatchesPattern("abcd", "abc"));
  EXPECT_FALSE(MatchesPattern("ab", "abc"));
}

TEST(LikePattern, EmptyPatternMatchesOnlyTheEmptyText) {
  EXPECT_TRUE(MatchesPattern("", ""));
  EXPECT_FALSE(MatchesPattern("a", ""));
}

TEST(LikePattern, AsteriskIsAnyRunAlsoNone) {
  EXPECT_TRUE(MatchesPattern("", "*"));
  EXPECT_TRUE(MatchesPattern("", "**"));
  EXPECT_TRUE(MatchesPattern("anything", "*"));
  EXPECT_TRUE(MatchesPattern("abc", "a*c"));
  EXPECT_TRUE(MatchesPattern("ac", "a*c"));
  EXPECT_FALSE(MatchesPattern("acb", "a*c"));
  EXPECT_TRUE(MatchesPattern("a-b-c-b", "a*b"));
  EXPECT_TRUE(MatchesPattern("xaab", "*a*a*b"));
  EXPECT_FALSE(MatchesPattern("xab", "*a*a*b"));
}

TEST(LikePattern, BeginningEndAndMiddle) {
  EXPECT_TRUE(MatchesPattern("Customer name", "CUST*"));
  EXPECT_TRUE(MatchesPattern("cust", "CUST*"));
  EXPECT_FALSE(MatchesPattern("cus", "CUST*"));
  EXPECT_FALSE(MatchesPattern("a customer", "cust*"));
  EXPECT_TRUE(MatchesPattern("a customer", "*CUST*"));
  EXPECT_TRUE(MatchesPattern("ababac", "*abac*"));
  EXPECT_FALSE(MatchesPattern("ababab", "*abac*"));
  EXPECT_TRUE(MatchesPattern("first.cbl", "*.CBL"));
  EXPECT_FALSE(MatchesPattern("first.cbl.old", "*.CBL"));
}

TEST(LikePattern, FindsRuleAndRuleSetNodesByTheirKeys) {
  EXPECT_TRUE(MatchesPattern("f12s3r45", "f*r45"));
  EXPECT_FALSE(MatchesPattern("f12s3r455", "f*r45"));
  EXPECT_FALSE(MatchesPattern("f12s3", "f*r45"));
  EXPECT_TRUE(MatchesPattern("f12s3", "f*s3"));
}

TEST(LikePattern, QuestionMarkIsOneCodePoint) {
  EXPECT_TRUE(MatchesPattern("é", "?"));
  EXPECT_TRUE(MatchesPattern("😀", "?"));
  EXPECT_TRUE(MatchesPattern("日本", "??"));
  EXPECT_FALSE(MatchesPattern("", "?"));
  EXPECT_FALSE(MatchesPattern("ab", "?"));
  EXPECT_TRUE(MatchesPattern("ab", "*?"));
  EXPECT_FALSE(MatchesPattern("", "*?"));
}

TEST(LikePattern, NumberSignIsOneAsciiDigit) {
  EXPECT_TRUE(MatchesPattern("R0", "r#"));
  EXPECT_TRUE(MatchesPattern("R9", "r#"));
  EXPECT_FALSE(MatchesPattern("Rx", "r#"));
  EXPECT_FALSE(MatchesPattern("R１", "r#"));
  EXPECT_FALSE(MatchesPattern("R", "r#"));
}

TEST(LikePattern, ListHoldsItsCharactersAndRanges) {
  EXPECT_TRUE(MatchesPattern("b", "[abc]"));
  EXPECT_FALSE(MatchesPattern("d", "[abc]"));
  EXPECT_TRUE(MatchesPattern("m", "[a-z]"));
  EXPECT_TRUE(MatchesPattern("5", "[a-z0-9]"));
  EXPECT_FALSE(MatchesPattern("-", "[a-z0-9]"));
  EXPECT_TRUE(MatchesPattern("語", "[日本語]"));
  EXPECT_TRUE(MatchesPattern("д", "[а-я]"));
  EXPECT_FALSE(MatchesPattern("", "[abc]"));
  EXPECT_FALSE(MatchesPattern("ab", "[abc]"));
}

TEST(LikePattern, ListIgnoresCase) {
  EXPECT_TRUE(MatchesPattern("B", "[abc]"));
  EXPECT_TRUE(MatchesPattern("b", "[ABC]"));
  EXPECT_TRUE(MatchesPattern("M", "[a-z]"));
  EXPECT_TRUE(MatchesPattern("m", "[A-Z]"));
  EXPECT_TRUE(MatchesPattern("Д", "[а-я]"));
  EXPECT_TRUE(MatchesPattern("ς", "[Σ]"));
  EXPECT_TRUE(MatchesPattern("ς", "[Σ-Τ]"));
  EXPECT_TRUE(MatchesPattern("ς", "[ρ-ς]"));
  EXPECT_FALSE(MatchesPattern("B", "[!abc]"));
  EXPECT_FALSE(MatchesPattern("M", "[!a-z]"));
}

TEST(LikePattern, RangeBetweenTheCasesHoldsTheSignsBetween) {
  EXPECT_TRUE(MatchesPattern("_", "[Z-a]"));
  EXPECT_TRUE(MatchesPattern("A", "[Z-a]"));
  EXPECT_TRUE(MatchesPattern("z", "[Z-a]"));
  EXPECT_FALSE(MatchesPattern("m", "[Z-a]"));
}

TEST(LikePattern, NegatedListIsOneCharacterThatIsNotInIt) {
  EXPECT_TRUE(MatchesPattern("d", "[!abc]"));
  EXPECT_FALSE(MatchesPattern("a", "[!abc]"));
  EXPECT_FALSE(MatchesPattern("", "[!abc]"));
  EXPECT_TRUE(MatchesPattern("é", "[!a-z]"));
}

TEST(LikePattern, SpecialCharactersArePlainInAList) {
  EXPECT_TRUE(MatchesPattern("a*b", "a[*]b"));
  EXPECT_FALSE(MatchesPattern("axb", "a[*]b"));
  EXPECT_TRUE(MatchesPattern("?", "[?]"));
  EXPECT_TRUE(MatchesPattern("#", "[#]"));
  EXPECT_FALSE(MatchesPattern("1", "[#]"));
  EXPECT_TRUE(MatchesPattern("[", "[[]"));
}

TEST(LikePattern, HyphenAtTheEdgeOfAListIsPlain) {
  EXPECT_TRUE(MatchesPattern("-", "[-a]"));
  EXPECT_TRUE(MatchesPattern("-", "[a-]"));
  EXPECT_TRUE(MatchesPattern("-", "[-]"));
  EXPECT_FALSE(MatchesPattern("-", "[!-a]"));
  EXPECT_FALSE(MatchesPattern("b", "[a-]"));
}

TEST(LikePattern, ExclamationMarkIsPlainExceptAtTheBeginningOfAList) {
  EXPECT_TRUE(MatchesPattern("!", "!"));
  EXPECT_TRUE(MatchesPattern("!", "[a!]"));
  EXPECT_TRUE(MatchesPattern("!", "[!]"));
  EXPECT_FALSE(MatchesPattern("a", "[!]"));
  EXPECT_FALSE(MatchesPattern("!", "[!!]"));
}

TEST(LikePattern, EmptyListStandsForNoCharacter) {
  EXPECT_TRUE(MatchesPattern("ab", "a[]b"));
  EXPECT_TRUE(MatchesPattern("", "[]"));
  EXPECT_FALSE(MatchesPattern("a", "[]"));
}

TEST(LikePattern, ClosingBracketOutsideAListIsPlain) {
  EXPECT_TRUE(MatchesPattern("a]", "a]"));
  EXPECT_TRUE(MatchesPattern("a]", "[a]]"));
}

TEST(LikePattern, LettersWithMoreThanTwoCasesMatchInEveryShape) {
  for (const char* pattern : {"ΣΑΣ", "σας*", "*σασ*", "*ςας", "[σ]α?", "?ΑΣ"}) {
    EXPECT_TRUE(MatchesPattern("σας", pattern)) << pattern;
  }
}

TEST(LikePattern, MalformedBytesAreCharactersOfTheirOwn) {
  EXPECT_TRUE(MatchesPattern("a\xFFz", "a?z"));
  EXPECT_TRUE(MatchesPattern("\xE2\x82", "??"));
  EXPECT_FALSE(MatchesPattern("\xE2\x82\xAC", "\xE2*"));
  EXPECT_TRUE(MatchesPattern("x\xFFx", "*\xFF*"));
}

TEST(LikePattern, UnclosedListIsRefusedWithPatternAndColumn) {
  EXPECT_EQ(ErrorOf("ab[cd"),
            "The pattern \"ab[cd\" opens a list with \"[\" at column 3 and does not close it. Add \"]\", or write "
            "\"[[]\" for the character itself.");
  EXPECT_EQ(ErrorOf("["),
            "The pattern \"[\" opens a list with \"[\" at column 1 and does not close it. Add \"]\", or write "
            "\"[[]\" for the character itself.");
}

TEST(LikePattern, ColumnCountsCharacters) {
  EXPECT_EQ(ErrorOf("é😀[]["),
            "The pattern \"é😀[][\" opens a list with \"[\" at column 6 and does not close it. Add \"]\", or write "
            "\"[[]\" for the character itself.");
}

TEST(LikePattern, BackwardRangeIsRefusedWithPatternAndColumn) {
  EXPECT_EQ(ErrorOf("x[0-9z-a]"),
            "The pattern \"x[0-9z-a]\" has a range at column 6 that runs backwards. Write its lower end first.");
}

TEST(LikePattern, ManyRunsDoNotExplode) {
  std::string pattern;
  for (int i = 0; i < 50; ++i) {
    pattern += "*a";
  }
  pattern += "*?b";
  EXPECT_FALSE(LikePattern(pattern).Matches(std::string(2000, 'a')));
  EXPECT_TRUE(LikePattern(pattern).Matches(std::string(2000, 'a') + "b"));
}

TEST(LikePattern, OneObjectMatchesManyTexts) {
  const LikePattern pattern("R?[0-4]#*");
  EXPECT_TRUE(pattern.Matches("rx09"));
  EXPECT_FALSE(pattern.Matches("rx59"));
  EXPECT_TRUE(pattern.Matches("R-40 and more"));
  EXPECT_FALSE(pattern.Matches(""));
}

/// A plain matcher straight from the meaning of the pattern, by recursion over both texts.
class PlainMatcher {
 public:
  static bool Matches(std::string_view text, std::string_view pattern) { return Rest(Split(text), Split(pattern)); }

 private:
  using Characters = std::u32string;

  static Characters Split(std::string_view text) {
    Characters result;
    for (std::size_t position = 0; position < text.size();) {
      const Utf8Step step = DecodeAt(text, position);
      result += step.value;
      position += step.length;
    }
    return result;
  }

  static char32_t Fold(char32_t value) { return CaseMapping::Unicode().Fold(value); }

  static bool Rest(const Characters& text, const Characters& pattern) {
    if (pattern.empty()) {
      return text.empty();
    }
    const Characters after = pattern.substr(1);
    if (pattern[0] == U'*') {
      return Rest(text, after) || (!text.empty() && Rest(text.substr(1), pattern));
    }
    if (pattern[0] == U'[') {
      const std::size_t close = pattern.find(U']');
      const Characters list = pattern.substr(1, close - 1);
      const Characters behind = pattern.substr(close + 1);
      if (list.empty()) {
        return Rest(text, behind);
      }
      return !text.empty() && IsListed(text[0], list) && Rest(text.substr(1), behind);
    }
    if (text.empty()) {
      return false;
    }
    const bool isAccepted = pattern[0] == U'?' || (pattern[0] == U'#' && text[0] >= U'0' && text[0] <= U'9') ||
                            (pattern[0] != U'#' && Fold(pattern[0]) == Fold(text[0]));
    return isAccepted && Rest(text.substr(1), after);
  }

  static bool IsListed(char32_t value, Characters list) {
    const bool isNegated = list.size() > 1 && list[0] == U'!';
    if (isNegated) {
      list.erase(0, 1);
    }
    bool isFound = false;
    while (!list.empty()) {
      const bool isRange = list.size() > 2 && list[1] == U'-';
      const char32_t last = isRange ? list[2] : list[0];
      for (char32_t member = list[0]; member <= last; ++member) {
        isFound = isFound || Fold(member) == Fold(value);
      }
      list.erase(0, isRange ? 3 : 1);
    }
    return isFound != isNegated;
  }
};

TEST(LikePattern, AgreesWithAPlainRecursiveMatcher) {
  const std::vector<std::string> patternPieces = {"*",  "*",      "?",    "#",     "a",    "B",
                                                  "1",  "é",      "Σ",    "[a-c]", "[!b]", "[Bx]",
                                                  "[]", "[!0-9]", "[-é]", "[*?]",  "ab",   "\xFF"};
  const std::vector<std::string> textPieces = {"a", "A", "b", "B", "c", "1", "9",   "é",
                                               "É", "σ", "ς", "*", "-", "😀", "\xFF"};
  std::mt19937 random(271828);
  const auto make = [&random](const std::vector<std::string>& pieces, std::size_t longest) {
    std::uniform_int_distribution<std::size_t> lengths(0, longest);
    std::uniform_int_distribution<std::size_t> pick(0, pieces.size() - 1);
    std::string result;
    for (std::size_t length = lengths(random); length > 0; --length) {
      result += pieces[pick(random)];
    }
    return result;
  };
  int matches = 0;
  for (int round = 0; round < 200000; ++round) {
    const std::string pattern = make(patternPieces, 5);
    const std::string text = make(textPieces, 6);
    const bool expected = PlainMatcher::Matches(text, pattern);
    ASSERT_EQ(MatchesPattern(text, pattern), expected) << "text " << text << ", pattern " << pattern;
    matches += expected ? 1 : 0;
  }
  // The comparison says little unless both answers come up often.
  EXPECT_GT(matches, 10000);
  EXPECT_LT(matches, 190000);
}

}  // namespace
}  // namespace qmrules::shell
