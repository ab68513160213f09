#include <algorithm>
#include <iterator>
#include <string>

#include "workbench/codemodel/cobol/procedure/embeddedcode.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// Commands that only steer the run; all others bring data in or out.
constexpr std::string_view kPlainCommands[] = {"ACCEPT", "CHECKPOINT", "CHKP", "LOG",  "ROLB",    "ROLL", "ROLS",
                                               "SCHD",   "SCHEDULE",   "SETS", "SETU", "SYMCHKP", "TERM", "TERMINATE"};

// WHERE (field = variable AND …): fields are names of the database.
void Where(StatementParser& parser, std::uint32_t end) {
  TokenCursor& cursor = parser.Cursor();
  int depth = 1;
  bool compared = false;
  while (cursor.Index() < end) {
    const TokenKind kind = cursor.Current().kind;
    const bool relation = kind == TokenKind::Equal || kind == TokenKind::Less || kind == TokenKind::Greater ||
                          kind == TokenKind::LessEqual || kind == TokenKind::GreaterEqual ||
                          kind == TokenKind::NotEqual;
    if (compared && parser.Operand().Operand(Role::Key) != 0) {
      compared = false;
      continue;
    }
    if (relation) compared = true;
    if (kind == TokenKind::Open) ++depth;
    const bool closes = kind == TokenKind::Close && --depth == 0;
    cursor.Next();
    if (closes) return;
  }
}

// SEGMENT (name), PSB (name): a name of the database, or a variable in parentheses of its own.
void DatabaseName(StatementParser& parser, std::uint32_t end, Role role) {
  TokenCursor& cursor = parser.Cursor();
  if (cursor.Index() < end && cursor.At(TokenKind::Word)) {
    const std::uint32_t token = cursor.Index();
    const std::string_view name = parser.Symbols().Text(cursor.Current().symbol);
    cursor.Next();
    NamedReference(parser, token, token, name, role);
    LeaveParentheses(parser, end);
  } else {
    OptionName(parser, end, role);
  }
}

void Option(StatementParser& parser, std::uint32_t end, std::string_view word) {
  if (word == "WHERE") {
    Where(parser, end);
  } else if (word == "SEGMENT" || word == "PSB") {
    DatabaseName(parser, end, word == "PSB" ? Role::Other : Role::File);
  } else if (word == "INTO") {
    OptionValue(parser, end, Role::Into, VarUsage::In);
  } else if (word == "KEYFEEDBACK") {
    OptionValue(parser, end, Role::Target, VarUsage::In);
  } else if (word == "FROM") {
    OptionValue(parser, end, Role::From, VarUsage::Out);
  } else if (word == "KEYS") {
    OptionValue(parser, end, Role::Key, VarUsage::Out);
  } else {
    const bool isLength = word.ends_with("LENGTH") || word.ends_with("LEN");
    OptionValue(parser, end, isLength ? Role::Length : Role::Other, VarUsage::Out);
  }
}

}  // namespace

void ParseDli(StatementParser& parser, NodeId node, std::uint32_t end) {
  TokenCursor& cursor = parser.Cursor();
  const std::string_view command = WordBefore(parser, end);
  NameEmbedded(parser, node, "DLI", command);
  const bool plain = std::ranges::find(kPlainCommands, command) != std::end(kPlainCommands);
  if (!plain) parser.Model().Node(node).entity = Entity::IoStat;
  cursor.Next();
  while (cursor.Index() < end) {
    const std::string_view word = WordBefore(parser, end);
    cursor.Next();
    if (!word.empty() && cursor.Index() < end && cursor.Accept(TokenKind::Open)) Option(parser, end, word);
  }
}

}  // namespace qmrules::workbench::codemodel::cobol
