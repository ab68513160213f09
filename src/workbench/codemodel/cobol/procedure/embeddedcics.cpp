#include <algorithm>
#include <string>

#include "workbench/codemodel/cobol/procedure/cicscommands.h"
#include "workbench/codemodel/cobol/procedure/clauses.h"
#include "workbench/codemodel/cobol/procedure/embeddedcode.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// Options that can stand first, so that they are not the second word of a command's name.
constexpr std::string_view kNoSecondWords[] = {"CONVID", "FLENGTH", "FROM", "INTO",   "LENGTH",
                                               "QNAME",  "QUEUE",   "SET",  "SESSION"};

bool IsSecondWord(std::string_view word) {
  return !word.empty() && std::ranges::find(kNoSecondWords, word) == std::end(kNoSecondWords);
}

// One command while its options are read.
class CicsStatement {
 public:
  CicsStatement(StatementParser& parser, NodeId node, std::uint32_t end)
      : parser_(parser), cursor_(parser.Cursor()), node_(node), end_(end) {}

  void Parse();

 private:
  void Begin();
  void Option(std::string_view word);
  void Program(const CicsOption& option);
  void ImplicitMap();

  StatementParser& parser_;
  TokenCursor& cursor_;
  NodeId node_;
  std::uint32_t end_;
  CicsCommand command_;
  bool firstOption_ = true;  // of those with a value
  bool browsing_ = false;    // INQUIRE … NEXT: the name comes in as well
  bool hasData_ = false;     // FROM, INTO or SET was there, or is not wanted
  std::string map_;          // its name where it is a literal
};

// Finds the command, what it is for the model, and its name.
void CicsStatement::Begin() {
  const std::string_view word = WordBefore(parser_, end_);
  command_ = CicsCommandOf(word);
  std::string name(word);
  const std::string_view second = WordBefore(parser_, end_, 1);
  if (command_.twoWords && IsSecondWord(second)) name.append(" ").append(second);
  NameEmbedded(parser_, node_, "CICS", name);
  NodeRecord& record = parser_.Model().Node(node_);
  if (command_.kind == CicsCommandKind::Io) record.entity = Entity::IoStat;
  if (command_.kind == CicsCommandKind::Call || command_.kind == CicsCommandKind::Return) record.entity = Entity::Port;
  for (std::uint32_t ahead = 1; command_.word == "INQUIRE" && cursor_.Index() + ahead < end_; ++ahead) {
    browsing_ = browsing_ || WordBefore(parser_, end_, ahead) == "NEXT";
  }
  cursor_.Next();
}

void CicsStatement::Parse() {
  Begin();
  while (cursor_.Index() < end_) {
    const std::string_view word = WordBefore(parser_, end_);
    const bool parenthesis = cursor_.At(TokenKind::Open);
    cursor_.Next();
    if (parenthesis) {
      LeaveParentheses(parser_, end_);
    } else if (word == "MAPONLY") {
      hasData_ = true;
    } else if (word == "NOHANDLE") {
      parser_.Model().Node(node_).flags |= kNoHandle;
    } else if (!word.empty() && cursor_.Index() < end_ && cursor_.Accept(TokenKind::Open)) {
      Option(word);
      firstOption_ = false;
    }
  }
  if (command_.kind == CicsCommandKind::Return) parser_.Ports().Leave(node_);
  ImplicitMap();
}

void CicsStatement::Option(std::string_view word) {
  CicsOption option = CicsOptionOf(command_, word);
  const bool handlesProgram = command_.kind == CicsCommandKind::Handle && option.kind == CicsOptionKind::Program;
  if (command_.kind == CicsCommandKind::Handle && !handlesProgram && option.role != Role::Status) {
    option.kind = CicsOptionKind::Procedure;
  }
  // What is asked about is told first: INQUIRE FILE(name).
  if (command_.word == "INQUIRE" && firstOption_) {
    option.kind = browsing_ ? CicsOptionKind::Value : CicsOptionKind::Name;
    option.usage = browsing_ ? VarUsage::In : VarUsage::Out;
    option.role = Role::Other;
  }
  if (word == "MAP" && cursor_.Index() < end_ && cursor_.At(TokenKind::Literal)) map_ = LiteralValue(cursor_.Text());
  if (word == "FROM" || word == "INTO" || word == "SET") hasData_ = true;
  switch (option.kind) {
    case CicsOptionKind::Procedure:
      parser_.Operand().ProcedureName(Role::None);
      LeaveParentheses(parser_, end_);
      break;
    case CicsOptionKind::Program:
      Program(option);
      break;
    case CicsOptionKind::Name:
      OptionName(parser_, end_, option.role);
      break;
    case CicsOptionKind::Value:
      OptionValue(parser_, end_, option.role, option.usage);
      break;
  }
}

void CicsStatement::Program(const CicsOption& option) {
  if (cursor_.Index() < end_ && cursor_.At(TokenKind::Literal) && command_.kind == CicsCommandKind::Call) {
    SetProgram(parser_, node_, cursor_.Text());
  }
  OptionValue(parser_, end_, option.role, option.usage);
}

// The fields of a map, when the command does not tell where they are: mapnameO goes out, mapnameI comes in.
void CicsStatement::ImplicitMap() {
  const bool sends = command_.word == "SEND";
  if (map_.empty() || hasData_ || (!sends && command_.word != "RECEIVE")) return;
  map_.erase(map_.find_last_not_of(' ') + 1);
  map_ += sends ? 'O' : 'I';
  const std::uint32_t symbol = parser_.Symbols().Find(map_);
  if (symbol == SymbolTable::kNone) return;
  const Resolution record = parser_.Scope().Resolve(symbol, {});
  if (record.found != Resolution::Found::One || !parser_.TakeImplicit()) return;
  ImplicitVariable(parser_, record.node, sends ? Role::From : Role::Into, sends ? VarUsage::Out : VarUsage::In);
}

}  // namespace

void ParseCics(StatementParser& parser, NodeId node, std::uint32_t end) {
  CicsStatement(parser, node, end).Parse();
}

}  // namespace qmrules::workbench::codemodel::cobol
