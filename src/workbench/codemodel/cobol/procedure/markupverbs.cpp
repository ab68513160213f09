#include "workbench/codemodel/cobol/procedure/clauses.h"
#include "workbench/codemodel/cobol/procedure/statementfamilies.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// COUNT [IN] item
void CountClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::Count)) return;
  cursor.Accept(Word::In);
  Need(parser, parser.Operand().Variable(Role::Count, VarUsage::In) != 0, "COUNT lacks its operand.");
}

// NAMESPACE [IS] operand, NAMESPACE-PREFIX [IS] operand, ENCODING operand
bool ValuedClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::Namespace) && !cursor.Accept(Word::NamespacePrefix) && !cursor.Accept(Word::Encoding)) {
    return false;
  }
  cursor.Accept(Word::Is);
  Need(parser, parser.Operand().Operand(Role::Other) != 0, "A clause of the document lacks its operand.");
  return true;
}

// {NAME | TYPE} [OF] {item [IS] {literal | OMITTED | ATTRIBUTE | ELEMENT | CONTENT}} …: how the items are written.
// Nothing of their data is read here.
bool NamingClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::Name) && !cursor.Accept(Word::Type)) return false;
  cursor.Accept(Word::Of);
  bool some = false;
  while (parser.Operand().Variable(Role::Other, VarUsage::None) != 0) {
    some = true;
    cursor.Accept(Word::Is);
    if (cursor.Accept(Word::Omitted) || cursor.Accept(Word::Attribute) || cursor.Accept(Word::Content)) continue;
    if (!AcceptSpelled(parser, "ELEMENT")) parser.Operand().Literal(Role::Other);
  }
  Need(parser, some, "NAME or TYPE lacks its item.");
  return true;
}

// WHEN value [OR value] …
void WhenClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::When)) return;
  do {
    if (!Need(parser, parser.Operand().Literal(Role::Other) != 0, "WHEN lacks its value.")) return;
    cursor.Accept(Word::Or);
  } while (parser.Operand().AtOperand() && !parser.Operand().AtVariable());
}

// SUPPRESS {item [WHEN value …] | EVERY kind [WHEN value …]} …
bool SuppressClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::Suppress)) return false;
  bool some = false;
  for (;; some = true) {
    if (cursor.Accept(Word::Every)) {
      const bool numeric = cursor.Accept(Word::Numeric);
      if (!numeric) AcceptSpelled(parser, "NONNUMERIC");
      if (!cursor.Accept(Word::Attribute) && !cursor.Accept(Word::Content)) AcceptSpelled(parser, "ELEMENT");
    } else if (!cursor.At(Word::When) && parser.Operand().Variable(Role::Other, VarUsage::Out) == 0) {
      break;
    }
    WhenClause(parser);
  }
  Need(parser, some, "SUPPRESS lacks its item.");
  return true;
}

// CONVERTING {item [TO] [JSON] {BOOLEAN | BOOL | NULL} USING condition} …
bool ConvertingItems(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::Converting)) return false;
  do {
    const NodeId item = parser.Operand().Variable(Role::Other, VarUsage::None);
    if (!Need(parser, item != 0, "CONVERTING lacks its item.")) return true;
    if (!cursor.Accept(Word::To)) cursor.Accept(Word::From);
    cursor.Accept(Word::Json);
    if (!AcceptSpelled(parser, "BOOLEAN") && !AcceptSpelled(parser, "BOOL")) cursor.Accept(Word::Null);
    if (cursor.Accept(Word::Using) &&
        !Need(parser, parser.Operand().Operand(Role::Other) != 0, "USING lacks its operand.")) {
      return true;
    }
    cursor.Accept(Word::Also);
  } while (parser.Operand().AtVariable());
  return true;
}

