#pragma once

#include <cstdint>
#include <optional>

#include "workbench/codemodel/modelfile.h"
#include "workbench/flow/cobol/storagelayout.h"
#include "workbench/flow/effects.h"
#include "workbench/flow/storageplace.h"

// Where the operands of COBOL statements lie.
//
//   01  T.                          E (2, 3) lies at 21 to 24, for sure. E (2, J) is one of 16, 21, 26 … and E (I, J)
//       05  R OCCURS 3.             one of all 15, as is every E (I + 1, 3). E (2, 3) (2:1) is the byte at 22; with a
//           10  C PIC 9.            variable behind the colon it is somewhere from 22 to 24.
//           10  E OCCURS 5 PIC X(3).
namespace qmrules::workbench::flow::cobol {

struct OperandPlace {
  StoragePlace place;
  // Of the bytes of the place, from its beginning: what it has in any case. Fewer than all where an OCCURS DEPENDING ON
  // lies below the item.
  std::uint64_t certain = 0;
  bool partial = false;  // its bytes are somewhere within the place
  std::optional<EffectGapKind> gap;

  bool IsNowhere() const { return place.area == 0 || place.first.begin == place.first.end; }
};

// Works out the places of VARs. The model and the layout have to outlive it.
class OperandPlaces {
 public:
  OperandPlaces(const codemodel::ModelImage& model, const StorageLayout& layout) : model_(model), layout_(layout) {}

  const codemodel::ModelImage& Model() const { return model_; }
  const StorageLayout& Layout() const { return layout_; }
  // Nowhere, with a gap, for a name whose declaration is not known; nowhere for one that has no storage: a constant, a
  // file, what stands behind LENGTH OF. ADDRESS OF gives the item whose address is meant.
  OperandPlace Of(NodeId var) const;
  // A data item as a whole, in all its occurrences where it has several.
  OperandPlace OfItem(NodeId item) const;

 private:
  OperandPlace Declared(NodeId item) const;
  OperandPlace Spelled(NodeId var) const;
  void Slide(NodeId item, OperandPlace& operand) const;
  OperandPlace Subscripted(NodeId var, NodeId item) const;
  void Refer(NodeId var, NodeId item, OperandPlace& operand) const;
  NodeId ExplicitOf(NodeId var) const;

  const codemodel::ModelImage& model_;
  const StorageLayout& layout_;
};

// A number without a sign, as subscripts and the parts of a reference modification have it; nothing for any other
// literal.
std::optional<std::uint32_t> WholeNumber(const codemodel::ModelImage& model, NodeId constant);
// The characters of National and DBCS items take two bytes.
std::uint32_t BytesOfCharacter(const codemodel::DeclRecord& decl);

}  // namespace qmrules::workbench::flow::cobol
