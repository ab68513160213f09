#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "workbench/codemodel/expandedtext.h"
#include "workbench/codemodel/modelbuilder.h"
#include "workbench/codemodel/symboltable.h"

// Data items that the language or its environment supplies.
namespace qmrules::workbench::codemodel::cobol {

// The registers that a program of the text can use, by symbol, ascending, with their numbers: those of CICS and SQL
// only where the text has such statements.
std::vector<std::pair<std::uint32_t, std::uint32_t>> RegistersOf(const SymbolTable& symbols, const ExpandedText& text);

// Makes the node REGISTERS.
class RegisterMaker {
 public:
  struct Wanted {
    std::uint32_t number = 0;  // of the register
    std::uint32_t qualifier = SymbolTable::kNone;
    NodeId var = 0;  // to be tied to it
  };
  RegisterMaker(ModelBuilder& model, std::uint32_t token) : model_(model), token_(token) {}

  void Make(std::vector<Wanted> wanted);

 private:
  void MakeGroup(std::uint32_t first, std::uint32_t end, std::span<const Wanted> wanted);

  ModelBuilder& model_;
  std::uint32_t token_;
};

}  // namespace qmrules::workbench::codemodel::cobol
