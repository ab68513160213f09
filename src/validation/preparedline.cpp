#include "validation/preparedline.h"

#include <algorithm>

#include "shell/text.h"
#include "shell/trim.h"

namespace qmrules::validation {

namespace {

// True when SafeText would change the line. No early way out, so that the loop becomes one over blocks of bytes.
bool HasControlCharacters(std::string_view line) {
  unsigned found = 0;
  for (const char character : line) {
    const auto code = static_cast<unsigned char>(character);
    found |= static_cast<unsigned>(code < 32) & static_cast<unsigned>(code != '\t');
  }
  return found != 0;
}

}  // namespace

std::string_view PrepareLine(std::string_view line, std::string& buffer) {
  if (!HasControlCharacters(line)) return shell::TrimBlanks(line);
  buffer = shell::SafeText(line);
  return shell::TrimBlanks(buffer);
}

void CollapseRuns(std::string& text, bool collapseSpaces) {
  if (!collapseSpaces) return;
  const auto areSpaces = [](char left, char right) { return left == ' ' && right == ' '; };
  text.erase(std::unique(text.begin(), text.end(), areSpaces), text.end());
}

}  // namespace qmrules::validation
