// Random paths over random small catalogues, held against a plain evaluation, object by object.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <set>

#include "platform/objectkey.h"
#include "support/teststore.h"
#include "workbench/repository/fetchrows.h"

namespace qmrules::test {
namespace {

using platform::MakeKey;
using platform::Value;

struct ReferenceRelation {
  std::string from, directed, to, inverse;
};
const std::vector<ReferenceRelation> kRelations = {{"BUSINESSFUNC", "Triggers", "RULESETCALL", "IsTriggeredBy"},
                                                   {"RULESETCALL", "Refers", "RULESET", "IsRefferedBy"},
                                                   {"RULESET", "Has", "RULE", "BelongsToRuleSet"},
                                                   {"RULE", "Has", "RULEIO", "BelongsToRule"},
                                                   {"RULE", "IsControlledBy", "RULECOND", "Controls"},
                                                   {"RULE", "Triggers", "RULESET", "IsTriggeredBy"}};
// The attributes that are looked at: a text, and for some a number.
const std::map<std::string, std::pair<std::string, std::string>> kAttributes = {
    {"BUSINESSFUNC", {"Description", ""}}, {"RULESETCALL", {"SID", "SeqNo"}}, {"RULESET", {"Description", ""}},
    {"RULE", {"RuleName", "SeqNo"}},       {"RULEIO", {"IOName", ""}},        {"RULECOND", {"CondName", ""}}};

struct ReferenceObject {
  std::string text;                    // "" also stands for unset
  std::optional<std::int64_t> number;  // of an entity that has one
};

class Dice {
 public:
  explicit Dice(unsigned seed) : random_(seed) {}
  int Roll(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
  bool Once(int in) { return Roll(in) == 0; }
  template <class Container>
  const auto& Pick(const Container& items) {
    return items[static_cast<std::size_t>(Roll(static_cast<int>(items.size())))];
  }

 private:
  std::mt19937 random_;
};

const std::vector<std::string> kTexts = {"", "a", "A", "b", "B c", "10", "9"};

// A catalogue in the store and, beside it, in plain containers.
struct RandomCatalogue {
  explicit RandomCatalogue(Dice& dice) {
    const auto transaction = store.Repository().BeginTransaction();
    for (const auto& [entity, attributes] : kAttributes) {
      const int count = 2 + dice.Roll(6);
      for (int i = 0; i < count; ++i) AddObject(dice, entity, attributes.first, attributes.second);
    }
    for (std::size_t relation = 0; relation < kRelations.size(); ++relation) AddLinks(dice, relation);
    for (const auto* entity : {"BUSINESSFUNC", "RULESET"}) {
      for (const auto& [id, object] : objects[entity]) {
        if (dice.Once(3)) continue;
        store.Repository().object(MakeKey(entity, id))->Link("BelongsTo", store.ProjectKey());
        inProject.insert(MakeKey(entity, id));
      }
    }
    transaction->Commit();
  }

  void AddObject(Dice& dice, const std::string& entity, const std::string& text, const std::string& number) {
    ReferenceObject object;
    std::map<std::string, Value> values;
    if (!dice.Once(4)) values[text] = object.text = dice.Pick(kTexts);
    if (!number.empty() && !dice.Once(4)) values[number] = *(object.number = dice.Roll(4) * 5 - 5);
    objects[entity][store.Add(entity, entity + std::to_string(++names), values)] = object;
  }

  void AddLinks(Dice& dice, std::size_t relation) {
    for (const auto& [from, a] : objects[kRelations[relation].from]) {
      for (const auto& [to, b] : objects[kRelations[relation].to]) {
        if (!dice.Once(3)) continue;
        store.Repository()
            .object(MakeKey(kRelations[relation].from, from))
            ->Link(kRelations[relation].directed, MakeKey(kRelations[relation].to, to));
        links.insert({relation, from, to});
      }
    }
  }

  // The objects that the relation leads to from this one.
  std::vector<std::int32_t> Linked(std::size_t relation, bool forward, std::int32_t id) const {
    std::vector<std::int32_t> found;
    for (const auto& [name, from, to] : links) {
      if (name == relation && (forward ? from : to) == id) found.push_back(forward ? to : from);
    }
    return found;
  }

