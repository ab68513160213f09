#include "workbench/codemodel/symboltable.h"

#include <gtest/gtest.h>

#include <string>

namespace qmrules::workbench::codemodel {
namespace {

TEST(SymbolTable, TheFirstWordsHaveFixedNumbers) {
  SymbolTable symbols({"MOVE", "TO"});
  EXPECT_EQ(symbols.Count(), 2U);
  EXPECT_EQ(symbols.Intern("MOVE"), 0U);
  EXPECT_EQ(symbols.Intern("TO"), 1U);
  EXPECT_EQ(symbols.Intern("A"), 2U);
  EXPECT_EQ(symbols.Count(), 3U);
}

TEST(SymbolTable, WordsOfAnyCaseAreOne) {
  SymbolTable symbols({});
  const std::uint32_t number = symbols.Intern("Ws-Policy-Number");
  EXPECT_EQ(symbols.Intern("WS-POLICY-NUMBER"), number);
  EXPECT_EQ(symbols.Intern("ws-policy-number"), number);
  EXPECT_EQ(symbols.Text(number), "WS-POLICY-NUMBER");
}

TEST(SymbolTable, CaseIsThatOfTheLettersAToZ) {
  SymbolTable symbols({});
  EXPECT_NE(symbols.Intern("\u00e9"), symbols.Intern("\u00c9"));
  // Pairs that differ in the bit that parts capitals from small letters.
  EXPECT_NE(symbols.Intern("A@"), symbols.Intern("A`"));
  EXPECT_NE(symbols.Intern("A_"), symbols.Intern("A\x7f"));
  EXPECT_NE(symbols.Intern("0"), symbols.Intern("\x10"));
}

TEST(SymbolTable, AWordThatWasNeverMetIsNotFound) {
  SymbolTable symbols({"MOVE"});
  EXPECT_EQ(symbols.Find("move"), 0U);
  EXPECT_EQ(symbols.Find("MOV"), SymbolTable::kNone);
  EXPECT_EQ(symbols.Find(""), SymbolTable::kNone);
  EXPECT_EQ(symbols.Count(), 1U);
}

TEST(SymbolTable, WordsDifferByAnyLetterAndByLength) {
  SymbolTable symbols({});
  const std::string word = "WS-CUSTOMER-NAME-LINE";
  const std::uint32_t number = symbols.Intern(word);
  for (std::size_t at = 0; at < word.size(); ++at) {
    std::string other = word;
    other[at] = '9';
    EXPECT_NE(symbols.Intern(other), number) << other;
    EXPECT_NE(symbols.Intern(word.substr(0, at)), number) << at;
  }
  EXPECT_EQ(symbols.Intern(word), number);
}

TEST(SymbolTable, NumbersAndTextsStayAsTheTableGrows) {
  SymbolTable symbols({"MOVE"});
  const std::string_view first = symbols.Text(0);
  for (int count = 0; count < 20'000; ++count) {
    ASSERT_EQ(symbols.Intern("NAME-" + std::to_string(count)), static_cast<std::uint32_t>(count) + 1);
  }
  for (int count = 0; count < 20'000; ++count) {
    const auto number = static_cast<std::uint32_t>(count) + 1;
    ASSERT_EQ(symbols.Find("name-" + std::to_string(count)), number);
    ASSERT_EQ(symbols.Text(number), "NAME-" + std::to_string(count));
  }
  EXPECT_EQ(symbols.Text(0).data(), first.data());
}

}  // namespace
}  // namespace qmrules::workbench::codemodel
