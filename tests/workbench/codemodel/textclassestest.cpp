#include "workbench/codemodel/textclasses.h"

#include <gtest/gtest.h>

#include <vector>

namespace qmrules::workbench::codemodel {
namespace {

std::vector<ClassedRun> RowOf(const ClassedText& text, std::uint32_t row) {
  const auto runs = text.Row(row);
  return {runs.begin(), runs.end()};
}

TEST(ClassedText, GivesTheRunsOfARow) {
  const ClassedRun first{1, 6, TextClass::Margin};
  const ClassedRun second{8, 4, TextClass::Verb};
  const ClassedRun last{12, 3, TextClass::Number};
  ClassedText text;
  text.Add(2, first);
  text.Add(2, second);
  text.Add(5, last);
  EXPECT_EQ(RowOf(text, 2), (std::vector{first, second}));
  EXPECT_EQ(RowOf(text, 5), (std::vector{last}));
  for (const std::uint32_t row : {0U, 1U, 3U, 4U, 6U}) EXPECT_TRUE(RowOf(text, row).empty()) << row;
}

}  // namespace
}  // namespace qmrules::workbench::codemodel
