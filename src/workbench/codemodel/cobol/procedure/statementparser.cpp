#include "workbench/codemodel/cobol/procedure/statementparser.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/codemodel/cobol/procedure/statementfamilies.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

constexpr std::size_t kWords = static_cast<std::size_t>(Word::None) + 1;

// The spec of each word that is a verb; nullptr for the others.
using SpecTable = std::array<const VerbSpec*, kWords>;

const SpecTable& Specs() {
  static const SpecTable table = [] {
    SpecTable made{};
    for (const auto family :
         {ControlVerbs(), ArithmeticVerbs(), DataVerbs(), FileVerbs(), CallVerbs(), MarkupVerbs(), EmbeddedVerbs()}) {
      for (const VerbSpec& spec : family) made[static_cast<std::size_t>(spec.word)] = &spec;
    }
    return made;
  }();
  return table;
}

bool BeginsProgram(const TokenCursor& cursor) {
  switch (cursor.WordAt()) {
    case Word::Identification:
    case Word::Id:
    case Word::Environment:
    case Word::Data:
      return cursor.WordAt(1) == Word::Division;
    case Word::ProgramId:
    case Word::FunctionId:
    case Word::ClassId:
    case Word::MethodId:
    case Word::InterfaceId:
      return cursor.Current().Has(kFirstOnRow);
    case Word::End:
      switch (cursor.WordAt(1)) {
        case Word::Program:
        case Word::Function:
        case Word::Method:
        case Word::Class:
        case Word::Factory:
        case Word::Object:
        case Word::Declaratives:
          return true;
        default:
          return false;
      }
    default:
      return false;
  }
}

}  // namespace

StatementParser::StatementParser(TokenCursor& cursor, ModelBuilder& model, ProgramScope*& scope, SymbolTable& symbols)
    : cursor_(cursor),
      model_(model),
      scope_(scope),
      symbols_(symbols),
      operands_(cursor, model, scope, symbols),
      conditions_(cursor, model, scope, operands_),
      ports_(cursor, model, operands_, implicitLeft_),
      sqlCursors_(cursor, symbols),
      awaited_(kWords, 0),
      verbNames_(256, 0),
      implicitLeft_(1000 + 4 * static_cast<std::uint64_t>(cursor.Source().tokens.size())) {}

bool StatementParser::TakeImplicit() {
  if (implicitLeft_ == 0) return false;
  --implicitLeft_;
  return true;
}

const VerbSpec* StatementParser::SpecHere() const {
  const Word word = cursor_.WordAt();
  const VerbSpec* spec = Specs()[static_cast<std::size_t>(word)];
  if (spec == nullptr) return nullptr;
  if (word == Word::Next && cursor_.WordAt(1) != Word::Sentence) return nullptr;
  const Word second = cursor_.WordAt(1);
  if ((word == Word::Json || word == Word::Xml) && second != Word::Generate && second != Word::Parse) return nullptr;
  if (!IsReserved(word) && scope_->IsDeclared(cursor_.Current().symbol)) return nullptr;
  return spec;
}

Phrase StatementParser::PhraseHere() const {
  return PhraseAt(cursor_, awaitedPhrases_[static_cast<std::size_t>(PhraseKind::AtEnd)] > 0);
}

bool StatementParser::AtDivisionEnd() const {
  return cursor_.AtEnd() || BeginsProgram(cursor_);
}

// What a token that is no word ends; nothing for a word.
std::optional<bool> StatementParser::EndsWithoutWord() const {
  switch (cursor_.Current().kind) {
    case TokenKind::Period:
    case TokenKind::End:
      return true;
    case TokenKind::Number:
      return operands_.AtHeader();
    case TokenKind::Word:
      return std::nullopt;
    default:
      return false;
  }
}

bool StatementParser::AtStatementEnd() const {
  if (const auto ends = EndsWithoutWord()) return *ends;
  const Word word = cursor_.WordAt();
  if (word == Word::None) return operands_.AtHeader();
  return word == Word::Else || word == Word::When || IsScopeEnd(word) || SpecHere() != nullptr || AtPhrase() ||
         BeginsProgram(cursor_) || operands_.AtHeader();
}

