#include "workbench/codemodel/vocabulary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

namespace qmrules::workbench::codemodel {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

TEST(Vocabulary, StatementsFallIntoStatWithTheirSpecialKinds) {
  EXPECT_THAT(KindsOf(Entity::Stat), ElementsAre(Entity::Stat, Entity::If, Entity::Goto, Entity::Perform, Entity::Block,
                                                 Entity::Port, Entity::IoStat));
  EXPECT_THAT(KindsOf(Entity::Decl), ElementsAre(Entity::Decl, Entity::File));
  EXPECT_THAT(KindsOf(Entity::Label), ElementsAre(Entity::Label, Entity::Section, Entity::Par));
  EXPECT_THAT(KindsOf(Entity::Port), ElementsAre(Entity::Port));
}

TEST(Vocabulary, OperandsConditionsAndPlacesLieBelowNeitherStatementNorDeclaration) {
  for (const Entity entity : {Entity::Var, Entity::Cond, Entity::Const, Entity::Func, Entity::Ref, Entity::Par,
                              Entity::Section, Entity::Division, Entity::Identification, Entity::Program}) {
    EXPECT_FALSE(IsKindOf(entity, Entity::Stat)) << NameOf(entity);
    EXPECT_FALSE(IsKindOf(entity, Entity::Decl)) << NameOf(entity);
  }
  EXPECT_TRUE(IsKindOf(Entity::IoStat, Entity::Stat));
  EXPECT_FALSE(IsKindOf(Entity::Stat, Entity::IoStat));
}

TEST(Vocabulary, EntitiesAreFoundByNameInAnyCase) {
  std::set<std::string_view> names;
  for (std::size_t number = 0; number < kEntities; ++number) {
    const auto entity = static_cast<Entity>(number);
    EXPECT_EQ(EntityNamed(NameOf(entity)), entity);
    names.insert(NameOf(entity));
  }
  EXPECT_EQ(names.size(), kEntities);
  EXPECT_EQ(EntityNamed("IoStat"), Entity::IoStat);
  EXPECT_EQ(EntityNamed("STATEMENT"), std::nullopt);
  EXPECT_EQ(EntityNamed(""), std::nullopt);
}

TEST(Vocabulary, RelationsOfKindOneAreNamedForTheirTargets) {
  for (std::size_t number = 0; number < kEntities; ++number) {
    for (const RelationSpec& relation : RelationsOf(static_cast<Entity>(number))) {
      EXPECT_EQ(relation.kind == kSpecialisation, relation.name == NameOf(relation.target)) << relation.name;
    }
  }
}

TEST(Vocabulary, EveryEntityHasANameATextAndAUsage) {
  for (std::size_t number = 0; number < kEntities; ++number) {
    const auto attributes = AttributesOf(static_cast<Entity>(number));
    ASSERT_GE(attributes.size(), 3U);
    EXPECT_EQ(attributes[0], "Name");
    EXPECT_EQ(attributes[1], "Text");
    EXPECT_EQ(attributes[2], "VarUsage");
    EXPECT_EQ(std::set<std::string_view>(attributes.begin(), attributes.end()).size(), attributes.size());
  }
  EXPECT_THAT(AttributesOf(Entity::If), Contains("Kind"));
  EXPECT_THAT(AttributesOf(Entity::Port), Contains("PORTTYPE"));
  EXPECT_THAT(AttributesOf(Entity::File), Contains("Organization"));
}

TEST(Vocabulary, UsagesAndRolesHaveNames) {
  EXPECT_EQ(NameOf(VarUsage::None), "");
  EXPECT_EQ(NameOf(VarUsage::In), "IN");
  EXPECT_EQ(NameOf(VarUsage::Out), "OUT");
  EXPECT_EQ(NameOf(VarUsage::InOut), "INOUT");
  EXPECT_EQ(NameOf(Role::None), "");
  EXPECT_EQ(NameOf(Role::Source), "Source");
  EXPECT_EQ(NameOf(Role::Subject), "Subject");
  EXPECT_EQ(NameOf(Role::Thru), "Thru");
  EXPECT_EQ(NameOf(Role::Other), "Other");
}

}  // namespace
}  // namespace qmrules::workbench::codemodel
