#include "platform/fetch.h"

namespace qmrules::platform {

std::string FilterValue(std::string_view text) {
  std::string value;
  value.reserve(text.size());
  for (const char character : text) {
    if (std::string_view("&|~(),\\").find(character) != std::string_view::npos) value += '\\';
    value += character;
  }
  return value;
}

}  // namespace qmrules::platform
