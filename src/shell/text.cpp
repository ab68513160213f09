#include "shell/text.h"

#include <cstddef>

namespace qmrules::shell {
namespace {

constexpr std::size_t kPlaceholders = 3;
constexpr unsigned kReferenceBase = 65000;

/// `Argument` is std::string or std::string_view.
template <typename Argument>
std::string Substitute(std::string_view format, std::span<const Argument> args) {
  std::string result;
  result.reserve(format.size());
  for (std::size_t position = 0; position < format.size(); ++position) {
    const char character = format[position];
    if (character == '%' && position + 1 < format.size()) {
      const char digit = format[position + 1];
      const std::size_t index = digit >= '1' ? static_cast<std::size_t>(digit - '1') : kPlaceholders;
      if (index < kPlaceholders && index < args.size()) {
        result += args[index];
        ++position;
        continue;
      }
    }
    result += character;
  }
  return result;
}

}  // namespace

std::string SafeText(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  // No byte of a sequence of several is below 32, so bytes are as good as characters here.
  for (const char character : text) {
    const unsigned code = static_cast<unsigned char>(character);
    if (code >= 32 || code == 9 || code == 10 || code == 13) {
      result += character;
    } else if (code == 14) {
      result += '}';
    } else if (code == 15) {
      result += '{';
    } else if (code != 0) {
      result += "&#";
      result += std::to_string(kReferenceBase - code);
      result += ';';
    }
  }
  return result;
}

std::string HtmlText(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (const char character : text) {
    switch (character) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += character;
    }
  }
  return result;
}

std::string XPathLiteral(std::string_view text) {
  if (text.find('"') == std::string_view::npos) {
    return '"' + std::string(text) + '"';
  }
  if (text.find('\'') == std::string_view::npos) {
    return '\'' + std::string(text) + '\'';
  }
  char quote = '"';
  std::string result = "concat(\"";
  for (const char character : text) {
    if (character == quote) {
      result += quote;
      result += ',';
      quote = quote == '"' ? '\'' : '"';
      result += quote;
    }
    result += character;
  }
  result += quote;
  // concat() wants two arguments at least; this one makes any number of pieces enough.
  result += ",\"\")";
  return result;
}

std::string Subst(std::string_view format, std::span<const std::string> args) {
  return Substitute(format, args);
}

std::string Subst(std::string_view format, std::initializer_list<std::string_view> args) {
  return Substitute(format, std::span<const std::string_view>(args.begin(), args.size()));
}

}  // namespace qmrules::shell
