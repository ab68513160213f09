#include "workbench/repository/condition.h"

#include <algorithm>
#include <array>
#include <utility>

#include <fmt/format.h>

#include "platform/error.h"
#include "shell/text.h"
#include "workbench/repository/querysyntax.h"

namespace qmrules::workbench::repository {

namespace {

using platform::XmlElement;

// An element and the way to it. The links stand on the stack of the calls that lead here.
class Place {
 public:
  explicit Place(const XmlElement& root) : element_(root) {}
  Place(const XmlElement& element, const Place& parent) : element_(element), parent_(&parent) {}

  const XmlElement& Element() const { return element_; }

  std::string Path() const {
    return parent_ == nullptr ? element_.nodeName() : parent_->Path() + "/" + element_.nodeName();
  }

  platform::Error Mistake(std::string_view what) const {
    return platform::Error(
        fmt::format("search condition {}: {}", shell::CutWithEllipsis(Path(), kShownCharacters), what));
  }

  // An attribute that may be empty.
  std::string Attribute(std::string_view name) const {
    auto value = element_.getAttribute(name);
    if (!value) throw Mistake(fmt::format("the attribute \"{}\" is missing", name));
    return *std::move(value);
  }

  std::string Name(std::string_view attribute) const {
    std::string name = Attribute(attribute);
    if (name.empty()) throw Mistake(fmt::format("the attribute \"{}\" is empty", attribute));
    return name;
  }

  // A name that is `otherwise` when the attribute is absent.
  std::string NameOr(std::string_view attribute, std::string_view otherwise) const {
    return element_.getAttribute(attribute) ? Name(attribute) : std::string(otherwise);
  }

  platform::Error UnknownValue(std::string_view attribute, std::string_view value, std::string_view expected) const {
    return Mistake(fmt::format("the attribute \"{}\" has the value \"{}\"; {} is expected", attribute,
                               shell::CutWithEllipsis(value, kShownCharacters), expected));
  }

  platform::Error UnexpectedElement() const { return Mistake("the element is not expected here"); }

  void RequireNoChildren() const {
    if (const XmlElement child = element_.firstChild()) throw Place(child, *this).UnexpectedElement();
  }

  // The attribute "name" of the only child, which must be an element `name` without content.
  std::string NameOfOnlyChild(std::string_view name) const {
    const XmlElement child = element_.firstChild();
    if (!child) throw Mistake(fmt::format("the element \"{}\" is missing", name));
    if (child.nodeName() != name) throw Place(child, *this).UnexpectedElement();
    if (const XmlElement other = child.nextSibling()) {
      if (other.nodeName() != name) throw Place(other, *this).UnexpectedElement();
      throw Place(other, *this).Mistake("the element stands here more than once");
    }
    const Place place(child, *this);
    place.RequireNoChildren();
    return place.Name("name");
  }

