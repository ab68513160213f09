#include "workbench/codemodel/cobol/procedure/clauses.h"
#include "workbench/codemodel/cobol/procedure/correspondingitems.h"
#include "workbench/codemodel/cobol/procedure/setverb.h"
#include "workbench/codemodel/cobol/procedure/statementfamilies.h"
#include "workbench/codemodel/cobol/procedure/stringverbs.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

void ParseMove(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  const bool corresponding = cursor.Accept(Word::Corresponding) || cursor.Accept(Word::Corr);
  const NodeId source = operands.Operand(Role::Source);
  const NodeId firstTarget = parser.Model().LastNode() + 1;
  if (!Need(parser, source != 0, "MOVE lacks its sending item.")) return;
  if (!Need(parser, cursor.Accept(Word::To), "MOVE lacks TO.")) return;
  if (!Need(parser, operands.Variables(Role::Target, VarUsage::In) > 0, "MOVE lacks its receiving item.")) return;
  if (!corresponding) return;
  parser.Model().Node(source).flags |= kCorresponding;
  const NodeId last = parser.Model().LastNode();
  for (NodeId node = firstTarget; node <= last; node = parser.Model().Node(node).last + 1) {
    parser.Model().Node(node).flags |= kCorresponding;
    CorrespondingItems(parser, {.from = source, .to = node});
  }
}

bool AcceptCategory(TokenCursor& cursor) {
  using enum Word;
  switch (cursor.WordAt()) {
    case Alphabetic:
    case Alphanumeric:
    case AlphanumericEdited:
    case Numeric:
    case NumericEdited:
    case National:
    case NationalEdited:
    case Dbcs:
    case Kanji:
    case Pointer:
    case FunctionPointer:
    case ProcedurePointer:
    case Object:
      break;
    default:
      return false;
  }
  // OBJECT REFERENCE is one category.
  if (cursor.Accept(Object)) {
    cursor.Accept(Reference);
  } else {
    cursor.Next();
  }
  return true;
}

// Its first word, in upper case.
TextId CategoryHere(StatementParser& parser) {
  const Token& token = parser.Cursor().Current();
  return token.kind == TokenKind::Word ? parser.Model().Text(parser.Symbols().Text(token.symbol)) : 0;
}

// [THEN] REPLACING {category [DATA] BY operand} …
bool InitializeReplacing(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  TextId category = CategoryHere(parser);
  if (!Need(parser, AcceptCategory(cursor), "REPLACING lacks a category of data.")) return false;
  do {
    cursor.Accept(Word::Data);
    if (!Need(parser, cursor.Accept(Word::By), "REPLACING lacks BY.")) return false;
    const NodeId operand = parser.Operand().Operand(Role::Source);
    if (!Need(parser, operand != 0, "BY lacks its operand.")) return false;
    parser.Model().Node(operand).detail = category;
    category = CategoryHere(parser);
  } while (AcceptCategory(cursor));
  return true;
}

// One of the phrases behind the items; nothing where none stands.
enum class InitializePhrase : std::uint8_t { None, Replacing, Other, Faulty };
InitializePhrase ParseInitializePhrase(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  bool right = true;
  cursor.Accept(Word::Then);
  if (cursor.Accept(Word::Replacing)) {
    return InitializeReplacing(parser) ? InitializePhrase::Replacing : InitializePhrase::Faulty;
  }
  if (cursor.Accept(Word::All) || AcceptCategory(cursor)) {
    cursor.Accept(Word::To);
    right = Need(parser, cursor.Accept(Word::Value), "INITIALIZE lacks VALUE.");
  } else if (cursor.Accept(Word::To)) {
    right = Need(parser, cursor.Accept(Word::Default), "INITIALIZE lacks DEFAULT.");
  } else if (!cursor.Accept(Word::Default)) {
    return InitializePhrase::None;
  }
  return right ? InitializePhrase::Other : InitializePhrase::Faulty;
}

void ParseInitialize(StatementParser& parser, NodeId node) {
  TokenCursor& cursor = parser.Cursor();
  const int count = parser.Operand().Variables(Role::Target, VarUsage::In);
  if (!Need(parser, count > 0, "INITIALIZE lacks its item.")) return;
  if (cursor.At(Word::With) && cursor.WordAt(1) == Word::Filler) cursor.Next();
  if (cursor.Accept(Word::Filler)) parser.Model().Node(node).flags |= kSelects;
  for (;;) {
    const InitializePhrase phrase = ParseInitializePhrase(parser);
    if (phrase == InitializePhrase::None || phrase == InitializePhrase::Faulty) return;
    if (phrase == InitializePhrase::Other) parser.Model().Node(node).flags |= kSelects;
  }
}

// {item | size CHARACTERS} [INITIALIZED] [RETURNING pointer]
void ParseAllocate(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  const NodeId first = parser.Model().LastNode() + 1;
  if (!Need(parser, operands.Expression(Role::Source), "ALLOCATE lacks its operand.")) return;
  if (!cursor.Accept(Word::Characters)) TurnFrom(parser, first, Role::Target, VarUsage::In);
  cursor.Accept(Word::Initialized);
  if (!cursor.Accept(Word::Returning)) return;
  Need(parser, operands.Variable(Role::Returning, VarUsage::In) != 0, "RETURNING lacks its operand.");
}

void ParseFree(StatementParser& parser, NodeId) {
  // The pointer is read, and set to NULL.
  const int count = parser.Operand().Variables(Role::Both, VarUsage::InOut);
  Need(parser, count > 0, "FREE lacks its operand.");
}

void ParseValidate(StatementParser& parser, NodeId) {
  const int count = parser.Operand().Variables(Role::Source, VarUsage::Out);
  Need(parser, count > 0, "VALIDATE lacks its operand.");
}

constexpr VerbSpec kDataVerbs[] = {
    {Word::Move, Verb::Move, Entity::Stat, ParseMove},
    {Word::Initialize, Verb::Initialize, Entity::Stat, ParseInitialize},
    {Word::Set, Verb::Set, Entity::Stat, ParseSet},
    {Word::String, Verb::String, Entity::Stat, ParseString, Word::EndString, true},
    {Word::Unstring, Verb::Unstring, Entity::Stat, ParseUnstring, Word::EndUnstring, true},
    {Word::Inspect, Verb::Inspect, Entity::Stat, ParseInspect},
    {Word::Examine, Verb::Examine, Entity::Stat, ParseExamine},
    {Word::Transform, Verb::Transform, Entity::Stat, ParseTransform},
    {Word::Allocate, Verb::Allocate, Entity::Stat, ParseAllocate},
    {Word::Free, Verb::Free, Entity::Stat, ParseFree},
    {Word::Validate, Verb::Validate, Entity::Stat, ParseValidate},
};

}  // namespace

std::span<const VerbSpec> DataVerbs() {
  return kDataVerbs;
}

}  // namespace qmrules::workbench::codemodel::cobol
