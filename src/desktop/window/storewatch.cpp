#include "desktop/window/storewatch.h"

#include <QApplication>

#include "desktop/views/qttext.h"
#include "platform/error.h"

namespace qmrules::desktop {

namespace {

constexpr int kBetweenLooks = 1000;  // milliseconds

}  // namespace

StoreWatch::StoreWatch(platform::Repository& repository, Observers observers)
    : repository_(repository), observers_(std::move(observers)) {
  connect(&timer_, &QTimer::timeout, this, &StoreWatch::Look);
  timer_.start(kBetweenLooks);
}

void StoreWatch::Look() {
  if (QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr) return;
  try {
    const auto changes = repository_.TakeForeignChanges();
    hasFailed_ = false;
    if (!changes.objects.empty() || changes.areTooMany) observers_.changed(changes);
  } catch (const platform::Error& failure) {
    if (!std::exchange(hasFailed_, true)) observers_.failed(ToQt(failure.what()));
  }
}

}  // namespace qmrules::desktop
