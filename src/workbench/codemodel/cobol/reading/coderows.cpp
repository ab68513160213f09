#include "workbench/codemodel/cobol/reading/coderows.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "shell/utf8.h"
#include "workbench/codemodel/cobol/reading/characters.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

constexpr std::uint32_t kIndicatorColumn = 7;
constexpr std::uint32_t kFirstColumn = 8;  // of the program text area
constexpr std::uint32_t kAreaBColumn = 12;
constexpr std::uint32_t kLastColumn = 72;
constexpr std::uint32_t kTabColumns = 8;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
// A binary file would have one on every line.
constexpr std::size_t kMostWarnings = 1000;

// True when the text goes on with the word in any case, and the word ends there.
bool AtWord(const char* at, const char* end, std::string_view upper) {
  if (static_cast<std::size_t>(end - at) < upper.size()) return false;
  for (const char letter : upper) {
    if (UpperOf(*at++) != letter) return false;
  }
  return at == end || !IsWordCharacter(*at);
}

bool IsNumberOrBlank(const char* at, const char* end) {
  return std::all_of(at, end, [](char byte) { return IsDigit(byte) || IsBlank(byte); });
}

}  // namespace

bool IsDirectiveWord(const char* at, const char* end) {
  if (at == end) return false;
  if (*at == '$') {
    return std::ranges::any_of(std::initializer_list<std::string_view>{"SET", "IF", "ELSE", "ELIF", "END", "END-IF",
                                                                       "DISPLAY", "REGION", "END-REGION"},
                               [at, end](std::string_view word) { return AtWord(at + 1, end, word); });
  }
  if (*at == '-') return AtWord(at + 1, end, "INC");
  return *at == '+' && end - at > 1 && at[1] == '+' && AtWord(at + 2, end, "INCLUDE");
}

CodeRows::CodeRows(LexedFile& lexed, const LexerOptions& options)
    : lexed_(lexed),
      text_(lexed.file->Text().data()),
      format_(lexed.format),
      debuggingLines_(options.debuggingLines),
      twoColumns_(options.wideCharactersTakeTwoColumns),
      oneByteOneColumn_(lexed.file->IsAscii() && lexed.file->Text().find('\t') == std::string_view::npos) {}

bool CodeRows::Next(CodeRow& row) {
  const SourceFile& file = *lexed_.file;
  row.continuation = false;
  row.missing = 0;
  while (row_ < file.Rows()) {
    row.row = ++row_;
    const char* begin = text_ + file.RowStart(row_);
    const char* end = text_ + file.RowStart(row_ + 1);
    while (end != begin && (end[-1] == '\n' || end[-1] == '\r')) --end;
    if (row_ == 1 && std::string_view(begin, end).starts_with(kByteOrderMark)) begin += kByteOrderMark.size();
    while (begin != end && (*begin == '\f' || *begin == '\v')) ++begin;
    if (begin == end) continue;
    if (programAt_ == lexed_.tokens.size() && IsOptionsLine(begin, end)) continue;
    if (format_ == SourceFormat::Free ? TakeFree(row, begin, end) : TakeFixed(row, begin, end)) return true;
  }
  row.begin = row.end = row.areaB = text_ + file.Text().size();
  return false;
}

// CBL and PROCESS, which may stand in any column.
bool CodeRows::IsOptionsLine(const char* at, const char* end) const {
  const char* const text = std::find_if_not(at, end, [](char byte) { return IsDigit(byte) || IsBlank(byte); });
  return AtWord(text, end, "CBL") || AtWord(text, end, "PROCESS");
}

bool CodeRows::TakeFixed(CodeRow& row, const char* begin, const char* end) {
  // Lines for the compiler are allowed to begin in the sequence area.
  if (*begin == '>' || *begin == '$' || *begin == '+' || *begin == '-') {
    if (TakeDirectiveLine(row, begin, end)) return row.begin != row.end;
  }
  if (oneByteOneColumn_) {
    if (end - begin < kFirstColumn) {
      if (end - begin < kIndicatorColumn) return false;
      row.begin = row.end = row.areaB = end;
      row.missing = kLastColumn - kIndicatorColumn;
      return TakeIndicator(row, begin + kIndicatorColumn - 1);
    }
    row.begin = begin + kFirstColumn - 1;
    row.end = end;
    if (end - begin > kLastColumn) {
      if (format_ == SourceFormat::Fixed) row.end = begin + kLastColumn;
    } else {
      row.missing = kLastColumn - static_cast<std::uint32_t>(end - begin);
    }
    row.areaB = std::min(row.begin + (kAreaBColumn - kFirstColumn), row.end);
    return TakeIndicator(row, begin + kIndicatorColumn - 1);
  }
  const char* const indicator = SplitColumns(row, begin, end);
  return TakeIndicator(row, indicator);
}

// Passes over the character at `at` and gives the column behind it.
std::uint32_t CodeRows::ColumnBehind(std::uint32_t column, const char*& at, const char* end) const {
  const auto byte = static_cast<unsigned char>(*at);
  if (byte < 0x80) {
    ++at;
    return byte == '\t' ? ((column - 1) / kTabColumns + 1) * kTabColumns + 1 : column + 1;
  }
  const shell::Utf8Step step = shell::DecodeAt({at, static_cast<std::size_t>(end - at)}, 0);
  at += step.length;
  const bool halfWidthKatakana = step.value >= 0xFF61 && step.value <= 0xFF9F;
  return column + (twoColumns_ && !halfWidthKatakana && step.value < shell::kMalformedByte ? 2 : 1);
}

