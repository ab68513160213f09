#include "platform/locale.h"

#include <cstdlib>

namespace qmrules::platform {

namespace {

constexpr int invariantLcid = 127;
constexpr int usEnglishLcid = 1033;

struct KnownLocale {
  std::string_view name;
  int lcid;
};

// The first entry of a language stands for its bare name too.
constexpr KnownLocale knownLocales[] = {
    {"en_US", 1033}, {"en_GB", 2057}, {"ja_JP", 1041}, {"ko_KR", 1042}, {"ru_RU", 1049},
    {"de_DE", 1031}, {"fr_FR", 1036}, {"es_ES", 3082}, {"it_IT", 1040}, {"pt_BR", 1046},
};

}  // namespace

int LCIDOfLocaleName(std::string_view name) {
  name = name.substr(0, name.find_first_of(".@"));
  if (name.empty() || name == "C" || name == "POSIX") return usEnglishLcid;
  for (const KnownLocale& known : knownLocales) {
    const std::string_view language = known.name.substr(0, known.name.find('_'));
    if (known.name == name || language == name) return known.lcid;
  }
  return invariantLcid;
}

int SystemLocale::GetUserDefaultLCID() const {
  for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const char* const value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return LCIDOfLocaleName(value);
  }
  return LCIDOfLocaleName({});
}

}  // namespace qmrules::platform
