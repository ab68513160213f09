#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "workbench/codemodel/modelfile.h"
#include "workbench/flow/effects.h"
#include "workbench/flow/flowgraph.h"

namespace qmrules::workbench::flow {

// A place of storage that a call hands over, or takes in, by position.
struct Argument {
  NodeId operand = 0;      // VAR, CONST; 0 for OMITTED
  StoragePlace place;      // of a VAR
  bool canChange = false;  // BY REFERENCE
};

// A statement that leads to another program.
struct ProgramCall {
  NodeId statement = 0;   // PORT, or a statement that leads out of the language: SQL CALL
  NodeId program = 0;     // CONST or VAR that names the program; 0 when the statement names none
  bool returns = true;    // false for XCTL
  bool commarea = false;  // the first argument is the communication area of a transaction monitor
  bool mayFail = false;   // and the program that calls goes on although the other one has not run
  std::vector<Argument> arguments;
};

// What one unit does with storage. Keeps what it has looked up about the unit; the model and the graph have to outlive
// it.
class UnitEffects {
 public:
  virtual ~UnitEffects() = default;
  // What the point does with storage. Costs no more than the statement's own operands, except for Entry, which has
  // every parameter and every area of the unit.
  virtual Effects EffectsAt(PointId point) const = 0;
  // Those of Entry on one area (DeclRecord::area), for a demand-driven question.
  virtual Effects EntryEffects(NodeId area) const = 0;
  // The points that can have effects on the area, ascending: a superset, without Entry.
  virtual std::vector<PointId> PointsOn(NodeId area) const = 0;
  // The points whose effects can have this operand (Effect::operand), ascending: of a VAR those of its statement or
  // condition, of a counter of PERFORM VARYING its Begin and Step, of a DECL the Entry.
  virtual std::vector<PointId> PointsOf(NodeId operand) const = 0;
  virtual std::vector<ProgramCall> Calls() const = 0;
  // What the unit takes in, by position: its USING, or the communication area.
  virtual std::vector<Argument> Parameters() const = 0;
  // The same where callers come in at another place: a PORT of the unit that is an entry.
  virtual std::vector<Argument> ParametersAt(NodeId entry) const = 0;
};

// What the dataflow asks of a language, over its code models.
class FlowLanguage {
 public:
  virtual ~FlowLanguage() = default;
  // The flow of one unit (its index in ModelImage::Units), without the units nested in it. A unit without a procedure
  // division gets an Entry and a Leave.
  virtual FlowGraph BuildFlow(const codemodel::ModelImage& model, std::uint32_t unit) const = 0;
  // The effects of the unit whose flow this is. Made in time linear in the unit.
  virtual std::unique_ptr<UnitEffects> EffectsOf(const codemodel::ModelImage& model, std::uint32_t unit,
                                                 const FlowGraph& flow) const = 0;
};

// The language of the model; nullptr where there is none for it.
const FlowLanguage* FlowLanguageOf(const codemodel::ModelImage& model);

}  // namespace qmrules::workbench::flow
