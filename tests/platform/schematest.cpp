#include "platform/schema.h"

#include <gtest/gtest.h>

namespace qmrules::platform {
namespace {

TEST(AttrTypeName, EachTypeHasItsName) {
  EXPECT_EQ(AttrTypeName(AttrType::LongText), "LONGTEXT");
  EXPECT_EQ(AttrTypeName(AttrType::Boolean), "BOOLEAN");
  EXPECT_EQ(AttrTypeName(AttrType::Integer), "INTEGER");
  EXPECT_EQ(AttrTypeName(AttrType::Char), "CHAR");
  EXPECT_EQ(AttrTypeName(AttrType::Timestamp), "TIMESTAMP");
}

}  // namespace
}  // namespace qmrules::platform
