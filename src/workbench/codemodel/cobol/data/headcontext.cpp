#include "workbench/codemodel/cobol/data/headcontext.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/codemodel/cobol/reading/figurativeconstants.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// The values of VALUE clauses that are words: TRUE and FALSE are those of conditions.
bool IsFigurative(Word word) {
  return IsFigurativeConstant(word) || word == Word::True || word == Word::False;
}

}  // namespace

bool HeadContext::AtName(std::uint32_t ahead) const {
  const Token& token = cursor.Ahead(ahead);
  if (token.kind != TokenKind::Word) return false;
  const Word word = WordOf(token.symbol);
  return word == Word::None || !IsReserved(word);
}

bool HeadContext::AtDataName() const {
  return AtName() || (cursor.At(TokenKind::Word) && scope.IsRegister(cursor.Current().symbol));
}

bool HeadContext::AtLiteral() const {
  const Token& token = cursor.Current();
  switch (token.kind) {
    case TokenKind::Number:
    case TokenKind::Literal:
      return true;
    case TokenKind::Plus:
    case TokenKind::Minus:
      return cursor.Ahead(1).kind == TokenKind::Number;
    case TokenKind::Word:
      return IsFigurative(cursor.WordAt()) || cursor.At(Word::All);
    default:
      return false;
  }
}

bool HeadContext::AtText(std::string_view word, std::uint32_t ahead) const {
  const Token& token = cursor.Ahead(ahead);
  return token.kind == TokenKind::Word && symbols.Text(token.symbol) == word;
}

void HeadContext::PassOver(std::initializer_list<Word> words) {
  while (cursor.At(TokenKind::Word) && std::find(words.begin(), words.end(), cursor.WordAt()) != words.end()) {
    cursor.Next();
  }
}

TextId HeadContext::NameText(std::uint32_t token) {
  const Token& word = cursor.Source().tokens[token];
  const std::string_view text = cursor.Source().Text(word);
  return word.kind == TokenKind::Word ? model.SymbolText(word.symbol, text) : model.Text(text);
}

std::string HeadContext::Joined(std::uint32_t first, std::uint32_t behind) const {
  std::string joined;
  for (std::uint32_t index = first; index < behind; ++index) {
    if (index != first) joined += ' ';
    joined += cursor.Source().Text(cursor.Source().tokens[index]);
  }
  return joined;
}

NodeId HeadContext::ReadVariable(Role role, VarUsage usage) {
  return ReadVariable(role, usage, {});
}

NodeId HeadContext::ReadVariable(Role role, VarUsage usage, PendingName pending) {
  if (!AtDataName()) return 0;
  pending.token = cursor.Index();
  pending.name = cursor.Current().symbol;
  pending.node = model.Open(Entity::Var, pending.token);
  NodeRecord& record = model.Node(pending.node);
  record.role = role;
  record.usage = usage;
  record.name = NameText(pending.token);
  cursor.Next();
  ReadQualifiers(pending);
  const std::size_t place = pending_.size();
  pending_.push_back(pending);
  ReadSubscripts();
  model.Close(pending_[place].node, cursor.Previous());
  return pending.node;
}

// OF name …: a REF each below the open node, tied with it.
void HeadContext::ReadQualifiers(PendingName& pending) {
  pending.firstQualifier = static_cast<std::uint32_t>(qualifiers_.size());
  while ((cursor.At(Word::Of) || cursor.At(Word::In)) && AtName(1)) {
    cursor.Next();
    qualifiers_.push_back(cursor.Current().symbol);
    const NodeId qualifier = model.Leaf(Entity::Ref, cursor.Index(), cursor.Index());
    model.Node(qualifier).role = Role::Qualifier;
    model.Node(qualifier).name = NameText(cursor.Index());
    cursor.Next();
  }
  pending.qualifiers = static_cast<std::uint32_t>(qualifiers_.size()) - pending.firstQualifier;
}

