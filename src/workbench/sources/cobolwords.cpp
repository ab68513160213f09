#include "workbench/sources/cobolwords.h"

#include <algorithm>

#include "shell/casefold.h"
#include "shell/utf8.h"

namespace qmrules::workbench {

namespace {

constexpr std::string_view blanks = " \t\r\f\v\x1a";

// Letters beyond ASCII are word characters too; bytes of one character are never parted.
bool IsWordCharacter(char character) {
  const auto code = static_cast<unsigned char>(character);
  return code >= 128 || (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z') ||
         character == '-' || character == '_' || character == '#' || character == '@' || character == '$';
}

std::string_view TrimLeft(std::string_view text) {
  const auto at = text.find_first_not_of(blanks);
  return at == std::string_view::npos ? std::string_view() : text.substr(at);
}

bool IsBlank(std::string_view text) {
  return TrimLeft(text).empty();
}

// The bytes of the first `count` characters; the whole text when it is shorter.
std::size_t BytesOf(std::string_view text, std::size_t count) {
  std::size_t at = 0;
  for (; count > 0 && at < text.size(); --count) at += shell::DecodeAt(text, at).length;
  return at;
}

// A line by its columns in fixed form.
struct FixedLine {
  std::string_view sequence;  // columns 1 to 6
  char indicator = ' ';       // column 7
  std::string_view code;      // columns 8 to 72
};

FixedLine SplitFixed(std::string_view line) {
  // A tab leads to the code area, wherever it stands before it.
  const std::size_t tab = line.substr(0, std::min<std::size_t>(line.size(), 7)).find('\t');
  if (tab != std::string_view::npos) return {line.substr(0, tab), ' ', line.substr(tab + 1)};
  const std::size_t sequenceEnd = BytesOf(line, 6);
  FixedLine fixed{line.substr(0, sequenceEnd), ' ', {}};
  line.remove_prefix(sequenceEnd);
  if (line.empty()) return fixed;
  fixed.indicator = line.front();
  line.remove_prefix(BytesOf(line, 1));
  fixed.code = line.substr(0, BytesOf(line, 65));
  return fixed;
}

bool IsNumberOrBlank(std::string_view sequence) {
  return sequence.find_first_not_of("0123456789 \t") == std::string_view::npos;
}

bool Begins(std::string_view text, std::string_view beginning) {
  return shell::EqualIgnoringCase(text.substr(0, beginning.size()), beginning);
}

bool CanBeFixed(std::string_view line) {
  const std::string_view text = TrimLeft(line);
  // Compiler options stand anywhere on their line.
  if (Begins(text, "CBL ") || Begins(text, "PROCESS ")) return true;
  const FixedLine fixed = SplitFixed(line);
  switch (fixed.indicator) {
    case ' ':
    case '*':
    case '/':
    case '-':
    case '$':
    case '>':
      return true;
    case 'D':
    case 'd':
      return IsNumberOrBlank(fixed.sequence);
    default:
      return false;
  }
}

bool IsDirective(std::string_view code) {
  return code.starts_with(">>") || code.starts_with("$");
}

std::optional<SourceFormat> FormatOfDirective(std::string_view line) {
  const auto at = line.find_first_not_of("0123456789 \t");
  if (at == std::string_view::npos || !IsDirective(line.substr(at))) return std::nullopt;
  const std::string text = shell::ToUpper(line);
  const auto source = text.find("SOURCE");
  if (source == std::string::npos) return std::nullopt;
  if (text.find("FREE", source) != std::string::npos) return SourceFormat::Free;
  if (text.find("FIXED", source) != std::string::npos) return SourceFormat::Fixed;
  return std::nullopt;
}

struct CodeLine {
  std::string_view code;
  bool continues = false;
};

// What the line adds to the program; nothing for a comment, a directive, a debugging line and a blank one.
std::optional<CodeLine> CodeOf(std::string_view line, SourceFormat format) {
  const FixedLine fixed = SplitFixed(line);
  const bool isComment = fixed.indicator == '*' || fixed.indicator == '/';
  std::string_view code = line;
  bool continues = false;
  if (format == SourceFormat::Fixed) {
    if (isComment || fixed.indicator == 'D' || fixed.indicator == 'd' || fixed.indicator == '$' ||
        fixed.indicator == '>') {
      return std::nullopt;
    }
    code = fixed.code;
    continues = fixed.indicator == '-';
  } else if (isComment && IsNumberOrBlank(fixed.sequence)) {
    return std::nullopt;
  }
  code = TrimLeft(code);
  if (code.empty() || code.front() == '*' || IsDirective(code)) return std::nullopt;
  return CodeLine{code, continues};
}

}  // namespace

SourceFormat DetectFormat(std::string_view text) {
  std::size_t lines = 0;
  std::size_t notFixed = 0;
  platform::LineReader reader(text);
  while (const auto line = reader.Next()) {
    if (IsBlank(*line)) continue;
    if (const auto format = FormatOfDirective(*line)) return *format;
    ++lines;
    if (!CanBeFixed(*line)) ++notFixed;
  }
  return notFixed * 50 > lines ? SourceFormat::Free : SourceFormat::Fixed;
}

bool CobolWords::NextLine() {
  if (ahead_) {
    code_ = *ahead_;
    ahead_.reset();
    lineBegins_ = true;
    return true;
  }
  while (const auto line = lines_.Next()) {
    if (const auto found = CodeOf(*line, format_)) {
      code_ = found->code;
      lineBegins_ = true;
      return true;
    }
  }
  return false;
}

// True, with the continuation as the code to be read, when the next line of code continues the current one.
bool CobolWords::ContinuesOnNextLine() {
  if (ahead_) return false;
  while (const auto line = lines_.Next()) {
    const auto found = CodeOf(*line, format_);
    if (!found) continue;
    if (!found->continues) {
      ahead_ = found->code;
      return false;
    }
    code_ = found->code;
    return true;
  }
  return false;
}

void CobolWords::ReadWord(CobolWord& word) {
  do {
    const auto end = std::ranges::find_if_not(code_, IsWordCharacter);
    const auto length = static_cast<std::size_t>(end - code_.begin());
    word.text += code_.substr(0, length);
    code_.remove_prefix(length);
  } while (IsBlank(code_) && ContinuesOnNextLine());
}

void CobolWords::ReadLiteral(CobolWord& word, char quote) {
  code_.remove_prefix(1);
  while (true) {
    const auto end = code_.find(quote);
    word.text += code_.substr(0, end);
    if (end != std::string_view::npos) {
      code_.remove_prefix(end + 1);
      // Doubled, it stands for itself.
      if (!code_.starts_with(quote)) return;
      word.text += quote;
      code_.remove_prefix(1);
      continue;
    }
    code_ = {};
    if (!ContinuesOnNextLine() || !code_.starts_with(quote)) return;
    code_.remove_prefix(1);
  }
}

std::optional<CobolWord> CobolWords::Next() {
  while (true) {
    code_ = TrimLeft(code_);
    if (code_.empty()) {
      if (!NextLine()) return std::nullopt;
      continue;
    }
    if (code_.starts_with("*>")) {
      code_ = {};
      continue;
    }
    CobolWord word;
    word.row = lines_.Row();
    word.firstOnLine = lineBegins_;
    lineBegins_ = false;
    const char first = code_.front();
    if (first == '\'' || first == '"') {
      word.kind = CobolWord::Kind::Literal;
      ReadLiteral(word, first);
      return word;
    }
    if (first == '.') {
      word.kind = CobolWord::Kind::Period;
      code_.remove_prefix(1);
      return word;
    }
    if (IsWordCharacter(first)) {
      ReadWord(word);
      return word;
    }
    code_.remove_prefix(1);
  }
}

}  // namespace qmrules::workbench
