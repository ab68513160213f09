#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/codemodel/modelbuilder.h"
#include "workbench/codemodel/symbolmap.h"
#include "workbench/codemodel/symboltable.h"

namespace qmrules::workbench::codemodel::cobol {

// What a name leads to.
struct Resolution {
  enum class Found : std::uint8_t { None, One, Several };
  Found found = Found::None;
  NodeId node = 0;  // the one; of several the first, for messages
};

// The data names of one program of the text, and through `Parent` the GLOBAL ones of the programs around it.
//
// A reference "C OF B OF A" means the items C that have B and A among the groups (and the file) around them, in this
// order, others between them notwithstanding. A name is unique when one item answers to it; an item whose whole chain
// of groups is named is meant even when others answer too.
//
//   01 A.  05 B.  10 C.        C              ambiguous
//          05 D.  10 C.        C OF B, C OF D unique
class ProgramScope {
 public:
  ProgramScope(ModelBuilder& model, const SymbolTable& symbols, ProgramScope* parent);

  ProgramScope* Parent() const { return parent_; }

  // A DECL or FILE that can be referred to by the name. Its parents must be declared, and nodes come in their order.
  void Declare(std::uint32_t symbol, NodeId node);
  // A data item, condition name, index or file by its name and its qualifiers, innermost first.
  Resolution Resolve(std::uint32_t name, std::span<const std::uint32_t> qualifiers) const;
  // The same among the nodes from `first` to `last` of this program alone.
  Resolution ResolveWithin(NodeId first, NodeId last, std::uint32_t name,
                           std::span<const std::uint32_t> qualifiers) const;
  // The item of the name that lies directly below the parent, the last one of several; or 0.
  NodeId LastChild(NodeId parent, std::uint32_t name) const;
  bool IsDeclared(std::uint32_t name) const;
  // A file of this program or a GLOBAL one around it. Reports and communication descriptions are files too.
  Resolution ResolveFile(std::uint32_t name) const;

  // Names of SPECIAL-NAMES: a mnemonic name, an alphabet, a class, a switch's condition. A constant is declared as a
  // data name as well. Those of the programs around hold, too.
  enum class SpecialKind : std::uint8_t {
    None,
    Mnemonic,
    Alphabet,
    Class,
    SwitchStatus,
    SymbolicCharacter,
    Currency,
    Constant
  };  // level 78, CONSTANT
  void DeclareSpecial(std::uint32_t symbol, SpecialKind kind, NodeId node);
  SpecialKind Special(std::uint32_t symbol) const;
  NodeId SpecialNode(std::uint32_t symbol) const;
  // The whole number that a constant stands for, or -1.
  void SetConstant(std::uint32_t symbol, std::int64_t number) { constants_[symbol] = number; }
  std::int64_t Constant(std::uint32_t symbol) const;

  // Names that the language or its environment supplies: RETURN-CODE, TALLY, LINAGE-COUNTER; EIBRESP where the program
  // has EXEC CICS, SQLCODE where it has EXEC SQL, as far as the program does not declare them. The VAR is tied to its
  // declaration when the registers are made, at the end of the outermost program. The qualifier is the name of the file
  // or report that LINAGE-COUNTER, PAGE-COUNTER and LINE-COUNTER can be qualified with.
  bool IsRegister(std::uint32_t symbol) const;
  void UseRegister(NodeId var, std::uint32_t symbol, std::uint32_t qualifier = SymbolTable::kNone);
  // Makes the node REGISTERS with a DECL for each register used, and ties their occurrences to them. Nothing when none
  // was used, and for a program within another one: its registers are those of the outermost.
  void MakeRegisters(std::uint32_t lastToken);

  // Files, communication descriptions and reports, in their order.
  std::vector<NodeId> files;
  std::uint32_t cicsCommArea = SymbolTable::kNone;  // symbol of DFHCOMMAREA
  // Of SPECIAL-NAMES, for pictures.
  char currencySymbol = '$';
  bool decimalComma = false;

 private:
  // The items of one name, ascending.
  struct Candidates {
    NodeId first = 0;
    std::vector<NodeId> more;
  };
  enum class Fit : std::uint8_t { No, Part, Whole };
  struct Tally;

  const Candidates* Find(std::uint32_t name) const;
  std::uint32_t SymbolOf(NodeId node) const;
  Fit FitOf(NodeId node, std::span<const std::uint32_t> qualifiers, bool globalOnly) const;
  void Count(Tally& tally, const Candidates& candidates, NodeId first, NodeId last) const;
  Resolution ResolveHere(std::uint32_t name, std::span<const std::uint32_t> qualifiers, bool globalOnly) const;
  Resolution Look(std::uint32_t name, std::span<const std::uint32_t> qualifiers, bool globalOnly) const;
  const ProgramScope& Outermost() const;

  ModelBuilder& model_;
  ProgramScope* parent_;
  // Most references are to a name that is declared once: those are answered from here. kSeveral for the others.
  static constexpr std::uint32_t kSeveral = SymbolMap::kNone - 1;
  SymbolMap onlyOnes_;
  SymbolMap names_;  // symbol to index in candidates_
  std::vector<Candidates> candidates_;
  NodeId firstNode_ = 0;                    // of the first one declared
  std::vector<std::uint32_t> nodeSymbols_;  // from firstNode_ on
  // What references to names with many items were found to mean.
  mutable std::map<std::vector<std::uint32_t>, Resolution> found_;
  struct SpecialName {
    SpecialKind kind = SpecialKind::None;
    NodeId node = 0;
  };
  std::unordered_map<std::uint32_t, SpecialName> specials_;
  std::unordered_map<std::uint32_t, std::int64_t> constants_;
  struct RegisterUse {
    NodeId var = 0;
    std::uint32_t symbol = 0;
    std::uint32_t qualifier = SymbolTable::kNone;
  };
  std::vector<RegisterUse> registerUses_;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> registers_;  // symbol to register, ascending; outermost only
};

}  // namespace qmrules::workbench::codemodel::cobol
