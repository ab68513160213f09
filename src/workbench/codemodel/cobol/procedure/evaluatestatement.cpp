#include "workbench/codemodel/cobol/procedure/evaluatestatement.h"

#include <fmt/format.h>

#include <string>
#include <vector>

namespace qmrules::workbench::codemodel::cobol {
namespace {

// A subject's text is not repeated in the conditions past this length.
constexpr std::size_t kMostSubjectText = 250;

struct Subject {
  enum class Kind : std::uint8_t { Value, Condition, True, False };
  Kind kind = Kind::Value;
  std::string text;
  NodeId first = 0, last = 0;  // its nodes
};

// A piece of a condition's text, and what it must be put in parentheses for.
struct Piece {
  std::string text;  // empty for ANY
  bool hasAnd = false, hasOr = false;
};

std::string Negated(const Piece& piece) {
  return piece.hasAnd || piece.hasOr ? fmt::format("NOT ({})", piece.text) : fmt::format("NOT {}", piece.text);
}

class Evaluate {
 public:
  Evaluate(StatementParser& parser, NodeId node)
      : parser_(parser), cursor_(parser.Cursor()), model_(parser.Model()), node_(node) {}

  void Parse() {
    model_.Node(node_).detail = model_.Text("Evaluate");
    Subjects();
    if (!cursor_.At(Word::When))
      parser_.Skip(fmt::format("{} does not fit into the EVALUATE statement.", cursor_.Text()));
    while (cursor_.At(Word::When)) {
      if (cursor_.WordAt(1) == Word::Other) {
        cursor_.Next();
        cursor_.Next();
        parser_.BlockBefore(Word::When, Role::Else);
      } else {
        Group();
        parser_.BlockBefore(Word::When, Role::Then);
      }
    }
  }

 private:
  void Subjects();
  Subject ReadSubject();
  void Group();
  std::string When();
  Piece Object(const Subject& subject);
  Piece ConditionObject(const Subject& subject);
  Piece ValueObject(const Subject& subject);
  void CopySubject(const Subject& subject);

