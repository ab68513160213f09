#include "desktop/locator/locatormatch.h"

#include <algorithm>

#include "shell/text.h"
#include "shell/utf8.h"

namespace qmrules::desktop {

namespace {

std::u32string Decoded(std::string_view utf8) {
  std::u32string characters;
  for (std::size_t at = 0; at < utf8.size();) {
    const shell::Utf8Step step = shell::DecodeAt(utf8, at);
    characters += step.value;
    at += step.length;
  }
  return characters;
}

bool IsAsciiLetter(char32_t value) {
  return (value >= U'a' && value <= U'z') || (value >= U'A' && value <= U'Z');
}

bool IsDigit(char32_t value) {
  return value >= U'0' && value <= U'9';
}

bool IsUpper(char32_t value) {
  return value >= U'A' && value <= U'Z';
}

// Beyond ASCII only the wide blank and the usual marks of full-width texts part words.
bool PartsWords(char32_t value) {
  if (value < 0x80) return !IsAsciiLetter(value) && !IsDigit(value);
  return value == 0x3000 || value == 0x30FB || (value >= 0xFF08 && value <= 0xFF0F);
}

bool BeginsWord(const std::u32string& name, std::size_t at) {
  if (at == 0) return true;
  const char32_t before = name[at - 1];
  if (PartsWords(before)) return true;
  return IsUpper(name[at]) && IsAsciiLetter(before) && !IsUpper(before);
}

std::size_t Utf16Length(char32_t value) {
  return value >= 0x10000 && value < shell::kMalformedByte ? 2 : 1;
}

// The best place of the word: the first one at the beginning of a word, else the first one.
std::size_t PlaceOf(const std::u32string& word, const std::u32string& folded, const std::u32string& name) {
  const std::size_t first = folded.find(word);
  for (std::size_t at = first; at != std::u32string::npos; at = folded.find(word, at + 1)) {
    if (BeginsWord(name, at)) return at;
  }
  return first;
}

// Runs of marked characters, told in UTF-16.
std::vector<MarkedRun> RunsOf(const std::vector<bool>& isMarked, const std::u32string& name) {
  std::vector<MarkedRun> runs;
  std::size_t place = 0;
  for (std::size_t at = 0; at < name.size(); ++at) {
    const std::size_t length = Utf16Length(name[at]);
    if (isMarked[at] && at > 0 && isMarked[at - 1]) {
      runs.back().length += length;
    } else if (isMarked[at]) {
      runs.push_back({place, length});
    }
    place += length;
  }
  return runs;
}

std::string PatternOf(const std::u32string& word) {
  std::string pattern = "*";
  for (const char32_t character : word) {
    const bool isSpecial = character == U'*' || character == U'?' || character == U'#' || character == U'[';
    if (isSpecial) pattern += '[';
    shell::AppendUtf8(pattern, character);
    if (isSpecial) pattern += ']';
  }
  return pattern + '*';
}

}  // namespace

LocatorQuery::LocatorQuery(std::string_view text) {
  std::u32string word;
  for (const char32_t character : Decoded(shell::FoldCase(text)) + U' ') {
    const bool isBlank = character == U' ' || character == U'\t' || character == 0x3000;
    if (!isBlank) {
      word += character;
    } else if (!word.empty()) {
      words_.push_back(std::move(word));
      word.clear();
    }
  }
}

std::optional<NameMatch> LocatorQuery::Match(std::string_view text) const {
  const std::u32string name = Decoded(text);
  const std::u32string folded = Decoded(shell::FoldCase(text));
  NameMatch match{.atWordStarts = true, .nameLength = shell::CharacterCount(text), .marks = {}};
  std::vector<bool> isMarked(name.size());
  for (const std::u32string& word : words_) {
    const std::size_t place = PlaceOf(word, folded, name);
    if (place == std::u32string::npos) return std::nullopt;
    match.atWordStarts = match.atWordStarts && BeginsWord(name, place);
    std::fill_n(isMarked.begin() + static_cast<std::ptrdiff_t>(place), word.size(), true);
  }
  match.marks = RunsOf(isMarked, name);
  return match;
}

std::vector<std::string> LocatorQuery::Patterns() const {
  std::vector<std::string> patterns;
  for (const std::u32string& word : words_) patterns.push_back(PatternOf(word));
  return patterns;
}

}  // namespace qmrules::desktop
