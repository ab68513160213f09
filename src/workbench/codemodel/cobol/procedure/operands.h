#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/cobol/data/programscope.h"
#include "workbench/codemodel/cobol/reading/tokencursor.h"

namespace qmrules::workbench::codemodel::cobol {

// Reads the operands of statements and makes their nodes below the innermost open node. Each reading routine consumes
// nothing and gives 0 (or false) when no operand of its kind begins at the cursor; in the middle of one it takes what
// it can and reports the rest as a gap.
//
// A word is an operand when it is a name, or a word of the language that the program declares as data and that is not
// reserved. A name that is declared nowhere becomes a VAR without declaration, with a gap "… is not declared."; one
// that several items answer to likewise, with "… is ambiguous; qualify it.".
class Operands {
 public:
  Operands(TokenCursor& cursor, ModelBuilder& model, ProgramScope*& scope, SymbolTable& symbols);

  // identifier [OF …] [(subscripts)] [(from:length)]; also a register, LENGTH OF and ADDRESS OF. Subscripts and the
  // parts of a reference modification are read (Out), whatever the usage of the variable itself. LENGTH OF gives a VAR
  // (or CONST) with the role LengthOf; ADDRESS OF one with AddressOf, which keeps the usage where data comes in.
  NodeId Variable(Role role, VarUsage usage);
  // A variable, literal, figurative constant, ALL literal or function.
  NodeId Operand(Role role, VarUsage usage = VarUsage::Out);
  // Operands while there are any; how many.
  int Variables(Role role, VarUsage usage);
  int OperandList(Role role, VarUsage usage = VarUsage::Out);
  // An arithmetic expression: all its operands with this role, read. Stops at what cannot go on with it.
  bool Expression(Role role);
  // A host variable of an embedded language, behind its colon: name, or group.name.
  NodeId HostVariable(Role role, VarUsage usage);
  // A literal, signed or not, or a figurative constant; DFHRESP (…) and DFHVALUE (…) are such.
  NodeId Literal(Role role);
  // File, procedure name (with OF section), or any other name: a REF. A procedure name is tied to its paragraph at the
  // end of the program.
  NodeId FileName(Role role);
  NodeId ProcedureName(Role role);
  NodeId OtherName(Role role);

  // True when an operand can begin here.
  bool AtVariable() const;
  bool AtOperand() const;
  bool AtProcedureName() const;
  // True where a section or paragraph begins in the middle of a sentence, so that the full stop before it is missing:
  // a name in area A that no data item has, with a full stop or SECTION behind it, or a number that is no operand. In
  // free form, where every row begins so, it must not stand where an operand is expected.
  bool AtHeader() const;

  // Procedure names that wait for their paragraphs.
  struct PendingLabel {
    NodeId node = 0;
    std::uint32_t name = 0;
    std::uint32_t section = SymbolTable::kNone;
    std::uint32_t token = 0;
  };
  std::vector<PendingLabel>& Pending() { return pending_; }

 private:
  NodeId Identifier(std::uint32_t first, Role role, VarUsage usage);
  NodeId Function(Role role);
  NodeId FixedConstant(Role role);
  bool IsExpected() const;
  void Qualifiers();
  // A REF for each qualifier, below the open VAR.
  void QualifierNodes(std::uint32_t first, NodeId declaration);
  void HostQualifiers(std::uint32_t first, NodeId declaration);
  // What the name and qualifiers_ mean; a gap where that is not known.
  struct Meaning {
    NodeId declaration = 0;
    bool isRegister = false;
    Entity entity = Entity::Var;
  };
  Meaning MeaningOf(std::uint32_t name, std::uint32_t token);
  NodeId Special(std::uint32_t name, Meaning& meaning) const;
  void Unresolved(std::uint32_t name, std::uint32_t token, std::string_view text);
  // Subscripts, arguments or a reference modification, from "(" to ")", below the open node.
  void Parenthesised(NodeId owner, Role role);
  void InParentheses(NodeId owner, Role& role, NodeId before);
  void PassParentheses();
  bool AtFigurative() const;
  NodeId Constant(std::uint32_t first, Role role, TextId name);
  TextId TextFrom(std::uint32_t first);

  TokenCursor& cursor_;
  ModelBuilder& model_;
  ProgramScope*& scope_;
  SymbolTable& symbols_;
  std::vector<PendingLabel> pending_;
  std::vector<std::uint32_t> qualifiers_;
  std::string scratch_;
  std::uint32_t dfhresp_, dfhvalue_;
  int nesting_ = 0;
};

}  // namespace qmrules::workbench::codemodel::cobol
