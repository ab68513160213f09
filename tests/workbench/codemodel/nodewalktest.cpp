#include "workbench/codemodel/nodewalk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

#include "workbench/codemodel/handmadetext.h"
#include "workbench/codemodel/modelbuilder.h"

namespace qmrules::workbench::codemodel {
namespace {

// A tree of pointers, to hold the numbered one against.
struct PlainNode {
  Entity entity = Entity::Stat;
  NodeId number = 0;
  NodeId declaration = 0;
  PlainNode* parent = nullptr;
  std::vector<std::unique_ptr<PlainNode>> children;
};

// Grows both trees at the same time.
class Grower {
 public:
  Grower(unsigned seed, int nodes) : random_(seed), left_(nodes) {
    text_.AddFile("a.cbl", "A");
    text_.Add(0, "A");
    ModelBuilder builder(text_.End(), diagnostics_);
    while (left_ > 0) Grow(builder, root_, 0);
    data_ = builder.Take("COBOL");
  }
  const PlainNode& Root() const { return root_; }
  const std::vector<const PlainNode*>& All() const { return all_; }
  std::shared_ptr<const ModelImage> Image() const { return ModelImage::FromBytes(SerializeModel(data_), "random"); }

 private:
  void Grow(ModelBuilder& builder, PlainNode& parent, int depth) {
    // Without those that need a record of their own.
    static constexpr Entity kinds[] = {Entity::Stat, Entity::If,    Entity::Goto,    Entity::Block,
                                       Entity::Port, Entity::Cond,  Entity::Var,     Entity::Par,
                                       Entity::Ref,  Entity::Const, Entity::Division};
    --left_;
    PlainNode& node = *parent.children.emplace_back(std::make_unique<PlainNode>());
    node.entity = kinds[random_() % std::size(kinds)];
    node.parent = &parent;
    node.number = builder.Open(node.entity, 0);
    node.declaration = random_() % 2 == 0 ? 0 : static_cast<NodeId>(1 + random_() % node.number);
    builder.Node(node.number).declaration = node.declaration;
    all_.push_back(&node);
    for (auto children = random_() % 4; children > 0 && left_ > 0 && depth < 30; --children) {
      Grow(builder, node, depth + 1);
    }
    builder.Close(node.number, 0);
  }

  std::mt19937 random_;
  int left_;
  test::HandMadeText text_;
  Diagnostics diagnostics_;
  PlainNode root_;
  std::vector<const PlainNode*> all_;
  ModelData data_;
};

void Gather(const PlainNode& node, Entity kind, std::vector<NodeId>& found) {
  for (const auto& child : node.children) {
    if (IsKindOf(child->entity, kind)) found.push_back(child->number);
    Gather(*child, kind, found);
  }
}

std::vector<NodeId> Walk(KindWalk walk) {
  std::vector<NodeId> nodes;
  for (; walk.Current() != 0; walk.MoveNext()) nodes.push_back(walk.Current());
  return nodes;
}

TEST(NodeWalk, OnlyTheLastConditionOfAnEvaluateHasTheBlockOfOtherForItsElse) {
  test::HandMadeText text;
  text.AddFile("a.cbl", "A");
  text.Add(0, "A");
  Diagnostics diagnostics;
  ModelBuilder builder(text.End(), diagnostics);
  const auto block = [&builder](Role role) {
    const NodeId node = builder.Leaf(Entity::Block, 0, 0);
    builder.Node(node).role = role;
    return node;
  };
  const NodeId evaluate = builder.Open(Entity::If, 0);
  const NodeId first = builder.Leaf(Entity::Cond, 0, 0);
  const NodeId firstBlock = block(Role::Then);
  const NodeId second = builder.Leaf(Entity::Cond, 0, 0);
  const NodeId secondBlock = block(Role::Then);
  const NodeId other = block(Role::Else);
  builder.Close(evaluate, 0);
  const NodeId loop = builder.Open(Entity::Block, 0);
  const NodeId until = builder.Leaf(Entity::Cond, 0, 0);
  block(Role::Then);
  builder.Close(loop, 0);
  const auto image = ModelImage::FromBytes(SerializeModel(builder.Take("COBOL")), "a.qmm");
  EXPECT_EQ(ThenBranch(*image, first), firstBlock);
  EXPECT_EQ(ElseBranch(*image, first), 0U);
  EXPECT_EQ(ThenBranch(*image, second), secondBlock);
  EXPECT_EQ(ElseBranch(*image, second), other);
  // What is no IF has no branches.
  EXPECT_EQ(ThenBranch(*image, until), 0U);
}

class RandomTree : public ::testing::TestWithParam<unsigned> {};

TEST_P(RandomTree, SiblingsAndChildrenAreThoseOfAPlainTree) {
  const Grower grower(GetParam(), 300);
  const auto image = grower.Image();
  ASSERT_EQ(image->Nodes().size(), 301U);
  for (const PlainNode* node : grower.All()) {
    EXPECT_EQ(image->Nodes()[node->number].parent, node->parent->number);
    EXPECT_EQ(FirstChild(*image, node->number), node->children.empty() ? 0 : node->children.front()->number);
    const auto& siblings = node->parent->children;
    NodeId next = 0;
    for (std::size_t index = 0; index + 1 < siblings.size(); ++index) {
      if (siblings[index].get() == node) next = siblings[index + 1]->number;
    }
    EXPECT_EQ(NextSibling(*image, node->number), next);
    std::vector<NodeId> variables;
    for (const auto& child : node->children) {
      if (IsKindOf(child->entity, Entity::Stat)) variables.push_back(child->number);
    }
    EXPECT_EQ(ChildrenOf(*image, node->number, Entity::Stat), variables);
  }
}

TEST_P(RandomTree, ObjectsOfAKindAreThoseOfAPlainTree) {
  const Grower grower(GetParam(), 300);
  const auto image = grower.Image();
  for (const Entity kind : {Entity::Stat, Entity::If, Entity::Var, Entity::Label, Entity::Cond, Entity::Decl}) {
    std::vector<NodeId> expected;
    Gather(grower.Root(), kind, expected);
    EXPECT_EQ(Walk(KindWalk(*image, kind, 1, 300)), expected);
    for (const PlainNode* node : grower.All()) {
      expected.clear();
      Gather(*node, kind, expected);
      EXPECT_EQ(Walk(KindWalk(*image, kind, node->number + 1, image->Nodes()[node->number].last)), expected);
    }
  }
}

TEST_P(RandomTree, OccurrencesAreTheInverseOfDeclarations) {
  const Grower grower(GetParam(), 300);
  const auto image = grower.Image();
  const OccurrenceIndex index(*image);
  for (const PlainNode* declaration : grower.All()) {
    std::vector<NodeId> expected;
    for (const PlainNode* node : grower.All()) {
      if (node->declaration == declaration->number) expected.push_back(node->number);
    }
    EXPECT_THAT(index.Of(declaration->number), ::testing::ElementsAreArray(expected));
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomTree, ::testing::Range(1U, 21U));

}  // namespace
}  // namespace qmrules::workbench::codemodel
