#pragma once

#include <string_view>

#include "workbench/codemodel/cobol/procedure/procedurelabels.h"
#include "workbench/codemodel/cobol/procedure/statementparser.h"

namespace qmrules::workbench::codemodel::cobol {

// Parses a procedure division from its header (which may be missing) to the next program, END PROGRAM or the end: its
// entry, declaratives, sections and paragraphs. Ties procedure names to their paragraphs and tells the direction of the
// parameters.
class ProcedureDivision {
 public:
  // `programName` is what the first paragraph is called when the text names none.
  ProcedureDivision(StatementParser& parser, std::string_view programName);

  // The node DIVISION.
  NodeId Parse();

 private:
  void Header();
  void Body();
  bool AtSectionOrParagraph() const;
  bool HasHeaderWithoutStop() const;
  void SectionOrParagraph();
  void OpenLabel(Entity entity, NodeId& open);
  void OpenImplicitParagraph();
  void CloseParagraph();
  void CloseSection();
  void LeaveDeclaratives();
  void End(NodeId division);

  StatementParser& parser_;
  TokenCursor& cursor_;
  ModelBuilder& model_;
  std::string_view programName_;
  ProcedureLabels labels_;
  NodeId section_ = 0, paragraph_ = 0;
  NodeId entry_ = 0;  // nodes from here on are not of the declaratives
};

}  // namespace qmrules::workbench::codemodel::cobol