  // A rule is in the project when one of its rule sets is, a call when one of its functions is.
  bool IsInProject(const std::string& entity, std::int32_t id) const {
    if (entity == "BUSINESSFUNC" || entity == "RULESET") return inProject.contains(MakeKey(entity, id));
    const std::map<std::string, std::size_t> holders = {
        {"RULESETCALL", 0}, {"RULE", 2}, {"RULEIO", 3}, {"RULECOND", 4}};
    const auto relation = holders.at(entity);
    const auto linked = Linked(relation, false, id);
    return std::any_of(linked.begin(), linked.end(),
                       [&](auto holder) { return IsInProject(kRelations[relation].from, holder); });
  }

  TestStore store;
  int names = 0;
  std::map<std::string, std::map<std::int32_t, ReferenceObject>> objects;
  std::set<std::tuple<std::size_t, std::int32_t, std::int32_t>> links;
  std::set<std::string> inProject;
};

struct ReferenceFilter {
  std::string text;
  std::function<bool(std::int32_t, const ReferenceObject&)> passes;
};

template <class T>
bool Compare(const std::string& op, const T& a, const T& b) {
  if (op == "=") return a == b;
  if (op == "<>") return a != b;
  if (op == "<") return a < b;
  if (op == "<=") return a <= b;
  return op == ">" ? a > b : a >= b;
}

ReferenceFilter MakeTest(Dice& dice, const std::string& entity) {
  static const std::vector<std::string> operators = {"=", "<>", "<", "<=", ">", ">="};
  const auto& [text, number] = kAttributes.at(entity);
  const auto op = dice.Pick(operators);
  if (!number.empty() && dice.Once(2)) {
    std::optional<std::int64_t> bound;
    if (!dice.Once(4)) bound = dice.Roll(4) * 5 - 5;
    return {number + op + (bound ? std::to_string(*bound) : ""),
            [op, bound](auto, const auto& object) { return Compare(op, object.number, bound); }};
  }
  if (dice.Once(5)) {
    const auto id = dice.Roll(7);
    return {"ID" + op + std::to_string(id), [op, id](auto own, const auto&) { return Compare(op, own, id); }};
  }
  const auto bound = dice.Pick(kTexts);
  return {text + op + bound, [op, bound](auto, const auto& object) { return Compare(op, object.text, bound); }};
}

ReferenceFilter MakeFilter(Dice& dice, const std::string& entity, int depth) {
  if (depth == 0 || dice.Once(3)) return MakeTest(dice, entity);
  const auto a = MakeFilter(dice, entity, depth - 1);
  if (dice.Once(3)) return {"~(" + a.text + ")", [a](auto id, const auto& object) { return !a.passes(id, object); }};
  const auto b = MakeFilter(dice, entity, depth - 1);
  if (dice.Once(2)) {
    return {"(" + a.text + "&" + b.text + ")",
            [a, b](auto id, const auto& object) { return a.passes(id, object) && b.passes(id, object); }};
  }
  return {"(" + a.text + "|" + b.text + ")",
          [a, b](auto id, const auto& object) { return a.passes(id, object) || b.passes(id, object); }};
}

enum class SortBy { Nothing, Text, Number, ID };

// One node of a random path, from the root outward, with the relation that leads to it from the node before.
struct ReferenceNode {
  std::string entity;
  std::size_t relation = 0;
  bool forward = true;
  bool negated = false;  // the link to this node must not exist
  bool behindNegated = false;
  bool inProject = false;
  ReferenceFilter filter = {};
  std::vector<std::int32_t> list = {};  // "ID in"; empty for none
  SortBy sort = SortBy::Nothing;
  bool descending = false;
};

std::vector<ReferenceNode> MakePath(Dice& dice) {
  std::vector<ReferenceNode> path(1);
  std::vector<std::string> entities;
  for (const auto& [entity, attributes] : kAttributes) entities.push_back(entity);
  path.front().entity = dice.Pick(entities);
  const int steps = dice.Roll(5);
  for (int step = 0; step < steps; ++step) {
    std::vector<ReferenceNode> next;
    for (std::size_t relation = 0; relation < kRelations.size(); ++relation) {
      if (kRelations[relation].from == path.back().entity) next.push_back({kRelations[relation].to, relation, true});
      if (kRelations[relation].to == path.back().entity) next.push_back({kRelations[relation].from, relation, false});
    }
    path.push_back(dice.Pick(next));
  }
  bool behindNegated = false;
  for (std::size_t i = 0; i < path.size(); ++i) {
    auto& node = path[i];
    node.negated = i > 0 && dice.Once(8);
    node.behindNegated = behindNegated = behindNegated || node.negated;
    node.inProject = dice.Once(4);
    if (dice.Once(2)) node.filter = MakeFilter(dice, node.entity, 3);
    if (dice.Once(5)) {
      for (int count = 1 + dice.Roll(5); count > 0; --count) node.list.push_back(dice.Roll(8));
    }
    if (behindNegated || dice.Once(2)) continue;
    node.sort = dice.Pick(std::vector{SortBy::Text, SortBy::ID, SortBy::Number});
    if (node.sort == SortBy::Number && kAttributes.at(node.entity).second.empty()) node.sort = SortBy::Text;
    node.descending = dice.Once(2);
  }
  return path;
}

std::string FilterText(const ReferenceNode& node) {
  std::string text;
  for (const auto id : node.list) text += (text.empty() ? "ID in " : ",") + std::to_string(id);
  if (!node.filter.passes) return text;
  return text.empty() ? node.filter.text : text + "&" + node.filter.text;
}

std::string FetchList(const ReferenceNode& node, std::size_t place) {
  if (node.behindNegated) return "";
  const std::string mark = node.descending ? "<" : ">";
  std::string list = (node.sort == SortBy::ID ? mark : "") + "ID:ID" + std::to_string(place);
  if (node.sort == SortBy::Text) list += "," + mark + kAttributes.at(node.entity).first;
  if (node.sort == SortBy::Number) list += "," + mark + kAttributes.at(node.entity).second;
  return list;
}

std::string FetchRows(RandomCatalogue& catalogue, Dice& dice, const std::vector<ReferenceNode>& path) {
  const auto fetch = catalogue.store.Repository().NewFetch();
  std::optional<platform::RelationNode> related;
  platform::ObjectNode node;
  for (std::size_t i = path.size(); i-- > 0;) {
    node = fetch->AddObject(path[i].inProject, path[i].entity, FetchList(path[i], i), FilterText(path[i]), related);
    const auto& relation = kRelations[path[i].relation];
    const std::string name = dice.Once(2) ? relation.directed : relation.inverse;
    if (i > 0) related = fetch->AddRelation((path[i].negated ? "~" : "") + name, false, "", node);
  }
  fetch->SetRoot(node);
  std::string rows;
  for (fetch->Execute(catalogue.store.ProjectKey()); !fetch->Eof(); fetch->MoveNext()) {
    for (std::size_t i = 0; i < path.size() && !path[i].behindNegated; ++i) {
      rows += fetch->Row().Item("ID" + std::to_string(i)).Text() + ",";
    }
    rows += ";";
  }
  return rows;
}

class PlainEvaluation {
 public:
  PlainEvaluation(const RandomCatalogue& catalogue, const std::vector<ReferenceNode>& path)
      : catalogue_(catalogue), path_(path) {}

