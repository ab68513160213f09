#include <algorithm>
#include <string_view>

#include "workbench/flow/cobol/statementeffects.h"

// ACCEPT, DISPLAY and the statements on reports: what goes over screens and paper.
namespace qmrules::workbench::flow::cobol {

using codemodel::DataSectionKind;
using codemodel::Entity;
using codemodel::ModelImage;
using codemodel::NodeRecord;
using codemodel::Role;

namespace {

bool IsScreen(const ModelImage& model, NodeId operand) {
  const NodeId item = model.Nodes()[operand].declaration;
  return model.Nodes()[operand].entity == Entity::Var && item != 0 && model.Nodes()[item].entity == Entity::Decl &&
         static_cast<DataSectionKind>(model.Decl(item).section) == DataSectionKind::Screen;
}

// The items that the fields of the screen show and take in.
void ScreenEffects(const Statement& statement, NodeId screen, bool accepts, EffectList& list) {
  const ModelImage& model = statement.Model();
  const NodeId item = statement.Record(screen).declaration;
  for (NodeId node = item + 1; node <= model.Nodes()[item].last; ++node) {
    const NodeRecord& record = model.Nodes()[node];
    if (record.entity != Entity::Var) continue;
    if (Reads(record.usage)) list.UsePlace(list.Places().Of(node), statement.node);
    if (!accepts || !Defines(record.usage)) continue;
    list.DefinePlace(list.Places().Of(node), statement.node,
                     {.kind = DefinitionKind::Input, .certainty = Certainty::Perhaps, .feed = kNoFeed});
  }
}

// Some sources always have an answer.
bool AlwaysAnswers(const Statement& statement) {
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    if (node.role != Role::Source || node.entity != Entity::Ref) continue;
    const std::string_view source = statement.Model().Text(node.name);
    constexpr std::string_view kClock[] = {"DATE", "DAY", "DAY-OF-WEEK", "TIME"};
    return std::ranges::find(kClock, source) != std::end(kClock);
  }
  return true;
}

}  // namespace

void AcceptEffects(const Statement& statement, EffectList& list) {
  const Certainty certainty = AlwaysAnswers(statement) ? Certainty::OnSuccess : Certainty::IfGood;
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    if (node.role != Role::Target) {
      list.Use(operand, kNoFeed);
    } else if (IsScreen(statement.Model(), operand)) {
      ScreenEffects(statement, operand, true, list);
    } else {
      list.Define(operand, {.kind = DefinitionKind::Input, .certainty = certainty, .feed = kNoFeed});
    }
  }
  list.DefineItem(statement.facts.Register("COB-CRT-STATUS"), statement.node,
                  {.kind = DefinitionKind::Input, .certainty = Certainty::Perhaps, .feed = kNoFeed});
}

void DisplayEffects(const Statement& statement, EffectList& list) {
  for (const NodeId operand : statement.operands) {
    if (IsScreen(statement.Model(), operand)) {
      ScreenEffects(statement, operand, false, list);
    } else {
      list.Use(operand, kNoFeed);
    }
  }
}

void ReportEffects(const Statement& statement, EffectList& list) {
  for (const NodeId operand : statement.operands) list.Use(operand, kNoFeed);
  // Which lines are printed, headings and footings among them, is decided when the program runs.
  for (const NodeId source : statement.facts.ReportSources()) {
    list.UsePlace(list.Places().Of(source), statement.node);
  }
  for (const std::string_view counter : {"LINE-COUNTER", "PAGE-COUNTER"}) {
    list.DefineItem(statement.facts.Register(counter), statement.node,
                    {.kind = DefinitionKind::Computation, .certainty = Certainty::Perhaps, .feed = kNoFeed});
  }
}

}  // namespace qmrules::workbench::flow::cobol
