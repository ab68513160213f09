#include <fmt/format.h>

#include <array>

#include "workbench/codemodel/cobol/procedure/evaluatestatement.h"
#include "workbench/codemodel/cobol/procedure/performstatement.h"
#include "workbench/codemodel/cobol/procedure/searchstatement.h"
#include "workbench/codemodel/cobol/procedure/statementfamilies.h"
#include "workbench/codemodel/cobol/procedure/usestatement.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

void ParseIf(StatementParser& parser, NodeId node) {
  TokenCursor& cursor = parser.Cursor();
  parser.Model().Node(node).detail = parser.Model().Text("If");
  parser.Condition();
  cursor.Accept(Word::Then);
  if (!parser.AtStatementEnd()) parser.Skip(fmt::format("{} does not fit into the condition.", cursor.Text()));
  cursor.Accept(Word::Then);
  parser.BlockBefore(Word::Else, Role::Then);
  if (cursor.Accept(Word::Else)) parser.Block(Role::Else);
}

// GO TO name … [DEPENDING ON operand]; without a name, ALTER gives one.
void ParseGoTo(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  cursor.Accept(Word::To);
  if (cursor.At(Word::MoreLabels)) {
    parser.Operand().OtherName(Role::Other);
    return;
  }
  while (!parser.AtVerb() && parser.Operand().ProcedureName(Role::None) != 0) {
  }
  if (!cursor.Accept(Word::Depending)) return;
  cursor.Accept(Word::On);
  if (parser.Operand().Variable(Role::DependingOn, VarUsage::Out) == 0) parser.Skip("DEPENDING ON lacks its operand.");
}

// ALTER {name TO [PROCEED TO] name} …
void ParseAlter(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  do {
    if (parser.AtVerb() || parser.Operand().ProcedureName(Role::Target) == 0) break;
    cursor.Accept(Word::To);
    if (cursor.Accept(Word::Proceed)) cursor.Accept(Word::To);
    if (parser.Operand().ProcedureName(Role::Source) == 0) parser.Skip("ALTER lacks the name behind TO.");
  } while (!parser.AtStatementEnd());
}

void ParseContinue(StatementParser&, NodeId) {}

void ParseNextSentence(StatementParser& parser, NodeId) {
  parser.Cursor().Accept(Word::Sentence);
}

// [RETURNING | GIVING] [operand], and what goes out with it.
void LeaveProgram(StatementParser& parser, NodeId node) {
  TokenCursor& cursor = parser.Cursor();
  parser.Model().Node(node).entity = Entity::Port;
  if (cursor.Accept(Word::Returning) || cursor.Accept(Word::Giving)) {
    if (cursor.At(Word::Address) || parser.Operand().AtOperand()) {
      parser.Operand().Expression(Role::Returning);
    } else {
      parser.Skip("RETURNING lacks its operand.");
    }
  }
  parser.Ports().Leave(node);
}

void ParseGoback(StatementParser& parser, NodeId node) {
  LeaveProgram(parser, node);
}

void ParseExit(StatementParser& parser, NodeId node) {
  TokenCursor& cursor = parser.Cursor();
  if (cursor.Accept(Word::Program) || cursor.Accept(Word::Function) || cursor.Accept(Word::Method)) {
    parser.SetVerb(node, Verb::ExitProgram);
    LeaveProgram(parser, node);
  } else if (cursor.Accept(Word::Paragraph)) {
    parser.SetVerb(node, Verb::ExitParagraph);
  } else if (cursor.Accept(Word::Section)) {
    parser.SetVerb(node, Verb::ExitSection);
  } else if (cursor.Accept(Word::Perform)) {
    parser.SetVerb(node, cursor.Accept(Word::Cycle) ? Verb::ExitPerformCycle : Verb::ExitPerform);
  }
}

// STOP RUN [[WITH] {ERROR | NORMAL} [STATUS]] [operand], STOP literal.
void ParseStop(StatementParser& parser, NodeId node) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::Run)) {
    if (parser.Operand().Operand(Role::Source) == 0) parser.Skip("STOP lacks RUN.");
    return;
  }
  parser.SetVerb(node, Verb::StopRun);
  cursor.Accept(Word::With);
  if (cursor.Accept(Word::Error) || cursor.Accept(Word::Normal)) cursor.Accept(Word::Status);
  if (parser.Operand().AtOperand()) parser.Operand().Operand(Role::Returning);
  LeaveProgram(parser, node);
}

constexpr std::array kControlVerbs = std::to_array<VerbSpec>({
    {Word::If, Verb::If, Entity::If, ParseIf, Word::EndIf},
    {Word::Evaluate, Verb::Evaluate, Entity::If, ParseEvaluate, Word::EndEvaluate},
    {Word::Perform, Verb::Perform, Entity::Perform, ParsePerform, Word::EndPerform},
    {Word::Go, Verb::Goto, Entity::Goto, ParseGoTo},
    {Word::Alter, Verb::Alter, Entity::Stat, ParseAlter},
    {Word::Search, Verb::Search, Entity::Stat, ParseSearch, Word::EndSearch, true},
    {Word::Continue, Verb::Continue, Entity::Stat, ParseContinue},
    {Word::Next, Verb::NextSentence, Entity::Stat, ParseNextSentence},
    {Word::Exit, Verb::Exit, Entity::Stat, ParseExit},
    {Word::Stop, Verb::Stop, Entity::Stat, ParseStop},
    {Word::Goback, Verb::Goback, Entity::Stat, ParseGoback},
    {Word::Use, Verb::Use, Entity::Stat, ParseUse},
});

}  // namespace

std::span<const VerbSpec> ControlVerbs() {
  return kControlVerbs;
}

}  // namespace qmrules::workbench::codemodel::cobol
