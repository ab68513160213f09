#include "shell/casemapping.h"

#include <wctype.h>

namespace qmrules::shell {
namespace {

constexpr char32_t kAsciiEnd = 0x80;
constexpr char32_t kCodePointEnd = 0x110000;
constexpr char32_t kDottedCapitalI = 0x130;
constexpr char32_t kDotlessSmallI = 0x131;

}  // namespace

CaseMapping::CaseMapping(const char* localeName) : locale_(newlocale(LC_CTYPE_MASK, localeName, locale_t{})) {}

const CaseMapping& CaseMapping::Unicode() {
  static const CaseMapping mapping("C.UTF-8");
  return mapping;
}

char32_t CaseMapping::Fold(char32_t value) const {
  if (value < kAsciiEnd) {
    return FoldAscii(value);
  }
  if (value >= kCodePointEnd || !locale_ || value == kDottedCapitalI || value == kDotlessSmallI) {
    return value;
  }
  // By way of the capital, since several small letters can share one: both small sigmas are one letter here.
  return static_cast<char32_t>(towlower_l(towupper_l(static_cast<wint_t>(value), locale_.get()), locale_.get()));
}

char32_t CaseMapping::Upper(char32_t value) const {
  if (value < kAsciiEnd) {
    return value >= U'a' && value <= U'z' ? value - (U'a' - U'A') : value;
  }
  if (value >= kCodePointEnd || !locale_) {
    return value;
  }
  return static_cast<char32_t>(towupper_l(static_cast<wint_t>(value), locale_.get()));
}

}  // namespace qmrules::shell
