#include "workbench/workspace/schemadocument.h"

#include <gtest/gtest.h>

namespace qmrules::workbench {
namespace {

TEST(SchemaDocument, TheAttributesOfARuleAreFoundByBothPaths) {
  const auto document = DefaultSchemaDocument();
  EXPECT_EQ(document.selectNodes("//entity[@name='RULE']/entityattrs").size(), 1U);
  EXPECT_EQ(document.selectNodes("//entities/entity[@name='RULE']/entityattrs").size(), 1U);
}

TEST(SchemaDocument, TheProductsNamesAreReservedAndTheSiteHasNone) {
  const auto document = DefaultSchemaDocument();
  EXPECT_TRUE(document.selectNodes("//entityattr[not(@system='true')]").empty());
  for (const char* name :
       {"ID",         "Name",      "RuleName", "SeqNo",     "SID",      "Description", "BusinessDescription",
        "AssignedTo", "Model",     "Program",  "FileName",  "FromRow",  "ToRow",       "SourceText",
        "Valid",      "Validated", "Created",  "CreatedBy", "Modified", "ModifiedBy"}) {
    EXPECT_EQ(document.selectNodes("//entityattr[@name='" + std::string(name) + "']").size(), 1U) << name;
  }
}

// A default would be put into each new rule, values would be enforced on every rule, a length would refuse long names.
TEST(SchemaDocument, TheProductsAttributesSetNoDefaultsValuesOrLengths) {
  const auto document = DefaultSchemaDocument();
  EXPECT_TRUE(document.selectNodes("//entityattr[@default or @length or *]").empty());
  EXPECT_TRUE(document.selectNodes("//entityattr[@type='CHAR']").empty());
}

}  // namespace
}  // namespace qmrules::workbench
