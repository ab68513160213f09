#pragma once

#include <QGuiApplication>

#include "platform/pointer.h"

namespace qmrules::desktop {

// The pointer of all windows of the application.
class WaitPointer final : public platform::Pointer {
 public:
  WaitPointer() = default;
  ~WaitPointer() override { WaitPointer::SetBusy(false); }
  WaitPointer(const WaitPointer&) = delete;
  WaitPointer& operator=(const WaitPointer&) = delete;

  bool IsBusy() const override { return busy_; }
  void SetBusy(bool busy) override {
    if (busy == busy_) return;
    busy_ = busy;
    if (busy) {
      QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
      QGuiApplication::restoreOverrideCursor();
    }
  }

 private:
  bool busy_ = false;
};

}  // namespace qmrules::desktop
