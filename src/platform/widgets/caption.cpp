#include "platform/widgets/caption.h"

#include <cstddef>

#include "shell/text.h"

namespace qmrules::platform::widgets {

std::optional<std::string> MnemonicOf(std::string_view caption) {
  for (std::size_t at = caption.find('&'); at != std::string_view::npos; at = caption.find('&', at)) {
    const std::string_view behind = caption.substr(at + 1);
    if (behind.empty()) return std::nullopt;
    if (behind.front() != '&') {
      std::string letter = shell::LeftCharacters(behind, 1);
      if (letter.empty()) letter = shell::LeftCharacters(behind, 2);  // one code point of two characters
      return shell::FoldCase(letter);
    }
    at += 2;
  }
  return std::nullopt;
}

bool HasMnemonic(std::string_view caption, std::string_view letter) {
  const auto mnemonic = MnemonicOf(caption);
  return mnemonic && *mnemonic == shell::FoldCase(letter);
}

std::string PlainCaption(std::string_view caption) {
  std::string plain;
  plain.reserve(caption.size());
  for (std::size_t at = 0; at < caption.size(); ++at) {
    if (caption[at] == '&' && ++at == caption.size()) break;
    plain += caption[at];
  }
  return plain;
}

}  // namespace qmrules::platform::widgets