 private:
  const XmlElement& element_;
  const Place* parent_ = nullptr;
};

struct OperatorForm {
  std::string_view text;
  ConditionOperator op;
  bool isNegated;
};

constexpr std::array<OperatorForm, 10> kOperators = {{{"=", ConditionOperator::Equal, false},
                                                      {"<", ConditionOperator::Less, false},
                                                      {">", ConditionOperator::Greater, false},
                                                      {"like", ConditionOperator::Like, false},
                                                      {"in", ConditionOperator::In, false},
                                                      {"<>", ConditionOperator::Equal, true},
                                                      {">=", ConditionOperator::Less, true},
                                                      {"<=", ConditionOperator::Greater, true},
                                                      {"not like", ConditionOperator::Like, true},
                                                      {"not in", ConditionOperator::In, true}}};

bool IsNegated(const Place& place) {
  const std::string value = place.Element().AttributeOr("negate", "false");
  if (value != "true" && value != "false") throw place.UnknownValue("negate", value, "\"true\" or \"false\"");
  return value == "true";
}

std::vector<std::string> SplitAtCommas(std::string_view list) {
  std::vector<std::string> items;
  for (;;) {
    const std::size_t comma = list.find(',');
    std::string_view item = list.substr(0, comma);
    item.remove_prefix(std::min(item.find_first_not_of(' '), item.size()));
    item.remove_suffix(item.size() - (item.find_last_not_of(' ') + 1));
    items.emplace_back(item);
    if (comma == std::string_view::npos) return items;
    list.remove_prefix(comma + 1);
  }
}

ConditionTest ParseTest(const Place& place) {
  ConditionTest test;
  test.name = place.Name("name");
  const std::string op = place.Attribute("op");
  test.arg = place.Attribute("arg");
  const auto* const form =
      std::find_if(kOperators.begin(), kOperators.end(), [&](const OperatorForm& known) { return known.text == op; });
  if (form == kOperators.end()) {
    throw place.UnknownValue("op", op, "=, <, >, <>, <=, >=, like, not like, in or not in");
  }
  test.op = form->op;
  // A negated "<=" is a plain ">": the two negations cancel.
  test.isNegated = form->isNegated != IsNegated(place);
  if (test.op == ConditionOperator::In) test.items = SplitAtCommas(test.arg);
  place.RequireNoChildren();
  return test;
}

enum class Rank { Outermost, Inner };

ConditionObject ParseObject(const Place& place, Rank rank, int depth);
ConditionNode ParseNode(const Place& place, int depth);

ConditionRelated ParseRelated(const Place& place, int depth) {
  ConditionRelated related;
  related.isNegated = IsNegated(place);
  for (XmlElement child = place.Element().firstChild(); child; child = child.nextSibling()) {
    const Place childPlace(child, place);
    const std::string name = child.nodeName();
    if (name == "reltype") {
      if (!related.relation.empty()) throw childPlace.Mistake("the element stands here more than once");
      related.relation = childPlace.NameOfOnlyChild("rel");
    } else if (name == "object") {
      if (related.object) throw childPlace.Mistake("the element stands here more than once");
      related.object = std::make_unique<ConditionObject>(ParseObject(childPlace, Rank::Inner, depth));
    } else {
      throw childPlace.UnexpectedElement();
    }
  }
  if (related.relation.empty()) throw place.Mistake("the element \"reltype\" is missing");
  if (!related.object) throw place.Mistake("the element \"object\" is missing");
  return related;
}

template <class Series>
Series ParseSeries(const Place& place, int depth) {
  Series series;
  series.isNegated = IsNegated(place);
  for (XmlElement child = place.Element().firstChild(); child; child = child.nextSibling()) {
    series.children.push_back(ParseNode(Place(child, place), depth));
  }
  if (series.children.empty()) throw place.Mistake("a condition is missing in the element");
  return series;
}

// `depth` is the number of conditions around this one.
ConditionNode ParseNode(const Place& place, int depth) {
  if (++depth > kConditionDepth) {
    throw place.Mistake(fmt::format("conditions stand more than {} deep within each other", kConditionDepth));
  }
  const std::string name = place.Element().nodeName();
  if (name == "attr") return {ParseTest(place)};
  if (name == "and") return {ParseSeries<ConditionAnd>(place, depth)};
  if (name == "or") return {ParseSeries<ConditionOr>(place, depth)};
  if (name == "related") return {ParseRelated(place, depth)};
  throw place.UnexpectedElement();
}

std::optional<ConditionNode> ParseCond(const Place& place, int depth) {
  const XmlElement child = place.Element().firstChild();
  if (!child) return std::nullopt;
  ConditionNode node = ParseNode(Place(child, place), depth);
  if (child.nextSibling())
    throw place.Mistake("the element holds more than one condition; \"and\" or \"or\" joins them");
  return node;
}

Sort ParseOrder(const Place& place) {
  const auto order = place.Element().getAttribute("order");
  if (!order) return Sort::None;
  if (*order == "asc") return Sort::Ascending;
  if (*order == "desc") return Sort::Descending;
  throw place.UnknownValue("order", *order, "\"asc\" or \"desc\"");
}

ConditionAttribute ParseAttribute(const Place& place) {
  ConditionAttribute attribute;
  attribute.name = place.Name("name");
  attribute.alias = place.NameOr("as", attribute.name);
  attribute.sort = ParseOrder(place);
  place.RequireNoChildren();
  return attribute;
}

// Reads the children of one `object`, in any order.
class ObjectParser {
 public:
  ObjectParser(const Place& place, Rank rank, int depth) : place_(place), rank_(rank), depth_(depth) {}

  ConditionObject Parse() {
    for (XmlElement child = place_.Element().firstChild(); child; child = child.nextSibling()) {
      Take(Place(child, place_));
    }
    if (object_.entity.empty()) throw place_.Mistake("the element \"objecttype\" is missing");
    return std::move(object_);
  }

 private:
  void Take(const Place& child) {
    const std::string name = child.Element().nodeName();
    if (name == "objecttype") {
      if (!object_.entity.empty()) throw child.Mistake("the element stands here more than once");
      object_.entity = child.NameOfOnlyChild("type");
    } else if (name == "cond") {
      if (std::exchange(hasCond_, true)) throw child.Mistake("the element stands here more than once");
      object_.condition = ParseCond(child, depth_);
    } else if (name == "fetchid" && rank_ == Rank::Outermost) {
      if (object_.fetchID) throw child.Mistake("the element stands here more than once");
      object_.fetchID = child.NameOr("as", "ID");
      child.RequireNoChildren();
    } else if (name == "fetchattr" && rank_ == Rank::Outermost) {
      object_.attributes.push_back(ParseAttribute(child));
    } else {
      throw child.UnexpectedElement();
    }
  }

  const Place& place_;
  Rank rank_;
  int depth_;
  ConditionObject object_;
  bool hasCond_ = false;
};

ConditionObject ParseObject(const Place& place, Rank rank, int depth) {
  return ObjectParser(place, rank, depth).Parse();
}

}  // namespace

ConditionObject ParseCondition(const platform::XmlElement& object) {
  if (!object) throw platform::Error("search condition: the element \"object\" is missing");
  const Place place(object);
  if (object.nodeName() != "object") throw place.Mistake("the element \"object\" is expected");
  return ParseObject(place, Rank::Outermost, 0);
}

}  // namespace qmrules::workbench::repository