// Subscripts and reference modification. What stands in parentheses within them is read as part of them.
void HeadContext::ReadSubscripts() {
  int depth = 0;
  Role role = Role::Subscript;
  while (depth > 0 || (cursor.At(TokenKind::Open) && role == Role::Subscript)) {
    if (cursor.AtEnd() || cursor.At(TokenKind::Period)) return;
    if (cursor.Accept(TokenKind::Open)) {
      ++depth;
      continue;
    }
    if (cursor.Accept(TokenKind::Close)) {
      --depth;
      continue;
    }
    if (cursor.Accept(TokenKind::Colon)) {
      role = Role::Length;
      continue;
    }
    if (AtName()) {
      PendingName pending;
      pending.token = cursor.Index();
      pending.name = cursor.Current().symbol;
      pending.node = model.Open(Entity::Var, pending.token);
      NodeRecord& record = model.Node(pending.node);
      record.role = role;
      record.usage = VarUsage::Out;
      record.name = NameText(pending.token);
      cursor.Next();
      ReadQualifiers(pending);
      model.Close(pending.node, cursor.Previous());
      pending_.push_back(pending);
    } else if (ReadLiteral(role) == 0) {
      cursor.Next();
    }
  }
}

int HeadContext::ReadVariables(Role role, VarUsage usage) {
  int count = 0;
  while (ReadVariable(role, usage) != 0) ++count;
  return count;
}

HeadContext::QualifiedName HeadContext::ReadName(Role role) {
  PendingName pending{.token = cursor.Index()};
  pending.name = cursor.Current().symbol;
  pending.node = model.Open(Entity::Ref, pending.token);
  NodeRecord& record = model.Node(pending.node);
  record.role = role;
  record.name = NameText(pending.token);
  cursor.Next();
  ReadQualifiers(pending);
  model.Close(pending.node, cursor.Previous());
  const auto qualifiers = qualifiers_.begin() + pending.firstQualifier;
  return {pending.node, pending.token, pending.name, {qualifiers, qualifiers_.end()}};
}

void HeadContext::TieName(const QualifiedName& name, NodeId declaration) {
  model.Node(name.node).declaration = declaration;
  TieQualifiers(name.node, declaration);
}

NodeId HeadContext::ReadReference(Role role, PendingName::Kind kind) {
  if (!AtName() && !cursor.At(TokenKind::Literal)) return 0;
  PendingName pending{.kind = kind, .token = cursor.Index()};
  const bool isName = cursor.At(TokenKind::Word);
  pending.name = cursor.Current().symbol;
  pending.node = model.Open(Entity::Ref, pending.token);
  NodeRecord& record = model.Node(pending.node);
  record.role = role;
  record.name = NameText(pending.token);
  cursor.Next();
  if (isName) ReadQualifiers(pending);
  model.Close(pending.node, cursor.Previous());
  if (isName) pending_.push_back(pending);
  return pending.node;
}

int HeadContext::ReadReferences(Role role, PendingName::Kind kind) {
  int count = 0;
  while (ReadReference(role, kind) != 0) ++count;
  return count;
}

NodeId HeadContext::ReadLiteral(Role role) {
  if (!AtLiteral()) return 0;
  const std::uint32_t first = cursor.Index();
  const bool isAll = cursor.Accept(Word::All);
  const bool isSigned = !isAll && (cursor.Accept(TokenKind::Plus) || cursor.Accept(TokenKind::Minus));
  if (!isAll || AtLiteral()) cursor.Next();
  while (cursor.At(TokenKind::Ampersand) && cursor.Ahead(1).kind == TokenKind::Literal) {
    cursor.Next();
    cursor.Next();
  }
  const NodeId node = model.Leaf(Entity::Const, first, cursor.Previous());
  std::string text = Joined(first, cursor.Index());
  if (isSigned) std::erase(text, ' ');
  NodeRecord& record = model.Node(node);
  record.role = role;
  record.name = model.Text(text);
  return node;
}

