#pragma once

#include <optional>
#include <string_view>

namespace qmrules::shell {

/// The languages that the user interface speaks, by their locale identifiers.
///
/// To add one: a value here, its code in language.cpp, its string table in stringtable<name>.cpp, and the table's line
/// in messages.cpp.
enum class Language { English = 1033, Japanese = 1041, Korean = 1042 };

/// Reads a language code: exactly "en", "ja" or "ko". Anything else gives nothing.
[[nodiscard]] std::optional<Language> ParseLanguage(std::string_view code);

/// The code that ParseLanguage reads.
[[nodiscard]] std::string_view LanguageCode(Language language);

/// The interface language for a POSIX locale name such as "ja_JP.UTF-8": Japanese or Korean for any of their regions,
/// English for every other name.
[[nodiscard]] Language LanguageOf(std::string_view localeName);

/// The numeric locale identifier for a POSIX locale name: a language ("ko"), a language and a region ("en_GB",
/// "en-GB"), with or without an encoding and a modifier behind it. A language alone stands for its chief region. "C"
/// and "POSIX" are 1033. A name that the table does not know gives 0.
[[nodiscard]] int LocaleIdentifier(std::string_view localeName);

/// The encoding that the header of an exchange document names for a user of this locale: "ISO-8859-1" for 1033,
/// "SHIFT_JIS" for 1041, "EUC-KR" for 1042, "ISO-8859-5" for 1049 and "UTF-8" for any other.
[[nodiscard]] std::string_view ERDEncoding(int localeIdentifier);

}  // namespace qmrules::shell
