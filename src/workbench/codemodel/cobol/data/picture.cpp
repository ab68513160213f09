#include "workbench/codemodel/cobol/data/picture.h"

#include <algorithm>
#include <limits>

namespace qmrules::workbench::codemodel::cobol {

namespace {

constexpr std::uint64_t kMostCount = 1ULL << 31;

// How often each symbol stands in a picture, and where the decimal point lies.
class SymbolCounter {
 public:
  SymbolCounter(char currencySymbol, bool decimalComma)
      : currency_(currencySymbol), point_(decimalComma ? ',' : '.'), separator_(decimalComma ? '.' : ',') {}

  bool Read(std::string_view text);
  std::optional<PictureFacts> Result() const;

 private:
  bool Take(char symbol, std::uint64_t count);
  bool TakeSpecial(char symbol, std::uint64_t count);
  bool TakeSign(std::uint64_t count);
  bool TakePoint(bool takesRoom);
  void TakeDigits(std::uint64_t count);
  void Room(std::uint64_t count) { characters_ = std::min(characters_ + count, kMostCount); }
  bool IsNumeric() const;
  PictureFacts::Category CategoryOf() const;
  PictureFacts::Category CategoryOfCharacters() const;

  char currency_, point_, separator_;
  std::uint64_t characters_ = 0, digits_ = 0, fraction_ = 0;
  std::uint64_t leadingP_ = 0, trailingP_ = 0;
  std::uint64_t nines_ = 0, letters_ = 0, anything_ = 0, national_ = 0, dbcs_ = 0, bits_ = 0;
  std::uint64_t insertions_ = 0;  // B 0 /
  std::uint64_t edits_ = 0;       // what only an edited number has
  std::uint64_t floating_ = 0;    // of + - and the currency symbol
  char lastFloating_ = '\0';
  bool suppressed_ = false, starred_ = false, hasSign_ = false, hasPoint_ = false, hasExponent_ = false;
  bool isSigned_ = false;
};

char ToUpper(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

// The count in parentheses at the place, which is moved behind it; 1 where there is none, 0 for a broken one.
std::uint64_t CountAt(std::string_view text, std::size_t& place) {
  if (place >= text.size() || text[place] != '(') return 1;
  ++place;
  std::uint64_t count = 0;
  const std::size_t start = place;
  for (; place < text.size() && text[place] >= '0' && text[place] <= '9'; ++place) {
    count = std::min<std::uint64_t>(count * 10 + static_cast<std::uint64_t>(text[place] - '0'), kMostCount);
  }
  if (place == start || place >= text.size() || text[place] != ')') return 0;
  ++place;
  return count;
}

bool SymbolCounter::Read(std::string_view text) {
  std::size_t place = 0;
  while (place < text.size()) {
    const char symbol = ToUpper(text[place]);
    const char next = place + 1 < text.size() ? ToUpper(text[place + 1]) : '\0';
    const bool isCredit = (symbol == 'C' && next == 'R') || (symbol == 'D' && next == 'B');
    if (isCredit && symbol != currency_) {
      place += 2;
      if (place != text.size() || hasSign_) return false;
      ++edits_;
      isSigned_ = true;
      Room(2);
      continue;
    }
    ++place;
    const std::uint64_t count = CountAt(text, place);
    if (count == 0 || !Take(symbol, count)) return false;
  }
  return true;
}

bool SymbolCounter::Take(char symbol, std::uint64_t count) {
  if (symbol == ToUpper(currency_)) {
    ++edits_;
    floating_ += count;
    if (lastFloating_ == symbol) {
      TakeDigits(count);
    } else {
      TakeDigits(count - 1);
    }
    lastFloating_ = symbol;
    Room(count);
    return true;
  }
  switch (symbol) {
    case 'X':
      anything_ += count;
      Room(count);
      return true;
    case 'A':
      letters_ += count;
      Room(count);
      return true;
    case 'N':
      national_ += count;
      Room(count);
      return true;
    case 'G':
      dbcs_ += count;
      Room(count);
      return true;
    case '1':
      bits_ += count;
      Room(count);
      return true;
    case '9':
      nines_ += count;
      TakeDigits(count);
      Room(count);
      return true;
    case 'B':
    case '0':
    case '/':
      insertions_ += count;
      Room(count);
      return true;
    default:
      return TakeSpecial(symbol, count);
  }
}

bool SymbolCounter::TakeSpecial(char symbol, std::uint64_t count) {
  if (symbol == point_) return count == 1 && TakePoint(true);
  if (symbol == separator_) {
    ++edits_;
    Room(count);
    return true;
  }
  switch (symbol) {
    case 'S':
      return TakeSign(count);
    case 'V':
      return count == 1 && TakePoint(false);
    case 'P':
      if (digits_ == 0) {
        leadingP_ += count;
      } else {
        trailingP_ += count;
      }
      return true;
    case 'Z':
    case '*':
      if (symbol == '*' ? suppressed_ : starred_) return false;
      (symbol == '*' ? starred_ : suppressed_) = true;
      ++edits_;
      TakeDigits(count);
      Room(count);
      return true;
    case '+':
    case '-':
      ++edits_;
      isSigned_ = true;
      if (!hasExponent_) TakeDigits(lastFloating_ == symbol ? count : count - 1);
      lastFloating_ = symbol;
      Room(count);
      return true;
    case 'E':
      if (hasExponent_ || digits_ == 0) return false;
      hasExponent_ = true;
      Room(count);
      return true;
    default:
      return false;
  }
}

bool SymbolCounter::TakeSign(std::uint64_t count) {
  if (hasSign_ || count != 1 || characters_ != 0 || leadingP_ != 0 || hasPoint_) return false;
  hasSign_ = isSigned_ = true;
  return true;
}

bool SymbolCounter::TakePoint(bool takesRoom) {
  if (hasPoint_) return false;
  hasPoint_ = true;
  if (takesRoom) {
    ++edits_;
    Room(1);
  }
  return true;
}

void SymbolCounter::TakeDigits(std::uint64_t count) {
  if (hasExponent_) return;
  digits_ = std::min(digits_ + count, kMostCount);
  if (hasPoint_ || leadingP_ != 0) fraction_ = std::min(fraction_ + count, kMostCount);
}

bool SymbolCounter::IsNumeric() const {
  return nines_ != 0 && edits_ == 0 && insertions_ == 0;
}

PictureFacts::Category SymbolCounter::CategoryOfCharacters() const {
  using enum PictureFacts::Category;
  if (national_ != 0) return insertions_ != 0 || nines_ != 0 ? NationalEdited : National;
  if (dbcs_ != 0) return Dbcs;
  if (insertions_ != 0) return AlphanumericEdited;
  return anything_ == 0 && nines_ == 0 ? Alphabetic : Alphanumeric;
}

PictureFacts::Category SymbolCounter::CategoryOf() const {
  using enum PictureFacts::Category;
  if (anything_ + letters_ + national_ + dbcs_ != 0) return CategoryOfCharacters();
  if (bits_ != 0) return Boolean;
  if (hasExponent_) return FloatingPoint;
  return IsNumeric() ? Numeric : NumericEdited;
}

std::optional<PictureFacts> SymbolCounter::Result() const {
  const std::uint64_t ofCharacters = anything_ + letters_ + national_ + dbcs_;
  if (characters_ == 0) return {};
  if (ofCharacters != 0 && (edits_ != 0 || hasPoint_ || hasSign_ || leadingP_ + trailingP_ + bits_ != 0)) return {};
  if (ofCharacters == 0 && digits_ + bits_ == 0 && insertions_ == 0 && floating_ == 0) return {};
  if (leadingP_ != 0 && trailingP_ != 0) return {};
  if (hasSign_ && (!IsNumeric() || bits_ != 0)) return {};
  PictureFacts picture;
  picture.category = CategoryOf();
  picture.characters = static_cast<std::uint32_t>(characters_);
  picture.isSigned = isSigned_;
  if (picture.category != PictureFacts::Category::Numeric &&
      picture.category != PictureFacts::Category::NumericEdited) {
    return picture;
  }
  constexpr std::uint64_t kMostDigits = std::numeric_limits<std::int16_t>::max();
  const std::uint64_t scale = std::min(fraction_ + leadingP_, kMostDigits);
  picture.digits = static_cast<std::uint16_t>(std::min(digits_ + leadingP_ + trailingP_, kMostDigits));
  picture.scale = trailingP_ != 0 && !(hasPoint_ && fraction_ != 0)
                      ? static_cast<std::int16_t>(-static_cast<std::int64_t>(std::min(trailingP_, kMostDigits)))
                      : static_cast<std::int16_t>(scale);
  return picture;
}

}  // namespace

std::optional<PictureFacts> ParsePicture(std::string_view text, char currencySymbol, bool decimalComma) {
  SymbolCounter counter(currencySymbol, decimalComma);
  if (!counter.Read(text)) return {};
  return counter.Result();
}

}  // namespace qmrules::workbench::codemodel::cobol
