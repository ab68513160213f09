#pragma once

#include "platform/component.h"
#include "platform/sourceviewer.h"

namespace qmrules::platform {

// A SourceViewer as the component "QMSource".
//
//   Properties  Row, SelectedRowsCount   numbers; no answer without a file
//               FileName                 the file on view, no answer without one; written: OpenFile
//               Files                    one name to a line; read only
//   Methods     CheckSegment             "" clears all marks; key ":" from row ":" to row adds one
//               GoTo                     file ":" row, with ":" column behind it where it is known
//
// A method throws Error, naming the argument, when that is malformed.
class SourceViewerComponent final : public Component {
 public:
  // The viewer outlives the component.
  explicit SourceViewerComponent(SourceViewer& viewer) : viewer_(viewer) {}
  std::optional<std::string> PropertyGet(std::string_view property) override;
  void PropertyLet(std::string_view property, const Value& value) override;
  Value MethodCall(std::string_view method, std::string_view argument) override;

 private:
  SourceViewer& viewer_;
};

}  // namespace qmrules::platform