  std::string Rows() {
    for (const auto& [id, object] : catalogue_.objects.at(path_.front().entity)) {
      std::vector<std::int32_t> row;
      Extend(row, 0, id);
    }
    std::sort(rows_.begin(), rows_.end(), [&](const auto& a, const auto& b) { return Precedes(a, b); });
    std::string text;
    for (const auto& row : rows_) {
      for (const auto id : row) text += std::to_string(id) + ",";
      text += ";";
    }
    return text;
  }

 private:
  bool Passes(std::size_t place, std::int32_t id) const {
    const auto& node = path_[place];
    if (node.inProject && !catalogue_.IsInProject(node.entity, id)) return false;
    if (!node.list.empty() && std::find(node.list.begin(), node.list.end(), id) == node.list.end()) return false;
    return !node.filter.passes || node.filter.passes(id, Object(place, id));
  }

  const ReferenceObject& Object(std::size_t place, std::int32_t id) const {
    return catalogue_.objects.at(path_[place].entity).at(id);
  }

  // True when the path from this object at this place on can be walked.
  bool CanWalk(std::size_t place, std::int32_t id) const {
    if (!Passes(place, id)) return false;
    if (place + 1 == path_.size()) return true;
    const auto& next = path_[place + 1];
    const auto linked = catalogue_.Linked(next.relation, next.forward, id);
    return std::any_of(linked.begin(), linked.end(), [&](auto far) { return CanWalk(place + 1, far); }) != next.negated;
  }

