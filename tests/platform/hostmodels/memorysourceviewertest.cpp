#include "platform/memorysourceviewer.h"

#include "platform/hostmodels/sourceviewercontract.h"

namespace qmrules::platform {
namespace {

struct WithoutScreen {
  MemorySourceViewer viewer;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, SourceViewerContract, WithoutScreen);

}  // namespace
}  // namespace qmrules::platform
