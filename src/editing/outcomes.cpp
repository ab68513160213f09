#include "editing/outcomes.h"

namespace qmrules::editing {

Notice OneLine(const shell::StringTable& texts, int number, platform::MessageStyle style) {
  return {texts.Text(number), style};
}

Notice TwoLines(std::string_view first, std::string_view second, platform::MessageStyle style) {
  return {std::string(first) + "\r\n" + std::string(second), style};
}

}  // namespace qmrules::editing
