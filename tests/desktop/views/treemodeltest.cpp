#include "desktop/views/treemodel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTreeView>
#include <random>
#include <string>
#include <vector>

#include "desktop/views/qttext.h"
#include "desktop/views/viewtest.h"

namespace qmrules::desktop {
namespace {

using platform::widgets::TreeNode;
using platform::widgets::TreeRelation;
using platform::widgets::TreeView;

constexpr auto kStrict = QAbstractItemModelTester::FailureReportingMode::Fatal;

// All texts below the index, as Qt reads them: "a(b,c)".
std::string Read(const TreeModel& model, const QModelIndex& parent = {}) {
  std::string text;
  for (int row = 0; row < model.rowCount(parent); ++row) {
    const QModelIndex index = model.index(row, 0, parent);
    EXPECT_EQ(model.parent(index), parent);
    EXPECT_EQ(model.IndexOf(model.NodeAt(index)), index);
    if (row > 0) text += ',';
    text += FromQt(index.data().toString());
    if (model.hasChildren(index)) text += "(" + Read(model, index) + ")";
  }
  return text;
}

std::string Read(const TreeNode* first) {
  std::string text;
  for (const TreeNode* node = first; node != nullptr; node = node->NextSibling()) {
    if (node != first) text += ',';
    text += node->Text();
    if (node->FirstChild() != nullptr) text += "(" + Read(node->FirstChild()) + ")";
  }
  return text;
}

TEST(TreeModelTest, MirrorsTheNodesThatStandAlready) {
  TreeView tree("tvObjects");
  TreeNode* const pricing = tree.Add(Node("Pricing"));
  tree.Add(Node("Rates", true), pricing);
  tree.Add(Node("Claims"));
  TreeModel model(tree);
  const QAbstractItemModelTester tester(&model, kStrict);
  EXPECT_EQ(Read(model), "Pricing(Rates),Claims");
  const QModelIndex rates = model.index(0, 0, model.index(0, 0));
  EXPECT_EQ(rates.data(Qt::CheckStateRole).toInt(), Qt::Checked);
  EXPECT_EQ(model.index(1, 0).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
}

TEST(TreeModelTest, ASingleChangeIsHandedOnAsThatChangeAlone) {
  TreeView tree("tvObjects");
  TreeNode* const first = tree.Add(Node("first"));
  TreeNode* const last = tree.Add(Node("last"));
  TreeModel model(tree);
  const QAbstractItemModelTester tester(&model, kStrict);
  QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
  QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
  QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
  QSignalSpy reset(&model, &QAbstractItemModel::modelReset);

  tree.Add(Node("middle"), last, TreeRelation::tvwPrevious);
  ASSERT_EQ(inserted.size(), 1);
  EXPECT_EQ(inserted[0][1].toInt(), 1);
  last->SetText("end");
  ASSERT_EQ(changed.size(), 1);
  EXPECT_EQ(changed[0][0].toModelIndex().row(), 2);
  tree.Remove(*first);
  ASSERT_EQ(removed.size(), 1);
  EXPECT_EQ(removed[0][1].toInt(), 0);
  EXPECT_EQ(reset.size(), 0);
  EXPECT_EQ(Read(model), "middle,end");
}

TEST(TreeModelTest, ClearingTheTreeIsAReset) {
  TreeView tree("tvObjects");
  tree.Add(Node("below"), tree.Add(Node("above")));
  TreeModel model(tree);
  const QAbstractItemModelTester tester(&model, kStrict);
  QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
  tree.Clear();
  EXPECT_EQ(reset.size(), 1);
  EXPECT_EQ(model.rowCount(), 0);
  tree.Add(Node("anew"));
  EXPECT_EQ(Read(model), "anew");
}

TEST(TreeModelTest, ChildrenThatNobodyAskedForAreNotTold) {
  TreeView tree("tvObjects");
  TreeNode* const closed = tree.Add(Node("closed"));
  tree.Add(Node("one"), closed);
  TreeModel model(tree);
  ASSERT_EQ(model.rowCount(), 1);
  QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
  tree.Add(Node("two"), closed);
  EXPECT_EQ(inserted.size(), 0);
  EXPECT_EQ(Read(model), "closed(one,two)");
}

TEST(TreeModelTest, TheFirstChildGivesItsParentASignAndTheLastOneTakesIt) {
  TreeView tree("tvObjects");
  TreeNode* const parent = tree.Add(Node("parent"));
  TreeModel model(tree);
  const QModelIndex index = model.index(0, 0);
  EXPECT_FALSE(model.hasChildren(index));
  QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
  QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
  TreeNode* const child = tree.Add(Node("child"), parent);
  EXPECT_EQ(inserted.size(), 1);
  EXPECT_TRUE(model.hasChildren(index));
  tree.Remove(*child);
  EXPECT_EQ(removed.size(), 1);
  EXPECT_FALSE(model.hasChildren(index));
}

// One step of what may happen to a tree.
class RandomChanges {
 public:
  RandomChanges(TreeView& tree, unsigned seed) : tree_(tree), random_(seed) {}

  void Step() {
    const auto choice = random_() % 10;
    if (nodes_.empty() || choice < 5) {
      Add();
    } else if (choice < 8) {
      Remove(*Any());
    } else {
      Any()->SetText("n" + std::to_string(++count_));
    }
  }

 private:
  TreeNode* Any() { return nodes_[random_() % nodes_.size()]; }

  void Add() {
    constexpr TreeRelation kRelations[] = {TreeRelation::tvwChild, TreeRelation::tvwPrevious, TreeRelation::tvwNext};
    TreeNode* const beside = nodes_.empty() || random_() % 8 == 0 ? nullptr : Any();
    nodes_.push_back(tree_.Add(Node("n" + std::to_string(++count_)), beside, kRelations[random_() % 3]));
  }

  void Remove(TreeNode& node) {
    std::erase_if(nodes_, [&](const TreeNode* other) { return other->IsWithin(node); });
    tree_.Remove(node);
  }

  TreeView& tree_;
  std::mt19937 random_;
  std::vector<TreeNode*> nodes_;
  int count_ = 0;
};

TEST(TreeModelTest, EveryMixOfChangesIsMirrored) {
  for (unsigned seed = 1; seed <= 4; ++seed) {
    TreeView tree("tvObjects");
    TreeModel model(tree);
    const QAbstractItemModelTester tester(&model, kStrict);
    RandomChanges changes(tree, seed);
    for (int step = 0; step < 150; ++step) changes.Step();
    EXPECT_EQ(Read(model), Read(tree.First())) << "seed " << seed;
  }
}

// Without a tester, which would ask for everything, the model knows only a part of the tree.
TEST(TreeModelTest, EveryMixOfChangesIsMirroredToAViewThatSeesAPart) {
  for (unsigned seed = 1; seed <= 4; ++seed) {
    TreeView tree("tvObjects");
    TreeModel model(tree);
    QTreeView view;
    view.setModel(&model);
    RandomChanges changes(tree, seed);
    for (int step = 0; step < 400; ++step) {
      changes.Step();
      if (step % 40 == 0 && model.rowCount() > 0) view.expand(model.index(step % model.rowCount(), 0));
    }
    EXPECT_EQ(Read(model), Read(tree.First())) << "seed " << seed;
  }
}

}  // namespace
}  // namespace qmrules::desktop
