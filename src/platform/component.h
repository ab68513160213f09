#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/value.h"

namespace qmrules::platform {

// A component of the host as the workspace addresses it: by the names of its properties and methods, in text. Names are
// taken as they are written.
class Component {
 public:
  virtual ~Component() = default;
  // The property as text; nothing when the component does not answer for it.
  virtual std::optional<std::string> PropertyGet(std::string_view property) = 0;
  // A property that the component does not have is passed over. Throws Error for a value that it does not take.
  virtual void PropertyLet(std::string_view property, const Value& value) = 0;
  // The method's result, absent for one that gives none. Throws Error for a method that the component does not have
  // and when the method fails.
  virtual Value MethodCall(std::string_view method, std::string_view argument) = 0;
};

}  // namespace qmrules::platform
