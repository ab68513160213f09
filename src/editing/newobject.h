#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/repository.h"

namespace qmrules::editing {

// The new object of this entity and name, or nothing when the store refuses to make it; the caller tells the reader why
// that happens.
[[nodiscard]] std::unique_ptr<platform::Object> TryNewObject(platform::Repository& repository, std::string_view entity,
                                                             const std::string& name);

}  // namespace qmrules::editing