// The areas of a line with tabs or letters above ASCII. Gives its indicator, or where the text begins when a tab leads
// past the indicator's column.
const char* CodeRows::SplitColumns(CodeRow& row, const char* begin, const char* end) const {
  const char* at = begin;
  std::uint32_t column = 1;
  const auto walkTo = [&](std::uint32_t wanted) {
    while (at != end && column < wanted) {
      const char* next = at;
      const std::uint32_t behind = ColumnBehind(column, next, end);
      // A wide character that would reach past the last column lies outside.
      if (wanted == kLastColumn + 1 && behind > wanted && *at != '\t') break;
      at = next;
      column = behind;
    }
  };
  walkTo(kIndicatorColumn);
  const char* indicator = at;
  const bool hasIndicator = at != end && column == kIndicatorColumn && *at != '\t';
  walkTo(kFirstColumn);
  if (!hasIndicator) indicator = at;
  row.begin = at;
  walkTo(kAreaBColumn);
  row.areaB = at;
  walkTo(kLastColumn + 1);
  row.missing = column <= kLastColumn ? kLastColumn + 1 - column : 0;
  row.end = format_ == SourceFormat::Fixed ? at : end;
  return hasIndicator ? indicator : row.begin;
}

bool CodeRows::TakeIndicator(CodeRow& row, const char* indicator) {
  if (indicator == row.begin) return row.begin != row.end;
  switch (*indicator) {
    case ' ':
      return true;
    case '-':
      row.continuation = true;
      return true;
    case '*':
      // Options for the listing are no comments.
      if (AtWord(row.begin, row.end, "CBL") || AtWord(row.begin, row.end, "CONTROL")) return false;
      commentRows_.push_back(row.row);
      return false;
    case '/':
      commentRows_.push_back(row.row);
      return false;
    case 'D':
    case 'd':
      return debuggingLines_;
    case '$':
    case '#':
      TakeDirective(row, indicator);
      return false;
    case '>':
      if (row.begin != row.end && *row.begin == '>') {
        TakeDirective(row, indicator);
        return row.begin != row.end;
      }
      break;
    default:
      if (IsBlank(*indicator)) return true;
      break;
  }
  const bool visible = ClassOf(*indicator) != CharacterClass::Control;
  Warn(row.row, indicator,
       fmt::format("Column 7 holds {}, which is no indicator. The line is read as text.",
                   visible ? fmt::format("'{}'", std::string_view(indicator, row.begin)) : "a control character"));
  return true;
}

bool CodeRows::TakeDirectiveLine(CodeRow& row, const char* at, const char* end) {
  const bool marked = end - at > 1 && at[0] == '>' && at[1] == '>';
  if (!marked && !IsDirectiveWord(at, end)) return false;
  row.begin = at;
  row.end = end;
  TakeDirective(row, at);
  return true;
}

bool CodeRows::TakeFree(CodeRow& row, const char* begin, const char* end) {
  const char* const at = SkipBlanks(begin, end);
  if (at == end) return false;
  row.begin = at;
  row.end = end;
  row.areaB = at + 1;
  switch (*at) {
    case '*': {
      const bool sign = end - at > 1 && at[1] == '>';
      const bool line = end - at > 2 && at[1] == '*' && at[2] == '*';
      if (!sign && !line && at != begin && at - begin != kIndicatorColumn - 1) return true;
      commentRows_.push_back(row.row);
      return false;
    }
    case '/':
      if (at != begin) return true;
      commentRows_.push_back(row.row);
      return false;
    case '>':
    case '$':
    case '+':
    case '-':
      return !TakeDirectiveLine(row, at, end) || row.begin != row.end;
    default:
      break;
  }
  // A comment line of fixed form, with its sequence number.
  if (IsDigit(*begin) && end - begin >= kIndicatorColumn && begin[kIndicatorColumn - 1] == '*' &&
      IsNumberOrBlank(begin, begin + kIndicatorColumn - 1)) {
    commentRows_.push_back(row.row);
    return false;
  }
  return true;
}

void CodeRows::TakeDirective(CodeRow& row, const char* at) {
  if (at[0] == '>' && AtWord(at + 2, row.end, "D")) {
    row.begin = debuggingLines_ ? at + 3 : row.end;
    return;
  }
  std::string_view text(at, row.end);
  row.begin = row.end;
  text = text.substr(0, text.find("*>"));
  text = {at, TrimBlanks(at, at + text.size())};
  if (const auto format = FormatOfDirective(text)) {
    format_ = *format;
    return;
  }
  lexed_.directives.push_back({row.row, static_cast<std::uint32_t>(at - text_), static_cast<std::uint32_t>(text.size()),
                               static_cast<std::uint32_t>(lexed_.tokens.size())});
}

void CodeRows::TakeComment(const CodeRow& row) {
  commentRows_.push_back(row.row);
}

void CodeRows::Warn(std::uint32_t row, const char* at, std::string text) {
  if (lexed_.diagnostics.size() >= kMostWarnings) return;
  const SourceFile& file = *lexed_.file;
  lexed_.diagnostics.push_back(
      {Severity::Warning, file.Name(), row, file.Column(static_cast<std::uint32_t>(at - text_)), std::move(text)});
}

}  // namespace qmrules::workbench::codemodel::cobol
