#include "editing/newobject.h"

#include "platform/error.h"

namespace qmrules::editing {

std::unique_ptr<platform::Object> TryNewObject(platform::Repository& repository, std::string_view entity,
                                               const std::string& name) {
  try {
    return repository.NewObject(entity, name);
  } catch (const platform::Error&) {
    return nullptr;
  }
}

}  // namespace qmrules::editing
