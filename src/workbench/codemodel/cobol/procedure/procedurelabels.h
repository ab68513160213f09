#pragma once

#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "workbench/codemodel/cobol/procedure/operands.h"

namespace qmrules::workbench::codemodel::cobol {

// The sections and paragraphs of one procedure division, and what procedure names mean. A name without a section means
// the paragraph of the section that it stands in; only when there is none, that of the whole division.
class ProcedureLabels {
 public:
  ProcedureLabels(ModelBuilder& model, const SymbolTable& symbols) : model_(model), symbols_(symbols) {}

  // `section` is the SECTION around a paragraph, 0 for none.
  void Add(std::uint32_t symbol, NodeId node, NodeId section);
  // Ties the references, and the GOTO or PERFORM that they belong to, to what they mean. What means nothing, or several
  // things, is a gap.
  void Resolve(std::span<const Operands::PendingLabel> pending);

 private:
  struct Label {
    NodeId node = 0;
    NodeId section = 0;
    std::uint32_t next = 0;  // index + 1 of the label before it of the same name
  };
  struct Answer {
    NodeId node = 0;
    bool several = false;
  };
  Answer Find(const Operands::PendingLabel& pending) const;
  bool IsSectionNamed(NodeId section, std::uint32_t symbol) const;
  NodeId SectionAround(NodeId node) const;
  void Tie(const Operands::PendingLabel& pending, NodeId label);
  void Miss(const Operands::PendingLabel& pending, bool several);

  ModelBuilder& model_;
  const SymbolTable& symbols_;
  std::vector<Label> labels_;
  std::unordered_map<std::uint32_t, std::uint32_t> latest_;  // by symbol: index + 1 in labels_
  std::unordered_map<NodeId, std::uint32_t> sectionNames_;
};

}  // namespace qmrules::workbench::codemodel::cobol
