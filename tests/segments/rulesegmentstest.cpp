#include "segments/rulesegments.h"

#include <gtest/gtest.h>

#include "catalogue/gateway.h"
#include "platform/error.h"
#include "platform/memoryfilesystem.h"
#include "support/teststore.h"

namespace qmrules::segments {
namespace {

using catalogue::MakeKey;

class SourceLines : public testing::Test {
 protected:
  std::string Read(const std::string& text, std::int32_t first, std::int32_t last) {
    files.WriteFile("\\src\\FEE.cbl", text);
    return ReadSourceLines(files, "/src\\FEE.cbl", first, last);
  }

  SourceLines() { files.CreateFolder("/src"); }

  platform::FixedClock clock{platform::Timestamp{0}};
  platform::MemoryFileSystem files{clock};
};

TEST_F(SourceLines, AreThoseOfTheRowsEachWithALineFeed) {
  EXPECT_EQ(Read("one\ntwo\nthree\nfour\n", 2, 3), "two\nthree\n");
}

TEST_F(SourceLines, RowsCountFromOne) {
  EXPECT_EQ(Read("one\ntwo\n", 1, 1), "one\n");
}

TEST_F(SourceLines, EndWithALineFeedAlsoWhereTheFileDoesNot) {
  EXPECT_EQ(Read("one\ntwo", 2, 2), "two\n");
}

TEST_F(SourceLines, BehindTheEndOfTheFileAreLeftOut) {
  EXPECT_EQ(Read("one\ntwo\n", 2, 9), "two\n");
  EXPECT_EQ(Read("one\ntwo\n", 3, 9), "");
}

TEST_F(SourceLines, OfAnEmptyRunAreNone) {
  EXPECT_EQ(Read("one\ntwo\n", 2, 1), "");
}

TEST_F(SourceLines, LoseTheirCarriageReturns) {
  EXPECT_EQ(Read("one\r\ntwo\r\n", 1, 2), "one\ntwo\n");
}

TEST_F(SourceLines, HaveControlCharactersAsSafeTextMapsThem) {
  EXPECT_EQ(Read("a\x01"
                 "b\x0e\x0f\tc\n",
                 1, 1),
            "a&#64999;b}{\tc\n");
}

TEST_F(SourceLines, AreDecodedByTheEncodingOfTheSources) {
  EXPECT_EQ(Read("Geb\xfchr\n", 1, 1), "Gebühr\n");
}

TEST_F(SourceLines, OfAMissingFileAreAnError) {
  EXPECT_THROW(static_cast<void>(ReadSourceLines(files, "/src/NONE.cbl", 1, 1)), platform::Error);
}

TEST(SegmentLength, ThirtyThousandCharactersAreKeptAndOneMoreIsNot) {
  EXPECT_FALSE(IsTooLong(std::string(29999, 'x') + "\n"));
  EXPECT_TRUE(IsTooLong(std::string(30000, 'x') + "\n"));
}

TEST(SegmentLength, IsOfCharactersAndNotOfBytes) {
  std::string text;
  for (int count = 0; count < 30000; ++count) text += "ü";
  EXPECT_FALSE(IsTooLong(text));
  EXPECT_TRUE(IsTooLong(text + "ü"));
}

TEST(SegmentLength, CountsACharacterOutsideTheBasicPlaneTwice) {
  std::string text;
  for (int count = 0; count < 15000; ++count) text += "𝄞";
  EXPECT_FALSE(IsTooLong(text));
  EXPECT_TRUE(IsTooLong(text + "x"));
}

TEST(Segment, IsCapturedWhenItHasAProgram) {
  EXPECT_FALSE(Segment().IsCaptured());
  EXPECT_TRUE((Segment{"COBOL", "FEE", "FEE.cbl", 1, 2, "x\n"}).IsCaptured());
  Segment tooLong;
  tooLong.FromRow = 1;
  tooLong.ToRow = 900;
  EXPECT_FALSE(tooLong.IsCaptured()) << "rows alone are no segment";
}

class RuleSegment : public testing::Test {
 protected:
  std::string Text(const char* attribute) { return store.Get(MakeKey("RULE", rule), attribute).Text(); }

