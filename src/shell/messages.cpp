#include "shell/messages.h"

#include <span>
#include <stdexcept>

#include "shell/stringtables.h"

namespace qmrules::shell {
namespace {

[[noreturn]] void ThrowUnknownLanguage(Language language) {
  throw std::logic_error("There is no string table for language " + std::to_string(static_cast<int>(language)) + ".");
}

std::span<const StringTableEntry> EntriesOf(Language language) {
  switch (language) {
    case Language::English:
      return EnglishStringTable();
    case Language::Japanese:
      return JapaneseStringTable();
    case Language::Korean:
      return KoreanStringTable();
  }
  ThrowUnknownLanguage(language);
}

bool IsBetween(long long number, int first, int last) {
  return number >= first && number <= last;
}

/// Takes a wide number, so that adding a base to any int is safe.
const std::string& Find(const std::vector<std::string>& texts, long long number) {
  if (IsBetween(number, kFirstLabel, kLastLabel)) {
    return texts[static_cast<std::size_t>(number - kFirstLabel)];
  }
  if (IsBetween(number, kFirstMessage, kLastMessage)) {
    return texts[kLabelCount + static_cast<std::size_t>(number - kFirstMessage)];
  }
  throw std::logic_error("The string table has no entry " + std::to_string(number) + ".");
}

}  // namespace

StringTable::StringTable(Language language) : language_(language) {
  texts_.reserve(kStringTableSize);
  for (const StringTableEntry& entry : EntriesOf(language)) {
    texts_.emplace_back(entry.text);
  }
}

const std::string& StringTable::Message(int n) const {
  return Find(texts_, static_cast<long long>(n) + kFirstMessage);
}

const std::string& StringTable::Label(int n) const {
  return Find(texts_, static_cast<long long>(n) + kFirstLabel);
}

const std::string& StringTable::Text(int resourceNumber) const {
  return Find(texts_, resourceNumber);
}

const StringTable& StringTableFor(Language language) {
  static const StringTable english(Language::English);
  static const StringTable japanese(Language::Japanese);
  static const StringTable korean(Language::Korean);
  switch (language) {
    case Language::English:
      return english;
    case Language::Japanese:
      return japanese;
    case Language::Korean:
      return korean;
  }
  ThrowUnknownLanguage(language);
}

}  // namespace qmrules::shell
