#include "workbench/codemodel/cobol/reading/compilationconditions.h"

#include <algorithm>
#include <charconv>
#include <compare>

namespace qmrules::workbench::codemodel::cobol {

namespace {

using Kind = DirectiveWords::Kind;

constexpr int kDeepestParentheses = 100;
constexpr std::string_view kUndecided =
    "The condition cannot be decided from the sources; the text behind it is taken.";

std::optional<double> NumberOf(std::string_view text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::partial_ordering Compare(const std::string& left, const std::string& right) {
  const auto leftNumber = NumberOf(left);
  const auto rightNumber = NumberOf(right);
  if (leftNumber && rightNumber) return *leftNumber <=> *rightNumber;
  return left <=> right;
}

enum class Relational : std::uint8_t { None, Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual };

bool Holds(Relational relation, std::partial_ordering order) {
  switch (relation) {
    case Relational::Equal:
      return std::is_eq(order);
    case Relational::NotEqual:
      return std::is_neq(order);
    case Relational::Less:
      return std::is_lt(order);
    case Relational::LessEqual:
      return std::is_lteq(order);
    case Relational::Greater:
      return std::is_gt(order);
    case Relational::GreaterEqual:
      return std::is_gteq(order);
    case Relational::None:
      break;
  }
  return false;
}

// "LESS THAN OR EQUAL TO" and the like, behind LESS or GREATER.
Relational OrEqual(DirectiveWords& words, Relational without, Relational with) {
  words.AcceptName("THAN");
  if (!words.AcceptName("OR")) return without;
  words.AcceptName("EQUAL");
  words.AcceptName("TO");
  return with;
}

Relational RelationOf(DirectiveWords& words) {
  if (words.AcceptSign("=")) return Relational::Equal;
  if (words.AcceptSign("<>")) return Relational::NotEqual;
  if (words.AcceptSign("<=")) return Relational::LessEqual;
  if (words.AcceptSign(">=")) return Relational::GreaterEqual;
  if (words.AcceptSign("<")) return Relational::Less;
  if (words.AcceptSign(">")) return Relational::Greater;
  if (words.AcceptName("LESS")) return OrEqual(words, Relational::Less, Relational::LessEqual);
  if (words.AcceptName("GREATER")) return OrEqual(words, Relational::Greater, Relational::GreaterEqual);
  if (words.AcceptName("EQUAL") || words.AcceptName("EQUALS")) {
    words.AcceptName("TO");
    return Relational::Equal;
  }
  return Relational::None;
}

}  // namespace

std::string CompilationConditions::Take(std::string_view directive) {
  const bool isDollar = directive.starts_with('$');
  if (!isDollar && !directive.starts_with(">>")) return "";
  directive.remove_prefix(isDollar ? 1 : 2);
  DirectiveWords words(directive);
  if (words.AcceptName("IF")) return Open(words, false);
  if (words.AcceptName("EVALUATE")) return Open(words, true);
  if (words.AcceptName("ELIF") || words.AcceptName("ELSE-IF") || words.AcceptName("ELSEIF")) {
    return Branch(words, false, false);
  }
  if (words.AcceptName("ELSE")) return Branch(words, false, !words.AcceptName("IF"));
  if (words.AcceptName("WHEN")) return Branch(words, true, words.AcceptName("OTHER"));
  if (words.AcceptName("END-IF")) return Close(false);
  if (words.AcceptName("END-EVALUATE")) return Close(true);
  if (isDollar && words.AcceptName("END")) return Close(false);
  if (!IsActive()) return "";
  if (words.AcceptName("DEFINE")) return Define(words);
  if (isDollar && words.AcceptName("SET")) return SetConstants(words);
  return "";
}

std::string CompilationConditions::LeaveFile() {
  const std::size_t before = files_.back();
  files_.pop_back();
  if (blocks_.size() <= before) return "";
  const bool isEvaluate = blocks_.back().isEvaluate;
  blocks_.resize(before);
  return isEvaluate ? "The directive EVALUATE is not ended by END-EVALUATE in its file."
                    : "The directive IF is not ended by END-IF in its file.";
}

// name [AS] value [OVERRIDE], name [AS] OFF, name [AS] PARAMETER
std::string CompilationConditions::Define(DirectiveWords& words) {
  words.AcceptName("CONSTANT");
  if (words.Current().kind != Kind::Name) return "The directive DEFINE gives no name.";
  const std::string name = words.Current().text;
  words.Next();
  words.AcceptName("AS");
  if (words.AcceptName("OFF")) {
    constants_.erase(name);
    return "";
  }
  std::optional<std::string> value;
  if (words.IsAtEnd() || words.Current().text == "OVERRIDE") {
    value = "";
  } else if (!words.AcceptName("PARAMETER")) {
    const bool isNegative = words.AcceptSign("-");
    value = ValueOf(words.Current());
    if (value && isNegative) value->insert(0, 1, '-');
    words.Next();
    words.AcceptName("OVERRIDE");
    if (!words.IsAtEnd()) value.reset();  // an expression
  }
  constants_[name] = std::move(value);
  return "";
}

// CONSTANT name"value", name(value) or name=value, any number of them; other settings are passed over.
std::string CompilationConditions::SetConstants(DirectiveWords& words) {
  while (!words.IsAtEnd()) {
    if (!words.AcceptName("CONSTANT")) {
      words.Next();
      continue;
    }
    if (words.Current().kind != Kind::Name) return "The directive SET CONSTANT gives no name.";
    const std::string name = words.Current().text;
    words.Next();
    const bool isOpen = words.AcceptSign("(");
    if (!isOpen) words.AcceptSign("=");
    constants_[name] = words.IsAtEnd() ? std::string() : words.Current().text;
    words.Next();
    if (isOpen) words.AcceptSign(")");
  }
  return "";
}

std::string CompilationConditions::Open(DirectiveWords& words, bool isEvaluate) {
  Block block;
  block.isEvaluate = isEvaluate;
  block.outerActive = IsActive();
  if (isEvaluate) {
    block.isTruth = words.Current().text == "TRUE";
    block.subject = words.Current();
    blocks_.push_back(std::move(block));
    return "";
  }
  blocks_.push_back(std::move(block));
  return blocks_.back().outerActive ? Begin(Or(words, 0)) : "";
}

// True when a block of the kind is open that was begun in this file.
bool CompilationConditions::IsWithin(bool isEvaluate) const {
  const std::size_t before = files_.empty() ? 0 : files_.back();
  return blocks_.size() > before && blocks_.back().isEvaluate == isEvaluate;
}

std::string CompilationConditions::Branch(DirectiveWords& words, bool isWhen, bool isOtherwise) {
  if (!IsWithin(isWhen)) {
    return isWhen ? "The directive WHEN stands outside EVALUATE." : "The directive ELSE stands outside IF.";
  }
  Block& block = blocks_.back();
  block.active = false;
  if (block.otherwise) return "The directive follows the one for all other cases; the text behind it is left out.";
  block.otherwise = isOtherwise;
  if (!block.outerActive || block.taken) return "";
  if (isOtherwise) return Begin(Truth::True);
  return Begin(isWhen && !block.isTruth ? Matches(block.subject, words) : Or(words, 0));
}

std::string CompilationConditions::Close(bool isEvaluate) {
  if (!IsWithin(isEvaluate)) {
    return isEvaluate ? "The directive END-EVALUATE stands outside EVALUATE."
                      : "The directive END-IF stands outside IF.";
  }
  blocks_.pop_back();
  return "";
}

// Begins a branch of the innermost block.
std::string CompilationConditions::Begin(Truth truth) {
  Block& block = blocks_.back();
  block.active = block.taken = truth != Truth::False;
  return std::string(truth == Truth::Unknown ? kUndecided : "");
}

CompilationConditions::Truth CompilationConditions::Or(DirectiveWords& words, int depth) const {
  Truth truth = And(words, depth);
  while (words.AcceptName("OR")) {
    const Truth right = And(words, depth);
    if (truth == Truth::True || right == Truth::True) {
      truth = Truth::True;
    } else if (right == Truth::Unknown) {
      truth = Truth::Unknown;
    }
  }
  return truth;
}

CompilationConditions::Truth CompilationConditions::And(DirectiveWords& words, int depth) const {
  Truth truth = Not(words, depth);
  while (words.AcceptName("AND")) {
    const Truth right = Not(words, depth);
    if (truth == Truth::False || right == Truth::False) {
      truth = Truth::False;
    } else if (right == Truth::Unknown) {
      truth = Truth::Unknown;
    }
  }
  return truth;
}

CompilationConditions::Truth CompilationConditions::Not(DirectiveWords& words, int depth) const {
  bool isNegated = false;
  while (words.AcceptName("NOT")) isNegated = !isNegated;
  Truth truth = Truth::Unknown;
  if (words.AcceptSign("(")) {
    if (depth < kDeepestParentheses) truth = Or(words, depth + 1);
    words.AcceptSign(")");
  } else {
    truth = Relation(words);
  }
  if (!isNegated || truth == Truth::Unknown) return truth;
  return truth == Truth::True ? Truth::False : Truth::True;
}

// name [IS] [NOT] DEFINED (or SET), a relation, or the name of a boolean constant
CompilationConditions::Truth CompilationConditions::Relation(DirectiveWords& words) const {
  const Item subject = words.Current();
  words.Next();
  words.AcceptName("IS");
  bool isNegated = false;
  while (words.AcceptName("NOT")) isNegated = !isNegated;
  const auto known = [&](bool truth) { return truth != isNegated ? Truth::True : Truth::False; };
  if (words.AcceptName("DEFINED") || words.AcceptName("SET")) {
    const auto constant = constants_.find(subject.text);
    if (constant == constants_.end()) return known(false);
    return constant->second ? known(true) : Truth::Unknown;
  }
  if (const Relational relation = RelationOf(words); relation != Relational::None) {
    const auto left = ValueOf(subject);
    const auto right = ValueOf(words.Current());
    words.Next();
    if (!left || !right) return Truth::Unknown;
    return known(Holds(relation, Compare(*left, *right)));
  }
  const auto value = ValueOf(subject);
  if (value == "1") return known(true);
  if (value == "0") return known(false);
  return Truth::Unknown;
}

// value [THRU value], behind WHEN
CompilationConditions::Truth CompilationConditions::Matches(const Item& subject, DirectiveWords& words) const {
  const auto left = ValueOf(subject);
  const auto first = ValueOf(words.Current());
  words.Next();
  if (!left || !first) return Truth::Unknown;
  if (!words.AcceptName("THRU") && !words.AcceptName("THROUGH")) {
    return std::is_eq(Compare(*left, *first)) ? Truth::True : Truth::False;
  }
  const auto last = ValueOf(words.Current());
  if (!last) return Truth::Unknown;
  return std::is_gteq(Compare(*left, *first)) && std::is_lteq(Compare(*left, *last)) ? Truth::True : Truth::False;
}

std::optional<std::string> CompilationConditions::ValueOf(const Item& item) const {
  if (item.kind == Kind::Literal || item.kind == Kind::Number) return item.text;
  const auto constant = constants_.find(item.text);
  return item.kind == Kind::Name && constant != constants_.end() ? constant->second : std::nullopt;
}

}  // namespace qmrules::workbench::codemodel::cobol