  void AddElements(int count) {
    for (int made = 0; made < count; ++made) {
      const auto element = store.Add("RULEIO", "element" + std::to_string(++elements_));
      repository.object(MakeKey("RULE", rule))->Link("Has", MakeKey("RULEIO", element));
    }
  }

  void Put(const Segment& segment) {
    const auto object = repository.object(MakeKey("RULE", rule));
    object->Edit();
    PutSegment(*object, segment, store.Clock().Now());
    object->Post();
  }

  test::TestStore store;
  platform::Repository& repository = store.Repository();
  std::int32_t rule = store.AddRule(store.AddRuleSet("Fees"), "Late fee", 1);

 private:
  int elements_ = 0;
};

TEST_F(RuleSegment, IsPutWithItsValidity) {
  store.Put(MakeKey("RULE", rule), "Valid", "Invalid");
  Put({"COBOL", "FEE", "cobol/FEE.cbl", 12, 14, "a\nb\nc\n"});
  EXPECT_EQ(Text("Model"), "COBOL");
  EXPECT_EQ(Text("Program"), "FEE");
  EXPECT_EQ(Text("FileName"), "cobol/FEE.cbl");
  EXPECT_EQ(Text("FromRow"), "12");
  EXPECT_EQ(Text("ToRow"), "14");
  EXPECT_EQ(Text("SourceText"), "a\nb\nc\n");
  EXPECT_EQ(Text("Valid"), "Valid");
  EXPECT_EQ(Text("Validated"), "2026-01-31 12:00:00");
}

TEST_F(RuleSegment, NoneTakesThePresentOneAwayAndLeavesAValidRule) {
  Put({"COBOL", "FEE", "cobol/FEE.cbl", 12, 14, "a\nb\nc\n"});
  store.Put(MakeKey("RULE", rule), "Valid", "Invalid");
  Put({});
  for (const char* attribute : {"Model", "Program", "FileName", "SourceText"}) EXPECT_EQ(Text(attribute), "");
  EXPECT_EQ(Text("FromRow"), "0");
  EXPECT_EQ(Text("ToRow"), "0");
  EXPECT_EQ(Text("Valid"), "Valid");
}

TEST_F(RuleSegment, DeletingTheDataElementsLeavesNone) {
  AddElements(10);
  DeleteRuleIO(repository, rule);
  EXPECT_EQ(repository.CountObjects("RULEIO", {}), 0);
}

TEST_F(RuleSegment, DeletingTheDataElementsLeavesTheRestOfTheRule) {
  AddElements(1);
  const auto condition = store.Add("RULECOND", "condition");
  repository.object(MakeKey("RULE", rule))->Link("IsControlledBy", MakeKey("RULECOND", condition));
  DeleteRuleIO(repository, rule);
  EXPECT_EQ(repository.CountObjects("RULEIO", {}), 0);
  EXPECT_EQ(repository.CountObjects("RULECOND", {}), 1);
  EXPECT_EQ(Text("RuleName"), "Late fee");
}

TEST_F(RuleSegment, DeletingTheDataElementsLeavesThoseOfOtherRules) {
  AddElements(2);
  rule = store.AddRule(store.AddRuleSet("Taxes"), "Other", 1);
  AddElements(3);
  DeleteRuleIO(repository, rule);
  EXPECT_EQ(repository.CountObjects("RULEIO", {}), 2);
}

TEST_F(RuleSegment, ARuleWithoutDataElementsIsLeftAsItIs) {
  DeleteRuleIO(repository, rule);
  EXPECT_EQ(Text("RuleName"), "Late fee");
}

TEST_F(RuleSegment, AnElementThatCannotBeDeletedDoesNotKeepTheOthers) {
  AddElements(3);
  // The first deletion takes the next element along, so that its own deletion fails.
  std::string doomed;
  const auto subscription = repository.OnObjectDeleted([&](const std::string& key) {
    if (!doomed.empty()) return;
    doomed = MakeKey("RULEIO", catalogue::SplitKey(key).id + 1);
    repository.object(doomed)->Delete();
  });
  DeleteRuleIO(repository, rule);
  EXPECT_NE(doomed, "");
  EXPECT_EQ(repository.CountObjects("RULEIO", {}), 0);
}

}  // namespace
}  // namespace qmrules::segments
