#include "desktop/source/memorytexts.h"
#include "desktop/source/sourceview.h"
#include "platform/hostmodels/sourceviewercontract.h"

namespace qmrules {
namespace {

// A viewer that a view on screen shows: showing changes nothing of it.
struct OnScreen {
  OnScreen() {
    texts.Put("PBRATE.cbl", test::NumberedRows(100));
    texts.Put("copy\\PBPOLMS.cpy", test::NumberedRows(100));
    view.show();
  }
  platform::MemorySourceViewer viewer;
  test::MemoryTexts texts;
  desktop::SourceView view{viewer, texts};
};

// The same where no file can be shown.
struct WithoutTexts {
  platform::MemorySourceViewer viewer;
  test::MemoryTexts texts;
  desktop::SourceView view{viewer, texts};
};

using Holders = testing::Types<OnScreen, WithoutTexts>;

}  // namespace

namespace platform {

INSTANTIATE_TYPED_TEST_SUITE_P(Desktop, SourceViewerContract, Holders);

}  // namespace platform
}  // namespace qmrules
