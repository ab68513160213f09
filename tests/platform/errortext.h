#pragma once

#include <string>

#include "platform/error.h"

namespace qmrules::platform {

// The whole text of the Error that the call throws, or "(no error)".
template <class Call>
std::string ErrorText(Call call) {
  try {
    call();
  } catch (const Error& error) {
    return error.what();
  }
  return "(no error)";
}

}  // namespace qmrules::platform
