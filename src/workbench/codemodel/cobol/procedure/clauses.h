#pragma once

#include <string>
#include <string_view>

#include "workbench/codemodel/cobol/procedure/statementparser.h"

// Clauses that statements of several families have, and what else their routines share.
namespace qmrules::workbench::codemodel::cobol {

// True for the word at the cursor (or `ahead` tokens behind it) when it is spelled so, in upper case: for words that
// are none of the language's own outside one clause.
bool AtSpelled(StatementParser& parser, std::string_view word, std::uint32_t ahead = 0);
bool AcceptSpelled(StatementParser& parser, std::string_view word);

// Reports that the statement lacks something, unless it is there; the answer is `present`.
bool Need(StatementParser& parser, bool present, std::string_view what);

// An operand, or a REF for a word that is none: a mnemonic name, a device.
NodeId OperandOrWord(StatementParser& parser, Role role);

// What an operand is, told only by the words behind it: sets role and usage of a node that was made.
void Turn(StatementParser& parser, NodeId node, Role role, VarUsage usage);
// The same for all children of the open node from `first` on.
void TurnFrom(StatementParser& parser, NodeId first, Role role, VarUsage usage);

// What a literal stands for, without its quotes.
std::string LiteralValue(std::string_view text);
// The PORT leads to the program that the literal names.
void SetProgram(StatementParser& parser, NodeId port, std::string_view literal);

// FROM and INTO with their operand, when they are there.
bool FromClause(StatementParser& parser);
bool IntoClause(StatementParser& parser);
// An occurrence of the declaration that the text does not spell out.
void ImplicitVariable(StatementParser& parser, NodeId declaration, Role role, VarUsage usage);
// The first record of the file that the REF means, which an input brings data into.
void ImplicitRecord(StatementParser& parser, NodeId fileReference);
// The file that the record, an occurrence of it, belongs to, where an output names the record only.
void ImplicitFile(StatementParser& parser, NodeId record);
// [BEFORE | AFTER] [ADVANCING] n LINES, PAGE or a mnemonic name.
void AdvancingClause(StatementParser& parser);
// THROUGH or THRU.
bool AcceptThru(StatementParser& parser);
// A procedure name and the one behind THRU.
bool ProcedureRange(StatementParser& parser, Role role);

}  // namespace qmrules::workbench::codemodel::cobol
