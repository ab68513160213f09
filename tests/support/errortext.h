#pragma once

#include <string>

#include "platform/error.h"

namespace qmrules::test {

// The whole text of the Error that the call throws, or "(no error)".
template <class Call>
std::string ErrorText(const Call& call) {
  try {
    call();
  } catch (const platform::Error& error) {
    return error.what();
  }
  return "(no error)";
}

}  // namespace qmrules::test
