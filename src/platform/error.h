#pragma once

#include <stdexcept>
#include <string>

namespace qmrules::platform {

// A failed call. what() is a text for the reader: it names the file (with line and column) or the object key
// concerned and, where there is one, the next step to take. A call that throws has left the store as it was before.
class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace qmrules::platform
