#pragma once

#include <string>
#include <vector>

#include "platform/schema.h"
#include "workbench/repository/storedvalue.h"

namespace qmrules::workbench::repository {

// SQL text with the values of its parameters, in the order of their "?".
struct SqlPiece {
  std::string text;
  std::vector<StoredValue> parameters;
};

enum class TestOperator { Equal, Less, Greater, Like, In };

// A test of one attribute, with its value in text form.
struct AttributeTest {
  TestOperator op = TestOperator::Equal;
  std::string value;
  std::vector<std::string> items;  // of In
  bool isNegated = false;
};

// The column that is tested.
struct TestedColumn {
  std::string expression;
  platform::AttrType type = platform::AttrType::Char;
  bool isNullable = true;
};

// The test as an SQL condition. Its logic is two-valued, so that a test and its negation are complements: an unset
// value counts as the empty text, which stands before every other value. The negation is worked into the condition,
// since NOT around a comparison with an unset value would be neither true nor false.
//
// "=" heeds case, "<" and ">" compare numbers as numbers and texts by their characters, "like" ignores case. Throws
// platform::Error with the reason alone for a value that the column's type cannot be compared with.
SqlPiece CompileTest(const TestedColumn& column, const AttributeTest& test);

// A list of integers, or of texts, as the one value that `IN (SELECT value FROM json_each(?))` takes.
std::string JsonList(const std::vector<std::int64_t>& numbers);
std::string JsonList(const std::vector<std::string>& texts);

}  // namespace qmrules::workbench::repository
