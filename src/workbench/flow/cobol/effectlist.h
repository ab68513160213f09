#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "workbench/flow/cobol/operandplace.h"
#include "workbench/flow/effects.h"

namespace qmrules::workbench::flow::cobol {

// Which part of a statement's effects a point has. A statement behind which a phrase asks whether it failed has two
// points: it is tried at the first, and has succeeded at the second, its Completed point.
enum class Phase : std::uint8_t { Whole, Attempt, Success };

// When a statement defines an operand.
enum class Certainty : std::uint8_t {
  Always,     // whatever comes of the statement
  OnSuccess,  // unless it fails, which it cannot do without a phrase that asks for it, or the program ends
  IfGood,     // unless it fails, and the program can go on without asking
  Perhaps,    // even when it succeeds not for sure, or not all of it
};

// Which operands a point is about, of a statement that has several points in a row (statementparts.h).
struct OperandsOfPoint {
  NodeId statement = 0;
  std::vector<NodeId> operands;  // the statement's; empty for all
  bool isFirst = true;           // has what the text does not name as well
  bool readsOnSuccess = false;   // they are not looked at before the statement has succeeded

  // What lies below an operand belongs to it.
  bool Has(const codemodel::ModelImage& model, NodeId operand) const;
};

struct Definition {
  DefinitionKind kind = DefinitionKind::Move;
  Certainty certainty = Certainty::Always;
  std::uint16_t feed = 0;
  bool copies = false;
  bool spoils = false;  // one that is certain on success can also have happened when the statement fails
};

// Collects the effects of one point. Everything that the statement does is told to it, and it leaves out what belongs
// to the statement's other point.
class EffectList {
 public:
  EffectList(const OperandPlaces& places, Phase phase, Effects& effects, OperandsOfPoint operands = {})
      : places_(places), phase_(phase), effects_(effects), operands_(std::move(operands)) {}

  const codemodel::ModelImage& Model() const { return places_.Model(); }
  const OperandPlaces& Places() const { return places_; }
  // A VAR, or the arguments of a FUNC; nothing for others. Subscripts are apart: they feed nothing.
  void Use(NodeId operand, std::uint16_t feed);
  void Define(NodeId var, Definition definition);
  // Effects on what the text of the statement does not name; the operand is the statement, or the DECL at an entry.
  void UsePlace(const OperandPlace& place, NodeId operand, std::uint16_t feed = kNoFeed);
  void DefinePlace(const OperandPlace& place, NodeId operand, Definition definition);
  void UseItem(NodeId item, NodeId operand) { UsePlace(places_.OfItem(item), operand); }
  // Nothing for item 0.
  void DefineItem(NodeId item, NodeId operand, Definition definition);
  // The variables in subscripts and reference modifications of the operand and of what lies below it.
  void Subscripts(NodeId operand);
  void Gap(EffectGapKind kind, NodeId node);

 private:
  bool Reads() const;
  void Put(Effect effect, const OperandPlace& place);

  const OperandPlaces& places_;
  Phase phase_;
  Effects& effects_;
  OperandsOfPoint operands_;
};

}  // namespace qmrules::workbench::flow::cobol