  void Extend(std::vector<std::int32_t>& row, std::size_t place, std::int32_t id) {
    if (!Passes(place, id)) return;
    row.push_back(id);
    if (place + 1 == path_.size()) {
      rows_.push_back(row);
    } else if (path_[place + 1].negated) {
      if (CanWalk(place, id)) rows_.push_back(row);
    } else {
      const auto& next = path_[place + 1];
      for (const auto far : catalogue_.Linked(next.relation, next.forward, id)) Extend(row, place + 1, far);
    }
    row.pop_back();
  }

  int Order(std::size_t place, std::int32_t a, std::int32_t b) const {
    const auto order = [](const auto& x, const auto& y) { return x < y ? -1 : y < x ? 1 : 0; };
    const auto& node = path_[place];
    if (node.sort == SortBy::ID) return order(a, b);
    if (node.sort == SortBy::Number) return order(Object(place, a).number, Object(place, b).number);
    const auto lower = [](std::string text) {
      std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
      return text;
    };
    return order(lower(Object(place, a).text), lower(Object(place, b).text));
  }

  bool Precedes(const std::vector<std::int32_t>& a, const std::vector<std::int32_t>& b) const {
    bool isSorted = false;
    bool isDescending = false;
    for (std::size_t place = 0; place < a.size(); ++place) {
      if (path_[place].sort == SortBy::Nothing) continue;
      isSorted = true;
      isDescending = path_[place].descending;
      if (const int order = Order(place, a[place], b[place]); order != 0) return (order < 0) != isDescending;
    }
    for (std::size_t place = 0; place < a.size() && !isSorted; ++place) {
      const auto& list = path_[place].list;
      const auto at = [&](auto id) { return std::find(list.begin(), list.end(), id) - list.begin(); };
      if (!list.empty() && at(a[place]) != at(b[place])) return at(a[place]) < at(b[place]);
    }
    return isDescending ? b < a : a < b;
  }

  const RandomCatalogue& catalogue_;
  const std::vector<ReferenceNode>& path_;
  std::vector<std::vector<std::int32_t>> rows_;
};

std::string Describe(const std::vector<ReferenceNode>& path) {
  std::string text;
  for (std::size_t i = 0; i < path.size(); ++i) {
    text += "\n  " + std::string(path[i].negated ? "~ " : "") + path[i].entity + " [" + FetchList(path[i], i) + "] {" +
            FilterText(path[i]) + "}" + (path[i].inProject ? " in project" : "");
  }
  return text;
}

TEST(FetchAgainstPlainEvaluation, RandomPathsGiveTheSameRowsInTheSameOrder) {
  Dice dice(1405);
  std::size_t rowsInAll = 0;
  for (int round = 0; round < 12; ++round) {
    RandomCatalogue catalogue(dice);
    for (int query = 0; query < 150; ++query) {
      const auto path = MakePath(dice);
      const auto expected = PlainEvaluation(catalogue, path).Rows();
      ASSERT_EQ(FetchRows(catalogue, dice, path), expected) << Describe(path);
      rowsInAll += static_cast<std::size_t>(std::count(expected.begin(), expected.end(), ';'));
    }
  }
  EXPECT_GT(rowsInAll, 3000u);  // the queries are not mostly empty
}

}  // namespace
}  // namespace qmrules::test
