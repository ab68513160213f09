#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/records.h"

namespace qmrules::test {

// A program around some statements, in which each operand is marked with what the model should say of it: its role
// ("Procedure" for where control goes), for a VAR how data passes, and its flags.
//
//   MOVE $SourceOut[[A]] TO $TargetIn[[B ($Subscript[[1]])]]
//
// The statements are written from column 1; they stand in the paragraph MAIN, in wide fixed form.
class MarkedStatements {
 public:
  // `divisions` is what comes before the procedure division, in fixed form.
  MarkedStatements(std::string_view divisions, std::string_view statements);

  // The statements with the marks that the model gives, and with those of the test: they should be equal.
  const std::string& Modelled() const { return modelled_; }
  const std::string& Expected() const { return expected_; }
  // "row:column text" of each diagnostic, rows and columns counted in the statements.
  const std::vector<std::string>& Diagnostics() const { return diagnostics_; }
  // "IOSTAT READ" for each statement.
  const std::vector<std::string>& Statements() const { return statements_; }
  // "Record REC IN" for each operand that stands in no text.
  const std::vector<std::string>& Implicit() const { return implicit_; }
  // Names of variables that are tied to no declaration, or to one of another name.
  const std::vector<std::string>& Untied() const { return untied_; }
  const workbench::codemodel::ModelData& Model() const { return model_; }
  // The nodes of the kind in the procedure division, in their order.
  std::vector<workbench::codemodel::NodeRecord> Nodes(workbench::codemodel::Entity entity) const;
  const std::string& Text(workbench::codemodel::TextId text) const { return model_.texts[text]; }

 private:
  void Read(const std::string& text, std::size_t statements);

  workbench::codemodel::ModelData model_;
  std::string modelled_, expected_;
  std::vector<std::string> diagnostics_, statements_, implicit_, untied_;
};

// Expects the statements to be modelled as they are marked, without a diagnostic, every variable tied to its
// declaration.
MarkedStatements ExpectMarked(std::string_view divisions, std::string_view statements);

}  // namespace qmrules::test
