#pragma once

#include <locale.h>

#include <memory>
#include <type_traits>

namespace qmrules::shell {

/// The case tables behind case folding: one code point to one code point, the same on every machine whatever locale the
/// user works in. `I` folds to `i` everywhere; the dotted capital U+0130 and the dotless small U+0131 stay letters of
/// their own, since which of them belongs to `i` is a matter of language.
class CaseMapping {
 public:
  /// Takes the tables of the named system locale. Where the system lacks it only A to Z and a to z have a case.
  explicit CaseMapping(const char* localeName);

  /// The mapping that the whole system uses. Constant after its first use; safe from any thread.
  [[nodiscard]] static const CaseMapping& Unicode();

  /// The one representative of all letters that differ only in case. Idempotent. A value past U+10FFFF is kept.
  [[nodiscard]] char32_t Fold(char32_t value) const;

  /// The capital of a letter that has one of one code point; else `value`.
  [[nodiscard]] char32_t Upper(char32_t value) const;

 private:
  struct LocaleCloser {
    void operator()(locale_t locale) const { freelocale(locale); }
  };
  std::unique_ptr<std::remove_pointer_t<locale_t>, LocaleCloser> locale_;
};

/// Folding of one ASCII character, for the fast paths.
[[nodiscard]] constexpr char32_t FoldAscii(char32_t value) {
  return value >= U'A' && value <= U'Z' ? value + (U'a' - U'A') : value;
}

}  // namespace qmrules::shell
