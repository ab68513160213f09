#include "shell/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <limits>
#include <set>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "shell/stringtables.h"
#include "shell/text.h"

namespace qmrules::shell {
namespace {

std::multiset<std::string> PlaceholdersOf(const std::string& text) {
  std::multiset<std::string> result;
  for (std::size_t place = text.find('%'); place != std::string::npos; place = text.find('%', place + 1)) {
    result.insert(text.substr(place, 2));
  }
  return result;
}

/// The letters behind the ampersands, in capitals.
std::string MnemonicsOf(const std::string& text) {
  std::string result;
  for (std::size_t place = text.find('&'); place != std::string::npos; place = text.find('&', place + 1)) {
    result += static_cast<char>(std::toupper(static_cast<unsigned char>(text.at(place + 1))));
  }
  return result;
}

std::vector<int> AllNumbers() {
  std::vector<int> numbers;
  for (int number = 100; number <= 214; ++number) {
    numbers.push_back(number);
  }
  for (int number = 500; number <= 649; ++number) {
    numbers.push_back(number);
  }
  return numbers;
}

std::string ErrorOf(const StringTable& table, int resourceNumber) {
  try {
    return "found " + table.Text(resourceNumber);
  } catch (const std::logic_error& error) {
    return error.what();
  }
}

class EveryStringTable : public testing::TestWithParam<Language> {
 protected:
  const StringTable& table = StringTableFor(GetParam());
  const StringTable& english = StringTableFor(Language::English);
};

INSTANTIATE_TEST_SUITE_P(Languages, EveryStringTable,
                         testing::Values(Language::English, Language::Japanese, Language::Korean),
                         [](const auto& info) { return std::to_string(static_cast<int>(info.param)); });

TEST_P(EveryStringTable, KnowsItsLanguage) {
  EXPECT_EQ(table.SpokenLanguage(), GetParam());
}

TEST_P(EveryStringTable, HasATextForEachOfItsNumbers) {
  ASSERT_EQ(AllNumbers().size(), 265U);
  for (const int number : AllNumbers()) {
    EXPECT_FALSE(table.Text(number).empty()) << number;
  }
}

TEST_P(EveryStringTable, HasNoOtherNumber) {
  for (const int number : {99, 215, 300, 499, 650, 0, -1}) {
    EXPECT_EQ(ErrorOf(table, number), "The string table has no entry " + std::to_string(number) + ".");
  }
}

TEST_P(EveryStringTable, KeepsThePlaceholdersOfTheEnglishText) {
  for (const int number : AllNumbers()) {
    EXPECT_EQ(PlaceholdersOf(table.Text(number)), PlaceholdersOf(english.Text(number))) << number;
  }
}

TEST_P(EveryStringTable, KeepsTheMnemonicOfTheEnglishText) {
  for (const int number : AllNumbers()) {
    EXPECT_EQ(MnemonicsOf(table.Text(number)), MnemonicsOf(english.Text(number))) << number;
  }
}

TEST_P(EveryStringTable, KeepsColonAndDotsAtTheEnd) {
  for (const int number : AllNumbers()) {
    EXPECT_EQ(table.Text(number).ends_with(':'), english.Text(number).ends_with(':')) << number;
    EXPECT_EQ(table.Text(number).ends_with("..."), english.Text(number).ends_with("...")) << number;
  }
}

TEST_P(EveryStringTable, IsFreeOfControlCharactersAndOuterBlanks) {
  for (const int number : AllNumbers()) {
    const std::string& text = table.Text(number);
    EXPECT_TRUE(std::ranges::none_of(text, [](unsigned char byte) { return byte < 32; })) << number;
    EXPECT_FALSE(text.starts_with(' ') || text.ends_with(' ')) << number;
  }
}

TEST_P(EveryStringTable, DataTemplateAndOkAreTheSameInAllLanguages) {
  EXPECT_EQ(table.Text(523), "CHECK_IN_[%1]_AT_[%2]_AS_[%3]");
  EXPECT_EQ(table.Text(184), "OK");
}

TEST(StringTable, MessageCountsFrom500AndLabelFrom100) {
  const StringTable& table = StringTableFor(Language::English);
  EXPECT_EQ(table.Message(0), "Making export ERD-file...");
  EXPECT_EQ(table.Message(12), "Please, enter business function name.");
  EXPECT_EQ(table.Message(149), "Deleted %1 control condition(s)");
  EXPECT_EQ(table.Label(0), "Activity Log for Rule%1");
  EXPECT_EQ(table.Label(84), "OK");
  EXPECT_EQ(table.Label(114), "From Business Function");
  for (int n = 0; n < 150; ++n) {
    EXPECT_EQ(&table.Message(n), &table.Text(n + 500));
  }
  for (int n = 0; n < 115; ++n) {
    EXPECT_EQ(&table.Label(n), &table.Text(n + 100));
  }
}

TEST(StringTable, EnglishTextsAreKeptToTheLetterTypingErrorsIncluded) {
  const StringTable& table = StringTableFor(Language::English);
  EXPECT_EQ(table.Text(569), "You try to delete a rule set which is reffered by some rule.");
  EXPECT_EQ(table.Text(573), "Fail to load %1.");
  EXPECT_EQ(table.Text(142), "I&/O");
  EXPECT_EQ(table.Text(164), "&Values (one per line; default first):");
  EXPECT_EQ(table.Text(563), "Do you wish to continue? If continue these triggers will be deleted.");
}

TEST(StringTable, MissingNumberOfMessageOrLabelIsNamedByItsResourceNumber) {
  const StringTable& table = StringTableFor(Language::English);
  const auto throwsNaming = [](const char* text) { return testing::ThrowsMessage<std::logic_error>(text); };
  EXPECT_THAT([&] { return table.Message(150); }, throwsNaming("The string table has no entry 650."));
  EXPECT_THAT([&] { return table.Message(-1); }, throwsNaming("The string table has no entry 499."));
  EXPECT_THAT([&] { return table.Label(115); }, throwsNaming("The string table has no entry 215."));
  EXPECT_THAT([&] { return table.Label(-1); }, throwsNaming("The string table has no entry 99."));
  EXPECT_THAT([&] { return table.Message(std::numeric_limits<int>::max()); },
              throwsNaming("The string table has no entry 2147484147."));
}

TEST(StringTable, TranslationsSpeakTheirLanguage) {
  EXPECT_EQ(StringTableFor(Language::Japanese).Text(156), "名前(&N):");
  EXPECT_EQ(StringTableFor(Language::Japanese).Text(535), "続行しますか?");
  EXPECT_EQ(StringTableFor(Language::Korean).Text(156), "이름(&N):");
  EXPECT_EQ(StringTableFor(Language::Korean).Text(535), "계속하시겠습니까?");
}

TEST(StringTable, OnlyTheTextsThatAreNoWordsStayUntranslated) {
  for (const Language language : {Language::Japanese, Language::Korean}) {
    std::vector<int> same;
    for (const int number : AllNumbers()) {
      if (StringTableFor(language).Text(number) == StringTableFor(Language::English).Text(number)) {
        same.push_back(number);
      }
    }
    EXPECT_EQ(same, (std::vector<int>{142, 184, 523}));
  }
}

TEST(StringTable, OneTablePerLanguageForTheWholeProgram) {
  EXPECT_EQ(&StringTableFor(Language::Korean), &StringTableFor(Language::Korean));
  EXPECT_NE(&StringTableFor(Language::Korean), &StringTableFor(Language::Japanese));
  EXPECT_FALSE(std::is_copy_constructible_v<StringTable>);
}

TEST(StringTable, UnknownLanguageIsADefect) {
  EXPECT_THAT([] { return StringTable(static_cast<Language>(1049)).Text(100); },
              testing::ThrowsMessage<std::logic_error>("There is no string table for language 1049."));
  EXPECT_THAT([] { return &StringTableFor(static_cast<Language>(1049)); },
              testing::ThrowsMessage<std::logic_error>("There is no string table for language 1049."));
}

TEST(StringTable, MessagesWithALineBreakAreFilledBySubst) {
  const StringTable& table = StringTableFor(Language::English);
  EXPECT_EQ(Subst(table.Text(544), {"\r\n"}),
            "You are about to populate business names of I/O data elements\r\nand Glossary business names.");
  EXPECT_EQ(Subst(table.Text(567), {"\r\n"}),
            "You try to delete a business function containing\r\nsome rule set triggered by this function only.");
  EXPECT_EQ(Subst(table.Text(633), {"\r\n"}),
            "There are values exceeding the admissible length.\r\nThey will be truncated and possible duplicate values "
            "will be ignored.");
}

TEST(StringTable, ActivityLogLabelIsFilledWithABlankAndTheName) {
  EXPECT_EQ(Subst(StringTableFor(Language::English).Label(0), {" Check limit"}), "Activity Log for Rule Check limit");
}

TEST(StringTables, CompletenessCheckSeesEachDefect) {
  const auto good = EnglishStringTable();
  std::vector<StringTableEntry> table(good.begin(), good.end());
  EXPECT_TRUE(IsComplete(table));
  table[3].text = "";
  EXPECT_FALSE(IsComplete(table));
  table[3] = table[4];
  EXPECT_FALSE(IsComplete(table));
  table.assign(good.begin(), good.end());
  std::swap(table[10], table[11]);
  EXPECT_FALSE(IsComplete(table));
  table.assign(good.begin(), good.end() - 1);
  EXPECT_FALSE(IsComplete(table));
}

}  // namespace
}  // namespace qmrules::shell
