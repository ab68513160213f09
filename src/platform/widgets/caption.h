#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qmrules::platform::widgets {

// In a caption "&" stands before the letter that reaches the widget from the keyboard (its mnemonic), and "&&" for the
// sign itself.

// The mnemonic, with case folded, or nothing. The first one counts.
std::optional<std::string> MnemonicOf(std::string_view caption);

// True when the letter, in any case, is the caption's mnemonic.
bool HasMnemonic(std::string_view caption, std::string_view letter);

// The caption as it is read aloud: without the marks.
std::string PlainCaption(std::string_view caption);

}  // namespace qmrules::platform::widgets
