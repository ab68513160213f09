#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/annotatedsource.h"
#include "workbench/codemodel/records.h"

namespace qmrules::test {

// The model of a COBOL program in fixed form whose text may have marks, in a form that tests can compare.
//
//   CobolModel model(R"(
//          IDENTIFICATION DIVISION.
//          …
//          MOVE $from[[A]] TO $to[[B]].)");
class CobolModel {
 public:
  // The first program of the text, which begins with a line end that is passed over.
  explicit CobolModel(std::string_view annotated);
  // A program with these entries in its WORKING-STORAGE and this procedure division (its header excepted), every line
  // indented by 7 columns.
  static CobolModel Of(std::string_view workingStorage, std::string_view procedures);

  // The object with just this place, or (for a point) the outermost one that begins there: its entity, name, usage and
  // role, and the row of its declaration: "VAR A OUT Source 5".
  std::string At(std::string_view mark) const;
  // The object itself; 0 for none.
  workbench::codemodel::NodeId NodeAt(std::string_view mark) const;
  // The procedure division (or all that lies below the node) as indented lines:
  //   PAR MAIN
  //     IF IF
  //       COND A = 1
  //         VAR A OUT Source
  std::string Tree(workbench::codemodel::NodeId node = 0) const;
  // The same, of sections, paragraphs, statements and branches alone.
  std::string Outline() const;
  // "12 MOVE" for each statement, with its row.
  std::vector<std::string> Statements() const;
  // The texts of the COND objects in their order.
  std::vector<std::string> Conditions() const;
  // "gap 12:5 X is not declared." for each.
  std::vector<std::string> Diagnostics() const;
  // The first node of the kind and name; 0 for none.
  workbench::codemodel::NodeId Find(workbench::codemodel::Entity entity, std::string_view name) const;

  const workbench::codemodel::ModelData& Data() const { return data_; }
  const workbench::codemodel::NodeRecord& Node(workbench::codemodel::NodeId node) const { return data_.nodes[node]; }
  const std::string& Text(workbench::codemodel::TextId text) const { return data_.texts[text]; }

 private:
  std::string LineOf(const workbench::codemodel::NodeRecord& node) const;
  std::string Lines(workbench::codemodel::NodeId node, bool outline) const;
  workbench::codemodel::NodeId Division() const;

  AnnotatedSource source_;
  workbench::codemodel::ModelData data_;
};

}  // namespace qmrules::test
