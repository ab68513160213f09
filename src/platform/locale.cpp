#include "platform/locale.h"

#include <cstdlib>

#include "shell/language.h"

namespace qmrules::platform {

int SystemLocale::GetUserDefaultLCID() const {
  for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const char* const value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return shell::LocaleIdentifier(value);
  }
  return shell::LocaleIdentifier("C");
}

}  // namespace qmrules::platform
