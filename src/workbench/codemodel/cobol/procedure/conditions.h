#pragma once

#include <string>
#include <string_view>

#include "workbench/codemodel/cobol/procedure/operands.h"

namespace qmrules::workbench::codemodel::cobol {

// Reads conditions: the operands become nodes below the open node, the text is written down normalised.
//
//   IF  a IS GREATER THAN b  AND  (NOT c)     "a > b AND (NOT c)"
//
// One blank between words, relations as symbols (NOT before them stays), no words without meaning, parentheses tight.
class Conditions {
 public:
  Conditions(TokenCursor& cursor, ModelBuilder& model, ProgramScope*& scope, Operands& operands)
      : cursor_(cursor), model_(model), scope_(scope), operands_(operands) {}

  struct Shape {
    bool isEmpty = true;
    bool isCondition = false;  // has a relation, a test, NOT, AND or OR: more than an expression
    bool isCompound = false;   // has AND or OR
    bool isPartial = false;    // begins with a relation: "> 5"
  };
  // Reads a condition or an expression up to what cannot go on with it, and writes its text behind what stands in
  // `text`. Operands get the role. `partial`: it may begin with a relation.
  Shape Read(Role role, std::string& text, bool partial = false);

 private:
  bool OperandHere(Role role);
  bool Wanted(Role role, bool partial, bool atStart);
  bool Continued();
  bool ParenthesisHere();
  bool Relation();
  std::string_view RelationSymbol();
  std::string_view OrEqual(std::string_view orEqual, std::string_view alone);
  bool Test(bool negated);
  void Put(std::string_view word, bool tight = false);
  void PutOperand(std::uint32_t first);

  TokenCursor& cursor_;
  ModelBuilder& model_;
  ProgramScope*& scope_;
  Operands& operands_;
  // Of the condition that is being read; they do not nest.
  std::string* text_ = nullptr;
  Shape shape_;
  std::uint32_t depth_ = 0;
  bool wanted_ = true;         // an operand must come
  bool afterLogical_ = false;  // AND, OR or NOT stands before: a relation may come in the operand's place
  bool tight_ = true;
};

}  // namespace qmrules::workbench::codemodel::cobol
