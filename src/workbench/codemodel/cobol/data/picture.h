#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace qmrules::workbench::codemodel::cobol {

// What a picture says of its item.
struct PictureFacts {
  enum class Category : std::uint8_t {
    Alphabetic,
    Alphanumeric,
    AlphanumericEdited,
    Numeric,
    NumericEdited,
    National,
    NationalEdited,
    Dbcs,
    FloatingPoint,  // external floating point
    Boolean,
  };
  Category category = Category::Alphanumeric;
  std::uint32_t characters = 0;  // in DISPLAY or NATIONAL usage
  std::uint16_t digits = 0;      // of a numeric one; those of P are counted in it
  std::int16_t scale = 0;        // digits behind the point; below 0 for P at the right end
  bool isSigned = false;
};

// Nothing for what is no picture. Counts in parentheses are taken up to 2^31; the words in place of a count that a
// constant declares are not taken here.
std::optional<PictureFacts> ParsePicture(std::string_view text, char currencySymbol = '$', bool decimalComma = false);

}  // namespace qmrules::workbench::codemodel::cobol
