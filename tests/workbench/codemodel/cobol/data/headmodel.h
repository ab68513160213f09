#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/cobol/data/datadivision.h"
#include "workbench/codemodel/cobol/data/programscope.h"

namespace qmrules::test {

// What is read of a program before its procedure division, in forms that tests can compare.
class HeadModel {
 public:
  // The text begins with a line end that is passed over.
  explicit HeadModel(std::string_view text);
  ~HeadModel();
  HeadModel(const HeadModel&) = delete;
  HeadModel& operator=(const HeadModel&) = delete;
  // A program with these lines in its WORKING-STORAGE, each indented by 7 columns; the first one is row 5.
  static std::string WorkingStorage(std::string_view lines);

  // A line for each data item, indented by its depth: level, name, offset, "+", size of one occurrence, and "*"
  // occurrences.
  //   01 A 0+10
  //     05 B 0+5*2
  std::string Layout() const;
  // The nodes below the first of this kind, indented: entity, name, usage, role and the row of the declaration.
  std::string Tree(workbench::codemodel::Entity entity) const;
  // "gap 12:5 text" for each, a line each.
  std::string Diagnostics() const;
  // The item that the name leads to with its qualifiers: its record. Fails the test when it is not one.
  workbench::codemodel::DeclRecord Item(std::string_view name, std::vector<std::string_view> qualifiers = {}) const;
  workbench::codemodel::FileRecord File(std::string_view name) const;
  std::string Text(workbench::codemodel::TextId text) const;
  const workbench::codemodel::NodeRecord& Node(workbench::codemodel::NodeId node) const;
  workbench::codemodel::NodeId First(workbench::codemodel::Entity entity) const;
  std::uint32_t Symbol(std::string_view word) const;
  // The word at which reading stopped.
  std::string StoppedAt() const;

  const workbench::codemodel::cobol::ProgramHead& Head() const;
  workbench::codemodel::cobol::ProgramScope& Scope() const;
  workbench::codemodel::ModelBuilder& Model() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace qmrules::test
