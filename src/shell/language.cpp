#include "shell/language.h"

#include <algorithm>
#include <string>

#include "shell/casefold.h"

namespace qmrules::shell {
namespace {

struct LocaleEntry {
  std::string_view language;
  std::string_view region;
  int identifier;
};

/// The first line of a language is its chief region.
constexpr LocaleEntry kLocales[] = {
    {"ar", "sa", 1025}, {"bg", "bg", 1026},  {"cs", "cz", 1029},  {"da", "dk", 1030},  {"de", "de", 1031},
    {"de", "at", 3079}, {"de", "ch", 2055},  {"de", "li", 5127},  {"de", "lu", 4103},  {"el", "gr", 1032},
    {"en", "us", 1033}, {"en", "au", 3081},  {"en", "ca", 4105},  {"en", "gb", 2057},  {"en", "hk", 15369},
    {"en", "ie", 6153}, {"en", "in", 16393}, {"en", "nz", 5129},  {"en", "ph", 13321}, {"en", "sg", 18441},
    {"en", "za", 7177}, {"es", "es", 3082},  {"es", "ar", 11274}, {"es", "mx", 2058},  {"et", "ee", 1061},
    {"fi", "fi", 1035}, {"fr", "fr", 1036},  {"fr", "be", 2060},  {"fr", "ca", 3084},  {"fr", "ch", 4108},
    {"fr", "lu", 5132}, {"he", "il", 1037},  {"hi", "in", 1081},  {"hr", "hr", 1050},  {"hu", "hu", 1038},
    {"id", "id", 1057}, {"it", "it", 1040},  {"it", "ch", 2064},  {"ja", "jp", 1041},  {"ko", "kr", 1042},
    {"lt", "lt", 1063}, {"lv", "lv", 1062},  {"nb", "no", 1044},  {"nl", "nl", 1043},  {"nl", "be", 2067},
    {"nn", "no", 2068}, {"pl", "pl", 1045},  {"pt", "br", 1046},  {"pt", "pt", 2070},  {"ro", "ro", 1048},
    {"ru", "ru", 1049}, {"sk", "sk", 1051},  {"sl", "si", 1060},  {"sv", "se", 1053},  {"sv", "fi", 2077},
    {"th", "th", 1054}, {"tr", "tr", 1055},  {"uk", "ua", 1058},  {"vi", "vn", 1066},  {"zh", "cn", 2052},
    {"zh", "hk", 3076}, {"zh", "sg", 4100},  {"zh", "tw", 1028},
};

struct LocaleParts {
  std::string language;  ///< in small letters, like the region
  std::string region;    ///< "" when the name has none
};

LocaleParts Split(std::string_view localeName) {
  const std::string name = FoldCase(localeName.substr(0, localeName.find_first_of(".@")));
  const std::size_t separator = name.find_first_of("_-");
  if (separator == std::string::npos) {
    return {name, ""};
  }
  return {name.substr(0, separator), name.substr(separator + 1)};
}

}  // namespace

std::string_view LanguageCode(Language language) {
  switch (language) {
    case Language::Japanese:
      return "ja";
    case Language::Korean:
      return "ko";
    case Language::English:
      break;
  }
  return "en";
}

std::optional<Language> ParseLanguage(std::string_view code) {
  if (code == "en") {
    return Language::English;
  }
  if (code == "ja") {
    return Language::Japanese;
  }
  if (code == "ko") {
    return Language::Korean;
  }
  return std::nullopt;
}

Language LanguageOf(std::string_view localeName) {
  return ParseLanguage(Split(localeName).language).value_or(Language::English);
}

int LocaleIdentifier(std::string_view localeName) {
  const LocaleParts parts = Split(localeName);
  if ((parts.language == "c" || parts.language == "posix") && parts.region.empty()) {
    return static_cast<int>(Language::English);
  }
  const auto* found = std::ranges::find_if(kLocales, [&parts](const LocaleEntry& entry) {
    return entry.language == parts.language && (parts.region.empty() || entry.region == parts.region);
  });
  return found == std::ranges::end(kLocales) ? 0 : found->identifier;
}

std::string_view ERDEncoding(int localeIdentifier) {
  switch (localeIdentifier) {
    case 1033:
      return "ISO-8859-1";
    case 1041:
      return "SHIFT_JIS";
    case 1042:
      return "EUC-KR";
    case 1049:
      return "ISO-8859-5";
    default:
      return "UTF-8";
  }
}

}  // namespace qmrules::shell