  StatementParser& parser_;
  TokenCursor& cursor_;
  ModelBuilder& model_;
  NodeId node_;
  std::vector<Subject> subjects_;
};

void Evaluate::Subjects() {
  do {
    subjects_.push_back(ReadSubject());
  } while (cursor_.Accept(Word::Also));
}

Subject Evaluate::ReadSubject() {
  Subject subject;
  if (cursor_.Accept(Word::True)) {
    subject.kind = Subject::Kind::True;
    return subject;
  }
  if (cursor_.Accept(Word::False)) {
    subject.kind = Subject::Kind::False;
    return subject;
  }
  subject.first = model_.LastNode() + 1;
  const std::uint32_t token = cursor_.Index();
  const Conditions::Shape shape = parser_.ConditionReader().Read(Role::Subject, subject.text);
  if (shape.isEmpty) model_.Report(Severity::Gap, token, "A subject of EVALUATE is missing.");
  if (shape.isCondition) subject.kind = Subject::Kind::Condition;
  if (subject.text.size() > kMostSubjectText) subject.text = "…";
  subject.last = model_.LastNode();
  return subject;
}

// WHENs up to the statements that they share.
void Evaluate::Group() {
  const NodeId condition = model_.Open(Entity::Cond, cursor_.Index());
  std::string text;
  while (cursor_.At(Word::When) && cursor_.WordAt(1) != Word::Other) {
    cursor_.Next();
    if (!text.empty()) text += " OR ";
    text += When();
    if (!parser_.AtStatementEnd()) parser_.Skip(fmt::format("{} does not fit into the WHEN.", cursor_.Text()));
  }
  const TextId id = model_.Text(text);
  model_.Node(condition).detail = id;
  model_.Node(condition).name = id;
  parser_.Close(condition);
}

// The objects of one WHEN, joined by AND.
std::string Evaluate::When() {
  std::vector<Piece> pieces;
  std::size_t at = 0;
  static const Subject kNoSubject{Subject::Kind::True, {}, 0, 0};
  do {
    if (at == subjects_.size()) {
      model_.Report(Severity::Gap, cursor_.Index(), "This WHEN has more objects than the EVALUATE has subjects.");
    }
    Piece piece = Object(at < subjects_.size() ? subjects_[at] : kNoSubject);
    if (!piece.text.empty()) pieces.push_back(std::move(piece));
    ++at;
  } while (cursor_.Accept(Word::Also));
  if (pieces.empty()) return "ANY";
  std::string text;
  for (const Piece& piece : pieces) {
    if (!text.empty()) text += " AND ";
    text += piece.hasOr && pieces.size() > 1 ? fmt::format("({})", piece.text) : piece.text;
  }
  return text;
}

Piece Evaluate::Object(const Subject& subject) {
  if (cursor_.Accept(Word::Any)) return {};
  if (cursor_.At(Word::True) || cursor_.At(Word::False)) {
    const bool is = cursor_.At(Word::True);
    cursor_.Next();
    CopySubject(subject);
    switch (subject.kind) {
      case Subject::Kind::True:
        return {is ? "TRUE" : "FALSE"};
      case Subject::Kind::False:
        return {is ? "FALSE" : "TRUE"};
      default:
        return {is ? subject.text : fmt::format("NOT ({})", subject.text)};
    }
  }
  CopySubject(subject);
  return subject.kind == Subject::Kind::Value ? ValueObject(subject) : ConditionObject(subject);
}

Piece Evaluate::ConditionObject(const Subject& subject) {
  Piece piece;
  const std::uint32_t first = cursor_.Index();
  const Conditions::Shape shape = parser_.ConditionReader().Read(Role::Source, piece.text);
  if (shape.isEmpty) model_.Report(Severity::Gap, first, "An object of WHEN is missing.");
  piece.hasAnd = piece.hasOr = shape.isCompound;
  if (subject.kind == Subject::Kind::False) return {Negated(piece)};
  return piece;
}

// [NOT] value [THRU value], or the rest of a relation.
Piece Evaluate::ValueObject(const Subject& subject) {
  const bool negated = cursor_.Accept(Word::Not);
  std::string from;
  const std::uint32_t first = cursor_.Index();
  const Conditions::Shape shape = parser_.ConditionReader().Read(Role::Source, from, true);
  if (shape.isEmpty) model_.Report(Severity::Gap, first, "An object of WHEN is missing.");
  if (shape.isPartial)
    return {fmt::format("{}{} {}", subject.text, negated ? " NOT" : "", from), shape.isCompound, shape.isCompound};
  if (shape.isCondition) {
    const Piece piece{from, shape.isCompound, shape.isCompound};
    return negated ? Piece{Negated(piece)} : piece;
  }
  if (!cursor_.Accept(Word::Thru) && !cursor_.Accept(Word::Through)) {
    return {fmt::format("{} {}= {}", subject.text, negated ? "NOT " : "", from)};
  }
  std::string through;
  const std::uint32_t second = cursor_.Index();
  if (parser_.ConditionReader().Read(Role::Thru, through).isEmpty) {
    model_.Report(Severity::Gap, second, "The end of the range is missing.");
  }
  const Piece range{fmt::format("{0} >= {1} AND {0} <= {2}", subject.text, from, through), true, false};
  return negated ? Piece{Negated(range)} : range;
}

// The subject's variables once more, as implicit ones of the condition.
void Evaluate::CopySubject(const Subject& subject) {
  for (NodeId node = subject.first; node != 0 && node <= subject.last; ++node) {
    if (model_.Node(node).entity != Entity::Var || !parser_.TakeImplicit()) continue;
    const std::uint32_t token = cursor_.Previous();
    const NodeId copy = model_.Leaf(Entity::Var, token, token);
    const NodeRecord& original = model_.Node(node);
    NodeRecord& record = model_.Node(copy);
    record.name = original.name;
    record.declaration = original.declaration;
    record.usage = original.usage;
    record.role = original.role;
    record.flags = static_cast<std::uint16_t>(original.flags | kImplicit);
  }
}

}  // namespace

void ParseEvaluate(StatementParser& parser, NodeId node) {
  Evaluate(parser, node).Parse();
}

}  // namespace qmrules::workbench::codemodel::cobol
