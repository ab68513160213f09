#pragma once

#include <utility>

#include "platform/error.h"

namespace qmrules::catalogue {

// Runs one step whose failure is told to be left out: true when it succeeded, false when it threw Error. For the places
// where the described behaviour says "errors ignored" and no others; defects of the program pass through.
template <class Step>
bool WithErrorsIgnored(Step&& step) {
  try {
    std::forward<Step>(step)();
    return true;
  } catch (const platform::Error&) {
    return false;
  }
}

}  // namespace qmrules::catalogue