void GenerateClauses(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  for (;;) {
    if (cursor.At(Word::With) && !parser.AtPhrase()) cursor.Next();
    if (cursor.Accept(Word::XmlDeclaration) || cursor.Accept(Word::Attributes)) continue;
    if (!ValuedClause(parser) && !NamingClause(parser) && !SuppressClause(parser) && !ConvertingItems(parser)) return;
  }
}

// target FROM source [COUNT IN item] and the clauses.
void Generate(StatementParser& parser) {
  Operands& operands = parser.Operand();
  if (!Need(parser, operands.Variable(Role::Target, VarUsage::In) != 0, "GENERATE lacks its receiving item.")) return;
  if (!Need(parser, parser.Cursor().Accept(Word::From), "GENERATE lacks FROM.")) return;
  if (!Need(parser, operands.Variable(Role::Source, VarUsage::Out) != 0, "FROM lacks its operand.")) return;
  CountClause(parser);
  GenerateClauses(parser);
}

// source [WITH] [ENCODING operand] [RETURNING NATIONAL] [VALIDATING WITH {item | FILE name}]
// PROCESSING PROCEDURE [IS] range
void ParseXmlDocument(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  if (!Need(parser, operands.Operand(Role::Source) != 0, "PARSE lacks its document.")) return;
  if (cursor.At(Word::With) && cursor.WordAt(1) == Word::Encoding) cursor.Next();
  ValuedClause(parser);
  if (cursor.Accept(Word::Returning)) cursor.Accept(Word::National);
  if (cursor.Accept(Word::Validating)) {
    cursor.Accept(Word::With);
    if (cursor.Accept(Word::File)) {
      parser.Operand().OtherName(Role::Other);
    } else if (!Need(parser, operands.Variable(Role::Other, VarUsage::Out) != 0, "VALIDATING lacks its operand.")) {
      return;
    }
  }
  if (!Need(parser, cursor.Accept(Word::Processing), "PARSE lacks PROCESSING PROCEDURE.")) return;
  cursor.Accept(Word::Procedure);
  cursor.Accept(Word::Is);
  ProcedureRange(parser, Role::None);
}

// source INTO target and the clauses.
void ParseJsonDocument(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  if (!Need(parser, operands.Operand(Role::Source) != 0, "PARSE lacks its document.")) return;
  if (!Need(parser, cursor.Accept(Word::Into), "PARSE lacks INTO.")) return;
  if (!Need(parser, operands.Variable(Role::Target, VarUsage::In) != 0, "INTO lacks its operand.")) return;
  if (cursor.At(Word::With) && cursor.WordAt(1) == Word::Detail) cursor.Next();
  cursor.Accept(Word::Detail);
  GenerateClauses(parser);
}

void ParseXml(StatementParser& parser, NodeId node) {
  TokenCursor& cursor = parser.Cursor();
  if (cursor.Accept(Word::Parse)) {
    parser.SetVerb(node, Verb::XmlParse);
    ParseXmlDocument(parser);
  } else if (Need(parser, cursor.Accept(Word::Generate), "XML lacks GENERATE or PARSE.")) {
    Generate(parser);
  }
}

void ParseJson(StatementParser& parser, NodeId node) {
  TokenCursor& cursor = parser.Cursor();
  if (cursor.Accept(Word::Parse)) {
    parser.SetVerb(node, Verb::JsonParse);
    ParseJsonDocument(parser);
  } else if (Need(parser, cursor.Accept(Word::Generate), "JSON lacks GENERATE or PARSE.")) {
    Generate(parser);
  }
}

constexpr VerbSpec kMarkupVerbs[] = {
    {Word::Xml, Verb::XmlGenerate, Entity::Stat, ParseXml, Word::EndXml, true},
    {Word::Json, Verb::JsonGenerate, Entity::Stat, ParseJson, Word::EndJson, true},
};

}  // namespace

std::span<const VerbSpec> MarkupVerbs() {
  return kMarkupVerbs;
}

}  // namespace qmrules::workbench::codemodel::cobol