// True where a list of statements ends because something around it, or nothing at all, goes on.
bool StatementParser::EndsStatements() const {
  if (const auto ends = EndsWithoutWord()) return *ends;
  const Word word = cursor_.WordAt();
  if (awaited_[static_cast<std::size_t>(word)] > 0 || BeginsProgram(cursor_) || operands_.AtHeader()) return true;
  return awaitedPhrases_[static_cast<std::size_t>(PhraseHere().kind)] > 0;
}

void StatementParser::Statements() {
  for (;;) {
    if (const VerbSpec* spec = SpecHere()) {
      Statement(*spec);
    } else if (EndsStatements()) {
      return;
    } else if (AtStatementEnd()) {
      Stray();
    } else {
      UnknownStatement();
    }
  }
}

void StatementParser::Sentence() {
  const std::uint32_t first = cursor_.Index();
  const NodeId before = model_.LastNode();
  flattened_ = false;
  for (;;) {
    Statements();
    if (cursor_.Accept(TokenKind::Period)) return EndSentence(before);
    // What stands first is passed over if nothing else takes it, so that every sentence ends behind its beginning.
    if (AtDivisionEnd() || (operands_.AtHeader() && cursor_.Index() != first)) {
      model_.Report(Severity::Warning, cursor_.Index(), "A full stop is missing before this.");
      return;
    }
    Stray();
  }
}

// Marks the statement that a full stop stands behind. `before` is the last node that is not of the sentence.
void StatementParser::EndSentence(NodeId before) {
  NodeId node = model_.LastNode();
  if (node == before) return;
  while (model_.Node(node).parent != model_.Current()) node = model_.Node(node).parent;
  model_.Node(node).flags |= kEndsSentence;
}

void StatementParser::Statement(const VerbSpec& spec) {
  const NodeId node = model_.Open(spec.entity, cursor_.Index());
  SetVerb(node, spec.verb);
  if (spec.scopeEnd != Word::None) ++awaited_[static_cast<std::size_t>(spec.scopeEnd)];
  const auto await = [&](std::uint32_t change) {
    if (!spec.hasPhrases) return;
    for (std::size_t kind = 1; kind < kPhraseKinds; ++kind) {
      if (HasPhrase(spec.verb, static_cast<PhraseKind>(kind))) awaitedPhrases_[kind] += change;
    }
  };
  await(1);
  OwnPart(spec, node);
  // SEARCH has read its AT END itself.
  if (spec.hasPhrases && spec.verb != Verb::Search) PhrasesOf(spec);
  await(static_cast<std::uint32_t>(-1));
  if (spec.scopeEnd != Word::None) --awaited_[static_cast<std::size_t>(spec.scopeEnd)];
}

void StatementParser::SetVerb(NodeId node, Verb verb) {
  TextId& name = verbNames_[static_cast<std::size_t>(verb)];
  if (name == 0) name = model_.Text(NameOf(verb));
  model_.Node(node).verb = static_cast<std::uint8_t>(verb);
  model_.Node(node).name = name;
}

void StatementParser::OwnPart(const VerbSpec& spec, NodeId node) {
  cursor_.Next();
  spec.parse(*this, node);
  // A name that begins a row is a garbled statement of its own.
  const bool isNext = cursor_.At(TokenKind::Word) && cursor_.At(Word::None) && cursor_.Current().Has(kFirstOnRow);
  if (!AtStatementEnd() && !isNext) {
    Skip(fmt::format("{} does not fit into the {} statement.", cursor_.Text(), NameOf(spec.verb)));
  }
  // A PERFORM that is not inline has no end of its own; the one that follows is of the PERFORM around it.
  if (spec.scopeEnd != Word::None && model_.Node(node).entity != Entity::Perform) cursor_.Accept(spec.scopeEnd);
  if (model_.Current() == node) Close(node);
}

void StatementParser::PhrasesOf(const VerbSpec& spec) {
  for (Phrase phrase = PhraseHere(); HasPhrase(spec.verb, phrase.kind); phrase = PhraseHere()) {
    const NodeId node = model_.Open(Entity::If, cursor_.Index());
    PhraseBranches(phrase);
    if (!HasPhrase(spec.verb, PhraseHere().kind) && spec.scopeEnd != Word::None) cursor_.Accept(spec.scopeEnd);
    Close(node);
  }
}

