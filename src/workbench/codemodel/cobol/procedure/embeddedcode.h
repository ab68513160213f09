#pragma once

#include <string>
#include <string_view>

#include "workbench/codemodel/cobol/procedure/statementparser.h"

// EXEC … END-EXEC: code in another language than COBOL's own. Its words are none of COBOL's, so a routine here walks
// over the block's tokens and takes out what the program has to do with it: its variables, the programs, files and
// labels named. Nothing else in a block is a fault.
namespace qmrules::workbench::codemodel::cobol {

// Each is called with the cursor behind EXEC CICS and its like, and reads up to the token `end`.
void ParseCics(StatementParser& parser, NodeId node, std::uint32_t end);
void ParseSql(StatementParser& parser, NodeId node, std::uint32_t end);
void ParseDli(StatementParser& parser, NodeId node, std::uint32_t end);

// Where the block ends whose EXEC is at `exec`: at its END-EXEC, or, where that is missing, before what cannot belong
// to it: a full stop, another EXEC, a statement on a line of its own.
struct EmbeddedEnd {
  std::uint32_t token = 0;
  bool closed = false;
};
EmbeddedEnd EndOfEmbedded(const ExpandedText& text, std::uint32_t exec);

// The statement's name, "EXEC CICS READ": its language and the words of its command.
void NameEmbedded(StatementParser& parser, NodeId node, std::string_view language, std::string_view command);
// The word at the cursor or `ahead` of it, in upper case; "" for what is no word or lies behind `end`.
std::string_view WordBefore(StatementParser& parser, std::uint32_t end, std::uint32_t ahead = 0);
// A REF of the name, in place of the tokens given.
NodeId NamedReference(StatementParser& parser, std::uint32_t first, std::uint32_t last, std::string_view name,
                      Role role);

// The value of an option, in parentheses, with the cursor behind "(": passes over ")".
void OptionValue(StatementParser& parser, std::uint32_t end, Role role, VarUsage usage);
// The same where it names a file, a queue or something like that: a literal is a REF.
void OptionName(StatementParser& parser, std::uint32_t end, Role role);
// Passes over what is left of a value up to its ")".
void LeaveParentheses(StatementParser& parser, std::uint32_t end);

}  // namespace qmrules::workbench::codemodel::cobol