bool HeadContext::ReadOperand(Role role) {
  return AtLiteral() ? ReadLiteral(role) != 0 : ReadVariable(role, VarUsage::Out) != 0;
}

void HeadContext::TiePending() {
  for (const PendingName& pending : pending_) Tie(pending);
  pending_.clear();
  qualifiers_.clear();
}

Resolution HeadContext::Look(const PendingName& pending) const {
  const std::span<const std::uint32_t> qualifiers(qualifiers_.data() + pending.firstQualifier, pending.qualifiers);
  NodeId group = 0;
  if (pending.kind == PendingName::Kind::Within) group = pending.owner;
  if (pending.kind == PendingName::Kind::OfFile) group = selections[pending.selection].file;
  if (group != 0) {
    const Resolution within = scope.ResolveWithin(group, model.Node(group).last, pending.name, qualifiers);
    if (within.found == Resolution::Found::One) return within;
  }
  if (pending.kind == PendingName::Kind::File && qualifiers.empty()) {
    return scope.ResolveFile(pending.name);
  }
  return scope.Resolve(pending.name, qualifiers);
}

std::string HeadContext::Spelled(const PendingName& pending) const {
  std::string name(symbols.Text(pending.name));
  for (std::uint32_t index = 0; index < pending.qualifiers; ++index) {
    name += fmt::format(" OF {}", symbols.Text(qualifiers_[pending.firstQualifier + index]));
  }
  return name;
}

void HeadContext::Tie(const PendingName& pending) {
  if (pending.kind == PendingName::Kind::Program) return;
  const Resolution resolution = Look(pending);
  switch (resolution.found) {
    case Resolution::Found::One:
      Enter(pending, resolution.node);
      TieQualifiers(pending.node, resolution.node);
      return;
    case Resolution::Found::Several:
      model.Report(Severity::Gap, pending.token, fmt::format("{} is ambiguous; qualify it.", Spelled(pending)));
      return;
    case Resolution::Found::None:
      break;
  }
  if (scope.IsRegister(pending.name) && model.Node(pending.node).entity == Entity::Var) {
    const bool isQualified = pending.qualifiers == 1;
    scope.UseRegister(pending.node, pending.name,
                      isQualified ? qualifiers_[pending.firstQualifier] : SymbolTable::kNone);
    return;
  }
  const NodeId special = scope.SpecialNode(pending.name);
  if (special != 0) {
    model.Node(pending.node).declaration = special;
    return;
  }
  model.Report(Severity::Gap, pending.token, fmt::format("{} is not declared.", Spelled(pending)));
}

// Each qualifier means the nearest group of its name around what the one before it means.
void HeadContext::TieQualifiers(NodeId node, NodeId declaration) {
  NodeId around = model.Node(declaration).parent;
  for (NodeId below = node + 1; below <= model.Node(node).last; ++below) {
    NodeRecord& record = model.Node(below);
    if (record.role != Role::Qualifier || record.parent != node) continue;
    while (around != 0 && model.Node(around).name != record.name) around = model.Node(around).parent;
    if (around == 0) return;
    record.declaration = around;
    around = model.Node(around).parent;
  }
}

void HeadContext::Enter(const PendingName& pending, NodeId declaration) {
  NodeRecord& record = model.Node(pending.node);
  record.declaration = declaration;
  record.name = model.Node(declaration).name;
  if (pending.patch == PendingName::Patch::DependingOn) {
    model.Decl(pending.owner).dependingOn = declaration;
    return;
  }
  if (pending.patch == PendingName::Patch::None || model.Node(declaration).entity != Entity::Decl) return;
  const NodeId file = selections[pending.selection].file;
  if (file == 0) return;
  FileRecord& entry = model.File(file);
  (pending.patch == PendingName::Patch::FileKey ? entry.key : entry.status) = declaration;
}

}  // namespace qmrules::workbench::codemodel::cobol
