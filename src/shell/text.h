#pragma once

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

// The routines over text that every folder uses: this header brings in all of them.
#include "shell/casefold.h"
#include "shell/language.h"
#include "shell/likepattern.h"
#include "shell/utf16.h"

namespace qmrules::shell {

/// Makes `text` safe for the repository and for XML: the one mapping of control characters in the system. Codes 9, 10
/// and 13 and all from 32 on are kept, code 0 is dropped, 14 becomes "}", 15 becomes "{", and any other code below 32
/// becomes "&#" and 65000 minus the code and ";". Bytes that are not well-formed UTF-8 are kept. Idempotent.
[[nodiscard]] std::string SafeText(std::string_view text);

/// `text` for report markup: "&", "<", ">" and the double quote become "&amp;", "&lt;", "&gt;" and "&quot;".
[[nodiscard]] std::string HtmlText(std::string_view text);

/// A string literal of XPath 1.0 whose value is `text`: in double quotes, in single quotes when it holds a double
/// quote, or a call of concat() when it holds both.
[[nodiscard]] std::string XPathLiteral(std::string_view text);

/// `format` with "%1", "%2" and "%3" replaced by the first, second and third argument, each as often as it occurs.
/// A placeholder without an argument stays. Text that was put in is data and not searched for placeholders.
[[nodiscard]] std::string Subst(std::string_view format, std::span<const std::string> args);
[[nodiscard]] std::string Subst(std::string_view format, std::initializer_list<std::string_view> args);

}  // namespace qmrules::shell
