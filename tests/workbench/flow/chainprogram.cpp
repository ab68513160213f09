#include "workbench/flow/chainprogram.h"

#include <utility>

namespace qmrules::test {

using workbench::codemodel::Entity;
using workbench::flow::ByteInterval;
using workbench::flow::ByteSet;
using workbench::flow::ChainLink;
using workbench::flow::LinkReason;
using workbench::flow::NodeId;
using workbench::flow::ProgramFlow;

ChainProgram::ChainProgram(FlowProgram program)
    : program_(std::move(program)), flow_(std::make_unique<ProgramFlow>(program_.Image(), program_.Unit())) {}

ChainProgram::ChainProgram(std::string_view workingStorage, std::string_view procedures)
    : ChainProgram(FlowProgram::Of(workingStorage, procedures)) {}

ChainProgram::ChainProgram(std::string_view annotated) : ChainProgram(FlowProgram(annotated)) {}

std::string ChainProgram::Name(NodeId node) const {
  return std::string(program_.Model().Text(program_.Model().Nodes()[node].name));
}

std::string ChainProgram::Row(NodeId statement, NodeId operand) const {
  const auto nodes = program_.Model().Nodes();
  const bool atStart = statement == 0 || nodes[statement].entity == Entity::Division;
  return std::to_string(nodes[atStart ? operand : statement].firstRow);
}

std::string ChainProgram::Bytes(const ByteSet& bytes) {
  std::string text;
  for (const ByteInterval& interval : bytes.Intervals()) {
    text += " " + std::to_string(interval.begin) + "-" + std::to_string(interval.end);
  }
  return text;
}

std::string ChainProgram::Definition(const ChainLink& link) const {
  std::string text = Row(link.definedAt, link.definition) + " " + Name(link.definition) + " ";
  text += NameOf(link.kind);
  if (link.mayDefine) text += " perhaps";
  if (link.reason == LinkReason::Overlap) text += " overlap";
  return text;
}

std::vector<std::string> ChainProgram::Reaching(std::string_view mark) {
  std::vector<std::string> texts;
  for (const ChainLink& link : flow_->DefinitionsReaching(program_.NodeAt(mark)).links) {
    texts.push_back(Definition(link));
  }
  return texts;
}

std::vector<std::string> ChainProgram::ReachingBytes(std::string_view mark) {
  std::vector<std::string> texts;
  for (const ChainLink& link : flow_->DefinitionsReaching(program_.NodeAt(mark)).links) {
    texts.push_back(Definition(link) + Bytes(link.bytes));
  }
  return texts;
}

std::vector<std::string> ChainProgram::AtEnd(std::string_view name) {
  const NodeId item = program_.Cobol().Find(Entity::Decl, name);
  const auto& decl = program_.Model().Decl(item);
  std::vector<std::string> texts;
  for (const ChainLink& link :
       flow_->DefinitionsAtEnd(decl.area, ByteSet({decl.offset, decl.offset + decl.size})).links) {
    texts.push_back(Definition(link) + Bytes(link.bytes));
  }
  return texts;
}

std::vector<std::string> ChainProgram::Uses(std::string_view mark) {
  std::vector<std::string> texts;
  ByteSet atEnd;
  for (const ChainLink& link : flow_->UsesReached(program_.NodeAt(mark), ByteSet::All(), &atEnd).links) {
    texts.push_back(Row(link.usedAt, link.use) + " " + Name(link.use));
  }
  if (!atEnd.Empty()) texts.push_back("end" + Bytes(atEnd));
  return texts;
}

std::vector<std::string> ChainProgram::Gaps(std::string_view mark) {
  std::vector<std::string> texts;
  for (const auto& gap : flow_->DefinitionsReaching(program_.NodeAt(mark)).gaps) {
    texts.push_back(std::to_string(program_.Model().Nodes()[gap.node].firstRow) + " " + gap.text);
  }
  return texts;
}

std::vector<std::string> ChainProgram::Feeds(std::string_view mark) {
  std::vector<std::string> names;
  for (const auto& effect : flow_->FeedsOf(program_.NodeAt(mark))) names.push_back(Name(effect.operand));
  return names;
}

std::vector<std::string> ChainProgram::Fed(std::string_view mark) {
  std::vector<std::string> names;
  for (const auto& effect : flow_->FedBy(program_.NodeAt(mark))) names.push_back(Name(effect.operand));
  return names;
}

}  // namespace qmrules::test
