#include <algorithm>
#include <bitset>
#include <iterator>
#include <span>
#include <string>
#include <vector>

#include "workbench/codemodel/cobol/procedure/clauses.h"
#include "workbench/codemodel/cobol/procedure/embeddedcode.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// Statements that bring data in or out of the database.
constexpr std::string_view kDataStatements[] = {"CALL",  "CLOSE", "DELETE", "EXECUTE", "FETCH",  "GET", "INSERT",
                                                "MERGE", "OPEN",  "SELECT", "UPDATE",  "VALUES", "WITH"};

// One statement while its words are passed over from left to right.
class SqlStatement {
 public:
  SqlStatement(StatementParser& parser, NodeId node, std::uint32_t end)
      : parser_(parser), cursor_(parser.Cursor()), node_(node), end_(end) {}

  void Parse();

 private:
  static constexpr std::size_t kMostDepth = 256;

  void Begin();
  std::string_view DeclaredKind() const;
  void Pass(VarUsage usage, Role role) {
    usage_ = usage;
    role_ = role;
  }
  void Token();
  void Word(std::string_view word);
  bool Clause(std::string_view word);
  void Host();
  void Label();
  void Tables();
  bool Name(Role role);
  void CursorVariables(std::uint32_t name);
  std::uint32_t CursorToken() const;
  bool Is(std::string_view command) const { return command_ == command; }
  bool At(TokenKind kind) const { return cursor_.Index() < end_ && cursor_.At(kind); }
  std::size_t Depth() const { return std::min(depth_, kMostDepth - 1); }

  StatementParser& parser_;
  TokenCursor& cursor_;
  NodeId node_;
  std::uint32_t end_;
  std::string_view command_;      // its first word
  std::uint32_t cursorName_ = 0;  // token of an OPEN's, FETCH's or CLOSE's cursor
  // What the next host variable is.
  VarUsage usage_ = VarUsage::Out;
  Role role_ = Role::Source;
  bool receives_ = false;            // the statement's first variables receive, without INTO
  std::size_t depth_ = 0;            // of parentheses
  std::bitset<kMostDepth> selects_;  // by depth: a FROM there names tables
};

void SqlStatement::Begin() {
  command_ = WordBefore(parser_, end_);
  std::string name(command_);
  const std::string_view second = WordBefore(parser_, end_, 1);
  const bool two = (Is("EXECUTE") && second == "IMMEDIATE") || Is("BEGIN") || Is("END") || Is("WHENEVER");
  const std::string_view more = Is("DECLARE") ? DeclaredKind() : two ? second : std::string_view();
  if (!more.empty()) name.append(" ").append(more);
  if (Is("WHENEVER") && second == "NOT") name.append(" FOUND");
  NameEmbedded(parser_, node_, "SQL", name);
  const bool moves = std::ranges::find(kDataStatements, command_) != std::end(kDataStatements);
  if (moves) parser_.Model().Node(node_).entity = Entity::IoStat;
  receives_ = Is("SET") || Is("GET") || Is("ASSOCIATE");
  if (receives_) Pass(VarUsage::In, Role::Into);
  if (Is("CALL")) Pass(VarUsage::InOut, Role::Argument);
  if (Is("OPEN") || Is("FETCH") || Is("CLOSE")) cursorName_ = CursorToken();
}

// What is declared: DECLARE c1 CURSOR, DECLARE GLOBAL TEMPORARY TABLE t.
std::string_view SqlStatement::DeclaredKind() const {
  constexpr std::string_view kKinds[] = {"CURSOR", "TABLE", "STATEMENT", "VARIABLE"};
  constexpr std::uint32_t kMostWords = 8;
  for (std::uint32_t ahead = 1; ahead < kMostWords; ++ahead) {
    const std::string_view word = WordBefore(parser_, end_, ahead);
    if (std::ranges::find(kKinds, word) != std::end(kKinds)) return word;
  }
  return {};
}

