#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/error.h"

namespace qmrules::test {

// The text with which the call fails; a failure of the test and "" when it does not.
template <class Call>
std::string ErrorText(const Call& call) {
  try {
    call();
  } catch (const platform::Error& error) {
    return error.what();
  }
  ADD_FAILURE() << "the call was expected to fail";
  return {};
}

}  // namespace qmrules::test
