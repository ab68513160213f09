#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/cobol/procedure/conditions.h"
#include "workbench/codemodel/cobol/procedure/operands.h"
#include "workbench/codemodel/cobol/procedure/phrases.h"
#include "workbench/codemodel/cobol/procedure/programports.h"
#include "workbench/codemodel/cobol/procedure/sqlcursors.h"
#include "workbench/codemodel/cobol/procedure/verbs.h"

namespace qmrules::workbench::codemodel::cobol {

class StatementParser;

// How a verb's statements are parsed. The routine is called with the statement's node open and the verb consumed; it
// reads the operands and phrases that belong to the statement itself, up to the phrases below. It need not close the
// node. To add a statement: its Verb, its spec in one of the tables of statementfamilies.h, its routine.
struct VerbSpec {
  Word word = Word::None;
  Verb verb = Verb::None;
  Entity entity = Entity::Stat;
  void (*parse)(StatementParser& parser, NodeId node) = nullptr;
  Word scopeEnd = Word::None;  // END-READ …
  // AT END, INVALID KEY, ON SIZE ERROR, ON OVERFLOW, ON EXCEPTION, AT END-OF-PAGE may follow and become an IF behind
  // it.
  bool hasPhrases = false;
};

// Parses the statements of a procedure division. Errors cost one statement: what does not fit is reported as a gap and
// passed over up to the next verb, end of scope, phrase or full stop; a paragraph's header is known by its place (area
// A in fixed form, the beginning of a sentence in free form) whatever stands before it.
//
// Statements nest by recursion, kMostDepth deep. What is nested deeper stands side by side in the model, with one gap.
class StatementParser {
 public:
  static constexpr int kMostDepth = 500;

  StatementParser(TokenCursor& cursor, ModelBuilder& model, ProgramScope*& scope, SymbolTable& symbols);

  TokenCursor& Cursor() { return cursor_; }
  ModelBuilder& Model() { return model_; }
  ProgramScope& Scope() { return *scope_; }
  SymbolTable& Symbols() { return symbols_; }
  Operands& Operand() { return operands_; }
  Conditions& ConditionReader() { return conditions_; }
  // Entries and exits: for PROCEDURE DIVISION, ENTRY, GOBACK and its like.
  ProgramPorts& Ports() { return ports_; }
  SqlCursors& Cursors() { return sqlCursors_; }

  // A condition up to what cannot go on with it: the node COND with its operands, and its normalised text.
  NodeId Condition();
  // A COND whose text is given: "AT END". Covers the tokens from `first` to the one before the cursor.
  NodeId PlainCondition(std::uint32_t first, std::string_view text);
  // Statements up to something that ends them (ELSE, WHEN, a phrase, an end of scope, a full stop), in a BLOCK.
  NodeId Block(Role role);
  // The same where a branch of the open IF, EVALUATE or SEARCH follows that begins with this word, ELSE or WHEN: the
  // statements end there, too.
  NodeId BlockBefore(Word branch, Role role);
  // Statements without a BLOCK around them.
  void Statements();
  // Statements up to their full stop, which is consumed, or to what ends the paragraph.
  void Sentence();
  // Gives the statement another verb than that of its spec: EXIT PROGRAM.
  void SetVerb(NodeId node, Verb verb);
  // Ends a statement's own part before its phrases or at its end: closes its node with the last token consumed.
  void Close(NodeId node);
  // Reports what stands at the cursor as a gap of the open statement and passes over it up to where parsing can go on.
  void Skip(std::string text);
  // True where a statement's own operands end: a verb, a phrase, ELSE, WHEN, an end of scope, a full stop, the end.
  bool AtStatementEnd() const;
  bool AtPhrase() const { return PhraseHere().kind != PhraseKind::None; }
  // True where the procedure division ends: END PROGRAM, the next program's header, the end of the text.
  bool AtDivisionEnd() const;
  // True for a verb that begins a statement here.
  bool AtVerb() const { return SpecHere() != nullptr; }
  // False once too many nodes have been made that stand in no text of their own: bounds what a hostile text can blow
  // up.
  bool TakeImplicit();
  // True in a sentence that is nested too deeply, where ends of scopes are found by nobody.
  bool IsFlattened() const { return flattened_; }

 private:
  const VerbSpec* SpecHere() const;
  Phrase PhraseHere() const;
  void Statement(const VerbSpec& spec);
  void OwnPart(const VerbSpec& spec, NodeId node);
  void PhrasesOf(const VerbSpec& spec);
  void PhraseBranches(Phrase phrase);
  void UnknownStatement();
  std::optional<bool> EndsWithoutWord() const;
  bool EndsStatements() const;
  void Stray();
  void EndSentence(NodeId before);

  TokenCursor& cursor_;
  ModelBuilder& model_;
  ProgramScope*& scope_;
  SymbolTable& symbols_;
  Operands operands_;
  Conditions conditions_;
  ProgramPorts ports_;
  SqlCursors sqlCursors_;
  std::string conditionText_;
  // How many open statements wait for the word: END-IF and its like, ELSE, WHEN.
  std::vector<std::uint32_t> awaited_;
  std::array<std::uint32_t, kPhraseKinds> awaitedPhrases_{};
  std::vector<TextId> verbNames_;  // by Verb; 0 for not yet
  std::uint64_t implicitLeft_;
  int depth_ = 0;
  bool flattened_ = false;  // the sentence is nested too deeply
  bool toldFlattened_ = false;
};

}  // namespace qmrules::workbench::codemodel::cobol