// OPEN c, CLOSE c, FETCH [orientation] [FROM] c: the last word before what follows it.
std::uint32_t SqlStatement::CursorToken() const {
  std::uint32_t found = 0;
  for (std::uint32_t ahead = 1; cursor_.Index() + ahead < end_; ++ahead) {
    const std::string_view word = WordBefore(parser_, end_, ahead);
    if (word == "INTO" || word == "USING" || (word == "FOR" && found != 0) || (word == "WITH" && found != 0)) break;
    const bool host = cursor_.Ahead(ahead - 1).kind == TokenKind::Colon;
    if (!word.empty() && !host && word != "FROM") found = cursor_.Index() + ahead;
  }
  return found;
}

void SqlStatement::Parse() {
  Begin();
  if (Is("WHENEVER")) {
    Label();
    return;
  }
  if (Is("INCLUDE") || Is("BEGIN") || Is("END")) return;
  const std::uint32_t opened = Is("OPEN") ? cursorName_ : 0;
  while (cursor_.Index() < end_) Token();
  if (opened != 0) CursorVariables(cursor_.Source().tokens[opened].symbol);
}

void SqlStatement::Token() {
  if (cursor_.Index() == cursorName_ && cursorName_ != 0) {
    if (!Name(Role::Other)) cursor_.Next();
    return;
  }
  if (cursor_.At(TokenKind::Colon)) {
    Host();
    return;
  }
  if (cursor_.At(TokenKind::Word)) {
    const std::string_view word = WordBefore(parser_, end_);
    cursor_.Next();
    Word(word);
    return;
  }
  if (cursor_.At(TokenKind::Open)) {
    ++depth_;
    selects_[Depth()] = false;
  } else if (cursor_.At(TokenKind::Close) && depth_ > 0) {
    --depth_;
  } else if (cursor_.At(TokenKind::Equal) && (Is("SET") || Is("GET"))) {
    Pass(VarUsage::Out, Role::Source);
  } else if (cursor_.At(TokenKind::Comma) && depth_ == 0 && (Is("SET") || Is("GET"))) {
    Pass(VarUsage::In, Role::Into);
  }
  cursor_.Next();
}

// The words that tell what the host variables behind them are.
bool SqlStatement::Clause(std::string_view word) {
  if (word == "INDICATOR" || word == "DESCRIPTOR") return true;
  if (word == "INTO" && (At(TokenKind::Colon) || WordBefore(parser_, end_) == "DESCRIPTOR")) {
    Pass(VarUsage::In, Role::Into);
    return true;
  }
  // Any other word ends a list of receiving variables.
  if (usage_ == VarUsage::In && !receives_) Pass(VarUsage::Out, Role::Source);
  if (word == "WHERE" || word == "HAVING" || word == "ON") role_ = Role::Key;
  if ((word == "SET" || word == "VALUES") && !Is("SET")) role_ = Role::Source;
  return false;
}

void SqlStatement::Word(std::string_view word) {
  if (Clause(word)) return;
  if (word == "SELECT" || word == "DELETE") {
    selects_[Depth()] = true;
  } else if (word == "FROM") {
    if (selects_[Depth()] && WordBefore(parser_, end_) != "FINAL") Tables();
  } else if (word == "JOIN" || (word == "UPDATE" && Is("UPDATE")) || word == "INTO" ||
             (word == "TABLE" && (Is("DECLARE") || Is("LOCK") || Is("TRUNCATE"))) ||
             (word == "DECLARE" && Is("DECLARE") && WordBefore(parser_, end_) != "GLOBAL")) {
    Name(Role::Other);
  } else if (word == "OF" && cursor_.Index() > 1) {
    // WHERE CURRENT OF c; FOR UPDATE OF names columns.
    const TokenCursor& cursor = cursor_;
    const codemodel::Token& before = cursor.Source().tokens[cursor.Index() - 2];
    if (before.kind == TokenKind::Word && parser_.Symbols().Text(before.symbol) == "CURRENT") Name(Role::Other);
  } else if (word == "CALL" && Is("CALL") && !At(TokenKind::Colon)) {
    Name(Role::Program);
  }
}

