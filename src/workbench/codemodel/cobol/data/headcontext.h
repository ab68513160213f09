#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/codemodel/cobol/data/programscope.h"
#include "workbench/codemodel/cobol/reading/tokencursor.h"

namespace qmrules::workbench::codemodel::cobol {

// A file that FILE-CONTROL selects, until its FD is met.
struct Selection {
  NodeId select = 0;  // REF of SELECT
  NodeId file = 0;    // FILE of its FD
  TextId assign = 0, organization = 0, access = 0;
};

// An occurrence of a name in a clause that waits for the end of the data division, since what it names can stand
// behind it.
struct PendingName {
  enum class Kind : std::uint8_t {
    Data,     // any item
    Within,   // an item below `owner`, or else any: keys of a table
    OfFile,   // an item of the records of a selected file, or else any: keys
    File,     // a file or report
    Program,  // a program, type or class: tied to nothing
  };
  // What is entered besides the node's declaration.
  enum class Patch : std::uint8_t { None, DependingOn, FileStatus, FileKey };
  Kind kind = Kind::Data;
  Patch patch = Patch::None;
  NodeId node = 0;
  NodeId owner = 0;             // of Within and DependingOn: DECL
  std::uint32_t selection = 0;  // of OfFile, FileStatus and FileKey: index in HeadContext::selections
  std::uint32_t token = 0;
  std::uint32_t name = 0;
  std::uint32_t firstQualifier = 0, qualifiers = 0;
};

// What the parsers of the divisions before the procedure division share: the place where they read, what they build,
// and the operands that all clauses have in common.
class HeadContext {
 public:
  HeadContext(TokenCursor& cursorToUse, ModelBuilder& modelToFill, ProgramScope& scopeToFill, SymbolTable& symbolTable)
      : cursor(cursorToUse), model(modelToFill), scope(scopeToFill), symbols(symbolTable) {}

  TokenCursor& cursor;
  ModelBuilder& model;
  ProgramScope& scope;
  SymbolTable& symbols;
  std::uint16_t defaultSign = 0;  // kSignSeparate and kSignLeading, of SPECIAL-NAMES
  std::vector<Selection> selections;
  std::unordered_map<std::uint32_t, std::uint32_t> selectionOf;  // by the file's symbol

  // A word that the programmer can have chosen.
  bool AtName(std::uint32_t ahead = 0) const;
  // The same or a register's.
  bool AtDataName() const;
  bool AtLiteral() const;
  // A word that the table of words does not have.
  bool AtText(std::string_view word, std::uint32_t ahead = 0) const;
  bool AcceptText(std::string_view word) { return AtText(word) && (cursor.Next(), true); }
  // Passes over words that have no meaning here.
  void PassOver(std::initializer_list<Word> words);

  TextId NameText(std::uint32_t token);
  // The texts of a run of tokens, parted by a blank.
  std::string Joined(std::uint32_t first, std::uint32_t behind) const;

  // An identifier (with qualifiers, subscripts and reference modification): a VAR, tied at the end. 0 when there is
  // none.
  NodeId ReadVariable(Role role, VarUsage usage);
  // The same; `pending` tells how it is tied.
  NodeId ReadVariable(Role role, VarUsage usage, PendingName pending);
  // Any number of them; how many.
  int ReadVariables(Role role, VarUsage usage);
  // A name with its qualifiers, which the caller ties at once: a REF.
  struct QualifiedName {
    NodeId node = 0;
    std::uint32_t token = 0;
    std::uint32_t name = 0;
    std::vector<std::uint32_t> qualifiers;
  };
  QualifiedName ReadName(Role role);
  void TieName(const QualifiedName& name, NodeId declaration);
  // One name or literal: a REF. A file's is tied at the end.
  NodeId ReadReference(Role role, PendingName::Kind kind);
  int ReadReferences(Role role, PendingName::Kind kind);
  // A literal, signed or not, with ALL, or a figurative constant: a CONST.
  NodeId ReadLiteral(Role role);
  // Variable or literal.
  bool ReadOperand(Role role);

  void Report(std::string text) { model.Report(Severity::Gap, cursor.Index(), std::move(text)); }
  // Ties all that waits.
  void TiePending();

 private:
  void ReadQualifiers(PendingName& pending);
  void ReadSubscripts();
  void Tie(const PendingName& pending);
  void TieQualifiers(NodeId node, NodeId declaration);
  void Enter(const PendingName& pending, NodeId declaration);
  Resolution Look(const PendingName& pending) const;
  std::string Spelled(const PendingName& pending) const;

  std::vector<PendingName> pending_;
  std::vector<std::uint32_t> qualifiers_;
};

}  // namespace qmrules::workbench::codemodel::cobol