// The two branches of a phrase, below the open IF.
void StatementParser::PhraseBranches(Phrase phrase) {
  const NodeId node = model_.Current();
  const TextId kind = model_.Text(IfKindOf(phrase.kind));
  model_.Node(node).verb = static_cast<std::uint8_t>(Verb::Phrase);
  model_.Node(node).name = kind;
  model_.Node(node).detail = kind;
  const std::uint32_t first = cursor_.Index();
  cursor_.MoveTo(first + phrase.tokens);
  PlainCondition(first, ConditionOf(phrase));
  Block(Role::Then);
  const Phrase other = PhraseHere();
  if (other.kind != phrase.kind || other.negated == phrase.negated) return;
  cursor_.MoveTo(cursor_.Index() + other.tokens);
  Block(Role::Else);
}

void StatementParser::UnknownStatement() {
  const NodeId node = model_.Open(Entity::Stat, cursor_.Index());
  model_.Node(node).verb = static_cast<std::uint8_t>(Verb::Unknown);
  model_.Node(node).name = model_.Text(cursor_.Text());
  model_.Node(node).flags |= kGap;
  model_.Report(Severity::Gap, cursor_.Index(), fmt::format("{} begins no statement.", cursor_.Text()));
  do {
    cursor_.Next();
  } while (!AtStatementEnd());
  Close(node);
}

// Passes over an ELSE, a phrase or an end of scope that no statement waits for.
void StatementParser::Stray() {
  const std::uint32_t first = cursor_.Index();
  const Phrase phrase = PhraseHere();
  const std::string text =
      phrase.kind == PhraseKind::None ? std::string(cursor_.Text()) : std::string(ConditionOf(phrase));
  const bool isEnd = phrase.kind == PhraseKind::None && IsScopeEnd(cursor_.WordAt());
  const bool isWhen = cursor_.At(Word::When);
  cursor_.MoveTo(first + std::max<std::uint32_t>(phrase.tokens, 1));
  if (!flattened_) {
    model_.Report(isEnd ? Severity::Warning : Severity::Gap, first, fmt::format("{} belongs to no statement.", text));
  }
  while (isWhen && !AtStatementEnd()) cursor_.Next();
}

NodeId StatementParser::Condition() {
  const std::uint32_t first = cursor_.Index();
  const NodeId node = model_.Open(Entity::Cond, first);
  conditionText_.clear();
  const Conditions::Shape shape = conditions_.Read(Role::Source, conditionText_);
  if (shape.isEmpty && cursor_.Index() == first) model_.Report(Severity::Gap, first, "A condition is missing.");
  const TextId text = model_.Text(conditionText_);
  model_.Node(node).detail = text;
  model_.Node(node).name = text;
  Close(node);
  return node;
}

NodeId StatementParser::PlainCondition(std::uint32_t first, std::string_view text) {
  const NodeId node = model_.Leaf(Entity::Cond, first, std::max(first, cursor_.Previous()));
  const TextId id = model_.Text(text);
  model_.Node(node).detail = id;
  model_.Node(node).name = id;
  return node;
}

NodeId StatementParser::Block(Role role) {
  // An empty one has its place at the word before it.
  const bool isEmpty = !AtVerb() && EndsStatements();
  const NodeId node = model_.Open(Entity::Block, isEmpty ? cursor_.Previous() : cursor_.Index());
  model_.Node(node).role = role;
  if (depth_ < kMostDepth) {
    ++depth_;
    Statements();
    --depth_;
  } else {
    flattened_ = true;
    model_.Node(node).flags |= kGap;
    if (!toldFlattened_) {
      model_.Report(Severity::Gap, cursor_.Index(), "Statements are nested too deeply here; they stand side by side.");
      toldFlattened_ = true;
    }
  }
  Close(node);
  return node;
}

NodeId StatementParser::BlockBefore(Word branch, Role role) {
  ++awaited_[static_cast<std::size_t>(branch)];
  const NodeId node = Block(role);
  --awaited_[static_cast<std::size_t>(branch)];
  return node;
}

void StatementParser::Close(NodeId node) {
  model_.Close(node, std::max(cursor_.Previous(), model_.FirstToken(node)));
}

void StatementParser::Skip(std::string text) {
  model_.Report(Severity::Gap, cursor_.Index(), std::move(text));
  while (!AtStatementEnd()) cursor_.Next();
}

}  // namespace qmrules::workbench::codemodel::cobol
