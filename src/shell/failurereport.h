#pragma once

#include <functional>
#include <string_view>

#include "platform/dialogs.h"
#include "platform/pointer.h"
#include "platform/tesselglobals.h"

namespace qmrules::shell {

// The end of the road for a failure that no routine reports by itself: the user reads its text in a message box.
class FailureReport {
 public:
  // All three outlive this.
  FailureReport(platform::Dialogs& dialogs, platform::Pointer& pointer, const platform::TesselGlobals& globals)
      : dialogs_(dialogs), pointer_(pointer), globals_(globals) {}

  // Shows the text until the user has read it.
  void Tell(std::string_view text) const;

  // Runs the action and tells of its failure. False when it threw Error; defects of the program come through.
  bool Attempt(const std::function<void()>& action) const;

 private:
  platform::Dialogs& dialogs_;
  platform::Pointer& pointer_;
  const platform::TesselGlobals& globals_;
};

}  // namespace qmrules::shell
