#pragma once

#include <vector>

#include "workbench/codemodel/cobol/procedure/verbs.h"
#include "workbench/flow/cobol/effectlist.h"
#include "workbench/flow/cobol/unitfacts.h"

// What COBOL statements do with storage. Most of it follows from how the code model tells the usage and the role of
// each operand; the families below know what else a verb does, and when it leaves an operand as it was.
//
// To add a verb: the routine of its family, its case in StatementEffects.
namespace qmrules::workbench::flow::cobol {

using codemodel::cobol::Verb;

struct Statement {
  const UnitFacts& facts;
  NodeId node = 0;
  Verb verb = Verb::None;
  std::vector<NodeId> operands;  // its children that are operands, in their order

  const codemodel::ModelImage& Model() const { return facts.Model(); }
  const codemodel::NodeRecord& Record(NodeId operand) const { return Model().Nodes()[operand]; }
  bool Has(codemodel::NodeFlags flag) const { return (Record(node).flags & flag) != 0; }
};

// The operands below a statement or condition, without those of the statements and conditions that it holds.
std::vector<NodeId> OperandsBelow(const codemodel::ModelImage& model, NodeId node);

// All that the statement does at the points of its own. A PERFORM's and a SEARCH's counters are apart.
void StatementEffects(const UnitFacts& facts, NodeId statement, EffectList& list);
// What a condition reads.
void ConditionEffects(const UnitFacts& facts, NodeId condition, EffectList& list);

// The families.
void MoveEffects(const Statement& statement, EffectList& list);
void SetEffects(const Statement& statement, EffectList& list);
void InitializeEffects(const Statement& statement, EffectList& list);
void ArithmeticEffects(const Statement& statement, EffectList& list);
void StringEffects(const Statement& statement, EffectList& list);  // STRING
void UnstringEffects(const Statement& statement, EffectList& list);
void InspectEffects(const Statement& statement, EffectList& list);  // EXAMINE and TRANSFORM as well
void ReadEffects(const Statement& statement, EffectList& list);     // RETURN as well
void WriteEffects(const Statement& statement, EffectList& list);    // REWRITE and RELEASE as well
void SortEffects(const Statement& statement, EffectList& list);     // MERGE as well
void FileEffects(const Statement& statement, EffectList& list);     // OPEN, CLOSE, START, DELETE
void AcceptEffects(const Statement& statement, EffectList& list);
void DisplayEffects(const Statement& statement, EffectList& list);
void ReportEffects(const Statement& statement, EffectList& list);  // INITIATE, GENERATE, TERMINATE
void CallEffects(const Statement& statement, EffectList& list);    // INVOKE as well
void EntryStatementEffects(const Statement& statement, EffectList& list);
void LeaveEffects(const Statement& statement, EffectList& list);  // GOBACK and the like
void SqlEffects(const Statement& statement, EffectList& list);
void CicsEffects(const Statement& statement, EffectList& list);
void MarkupEffects(const Statement& statement, EffectList& list);  // XML, JSON
void SearchEffects(const Statement& statement, bool hasStep, EffectList& list);

// The counter of a PERFORM VARYING gets its first value, or the next one.
void BeginEffects(const UnitFacts& facts, NodeId counter, EffectList& list);
void StepEffects(const UnitFacts& facts, NodeId counter, EffectList& list);

// Every operand by its usage alone; what is defined is defined so.
void PlainEffects(const Statement& statement, Definition definition, EffectList& list);

// Does the usage read, or define?
bool Reads(codemodel::VarUsage usage);
bool Defines(codemodel::VarUsage usage);
// True where the bytes of the sending operand go into the receiving one as they are, from its beginning.
bool BytesPass(const codemodel::ModelImage& model, NodeId source, NodeId target);
// What a value that is moved from these operands is.
DefinitionKind KindOfMove(const codemodel::ModelImage& model, const std::vector<NodeId>& sources);

}  // namespace qmrules::workbench::flow::cobol