// name [alias], …
void SqlStatement::Tables() {
  // TABLE (…), UNNEST (…): no table of the database.
  const bool isFunction = At(TokenKind::Word) && cursor_.Ahead(1).kind == TokenKind::Open;
  while (!isFunction && Name(Role::Other)) {
    if (WordBefore(parser_, end_) == "AS") cursor_.Next();
    const bool alias = At(TokenKind::Word) && cursor_.Ahead(1).kind == TokenKind::Comma;
    if (alias) cursor_.Next();
    if (!At(TokenKind::Comma)) return;
    cursor_.Next();
  }
}

// A name of the database, "SCHEMA.TABLE"; false where none stands here.
bool SqlStatement::Name(Role role) {
  if (!At(TokenKind::Word) && !At(TokenKind::Literal)) return false;
  const std::uint32_t first = cursor_.Index();
  std::string name;
  for (bool more = true; more;) {
    for (const char character : cursor_.Text()) {
      name += character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
    }
    cursor_.Next();
    const bool point = cursor_.Index() + 1 < end_ && cursor_.Text() == ".";
    const TokenKind next = cursor_.Ahead(1).kind;
    more = point && (next == TokenKind::Word || next == TokenKind::Literal);
    if (more) {
      name += '.';
      cursor_.Next();
    }
  }
  NamedReference(parser_, first, cursor_.Previous(), name, role);
  return true;
}

// :variable [[INDICATOR] :indicator]
void SqlStatement::Host() {
  cursor_.Next();
  const Role role = Is("CALL") && depth_ == 0 ? Role::Program : role_;
  const VarUsage usage = role == Role::Program ? VarUsage::Out : usage_;
  if (cursor_.Index() >= end_ || parser_.Operand().HostVariable(role, usage) == 0) return;
  if (WordBefore(parser_, end_) == "INDICATOR" && cursor_.Ahead(1).kind == TokenKind::Colon) cursor_.Next();
  if (!At(TokenKind::Colon)) return;
  cursor_.Next();
  if (cursor_.Index() < end_) parser_.Operand().HostVariable(Role::Other, usage);
}

// What a cursor's query compares with is read when the cursor is opened.
void SqlStatement::CursorVariables(std::uint32_t name) {
  const std::vector<codemodel::Token>& tokens = cursor_.Source().tokens;
  for (const std::uint32_t variable : parser_.Cursors().VariablesOf(name)) {
    if (!parser_.TakeImplicit()) return;
    const std::uint32_t first = tokens[variable].symbol;
    const bool qualified =
        cursor_.Source().Text(tokens[variable + 1]) == "." && tokens[variable + 2].kind == TokenKind::Word;
    const Resolution item = qualified ? parser_.Scope().Resolve(tokens[variable + 2].symbol, std::span(&first, 1))
                                      : parser_.Scope().Resolve(first, {});
    if (item.found == Resolution::Found::One) ImplicitVariable(parser_, item.node, Role::Key, VarUsage::Out);
  }
}

// WHENEVER condition {CONTINUE | GOTO [:]label | GO TO [:]label | PERFORM label | DO PERFORM label}
void SqlStatement::Label() {
  while (cursor_.Index() < end_) {
    const std::string_view word = WordBefore(parser_, end_);
    cursor_.Next();
    if (word == "GO" && WordBefore(parser_, end_) == "TO") cursor_.Next();
    if (word != "GO" && word != "GOTO" && word != "PERFORM") continue;
    if (At(TokenKind::Colon)) cursor_.Next();
    if (cursor_.Index() < end_) parser_.Operand().ProcedureName(word == "PERFORM" ? Role::Body : Role::None);
  }
}

}  // namespace

void ParseSql(StatementParser& parser, NodeId node, std::uint32_t end) {
  SqlStatement(parser, node, end).Parse();
}

}  // namespace qmrules::workbench::codemodel::cobol
