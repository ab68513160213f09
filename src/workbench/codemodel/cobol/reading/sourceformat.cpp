#include "workbench/codemodel/cobol/reading/sourceformat.h"

#include <algorithm>

#include "workbench/codemodel/cobol/reading/characters.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// Long rows that are enough to tell wide from fixed form.
constexpr std::uint32_t kLongRows = 4096;

bool EqualWords(std::string_view upper, std::string_view text) {
  return upper.size() == text.size() &&
         std::equal(upper.begin(), upper.end(), text.begin(), [](char a, char b) { return a == UpperOf(b); });
}

bool Begins(std::string_view text, std::string_view upper) {
  return EqualWords(upper, text.substr(0, upper.size()));
}

// The place of a word in any case, or npos.
std::size_t Find(std::string_view text, std::string_view upper) {
  const auto found =
      std::search(text.begin(), text.end(), upper.begin(), upper.end(), [](char a, char b) { return UpperOf(a) == b; });
  return found == text.end() ? std::string_view::npos : static_cast<std::size_t>(found - text.begin());
}

std::string_view Trimmed(std::string_view text) {
  const char* const end = text.data() + text.size();
  const char* const begin = SkipBlanks(text.data(), end);
  return {begin, static_cast<std::size_t>(TrimBlanks(begin, end) - begin)};
}

bool IsNumberOrBlank(std::string_view sequence) {
  return std::ranges::all_of(sequence, [](char byte) { return IsDigit(byte) || IsBlank(byte); });
}

// A row from its first character on that is neither a digit nor a blank.
std::string_view BehindSequence(std::string_view row) {
  const char* at = row.data();
  const char* const end = at + row.size();
  const char* last = nullptr;
  while (at != last) {
    last = at;
    at = SkipBlanks(SkipDigits(at, end), end);
  }
  return {at, end};
}

// True for a character of statements that marks do not hold.
bool IsNoMark(char byte) {
  return byte == '\'' || byte == '"' || byte == '(' || byte == ')';
}

// Looks at rows until it is known what they are.
class FormatDetector {
 public:
  // False when no further row is needed.
  bool Take(std::string_view row);
  SourceFormat Answer() const;

 private:
  void TakeFixed(std::string_view row);
  void TakeIdentificationArea(std::string_view row);

  std::optional<SourceFormat> told_;
  std::uint32_t rows_ = 0;
  std::uint32_t code_ = 0;
  std::uint32_t notFixed_ = 0;
  std::uint32_t statements_ = 0;  // rows with text of statements behind column 72
  std::uint32_t marks_ = 0;       // rows with something else there
};

bool FormatDetector::Take(std::string_view row) {
  const std::string_view rest = BehindSequence(row);
  if (rest.empty()) {
    if (!Trimmed(row).empty()) ++rows_;
    return true;
  }
  if (rest.starts_with(">>") || rest.starts_with('$')) {
    if (const auto format = FormatOfDirective(rest)) {
      if (code_ == 0) told_ = format;
      return false;
    }
  }
  ++rows_;
  if (Begins(rest, "CBL ") || Begins(rest, "PROCESS ")) return true;
  TakeFixed(row);
  return true;
}

void FormatDetector::TakeFixed(std::string_view row) {
  const bool tabbed = std::ranges::any_of(row.substr(0, 7), [](char byte) { return byte == '\t'; });
  char indicator = ' ';
  std::string_view sequence = row.substr(0, 6);
  if (!tabbed && row.size() > 6) {
    // Columns count characters.
    std::size_t at = 0;
    for (int column = 1; column < 7 && at < row.size(); ++column) {
      ++at;
      while (at < row.size() && (static_cast<unsigned char>(row[at]) & 0xC0) == 0x80) ++at;
    }
    sequence = row.substr(0, at);
    indicator = at < row.size() ? row[at] : ' ';
  }
  switch (indicator) {
    case '*':
    case '/':
    case '$':
    case '>':
      return;
    case ' ':
    case '-':
      break;
    case 'D':
    case 'd':
      if (!IsNumberOrBlank(sequence)) ++notFixed_;
      break;
    default:
      ++notFixed_;
      break;
  }
  ++code_;
  if (row.size() > 72 && !tabbed) TakeIdentificationArea(row);
}

void FormatDetector::TakeIdentificationArea(std::string_view row) {
  if (statements_ + marks_ >= kLongRows) return;
  const std::string_view rest = row.substr(72);
  const std::string_view text = Trimmed(rest);
  if (text.empty()) return;
  const bool joined = !IsBlank(row[71]) && !IsBlank(rest.front());
  const bool pastMarks = text.data() + text.size() > row.data() + 80;
  const bool sentence = text.back() == '.' || std::ranges::any_of(text, IsNoMark);
  ++(joined || pastMarks || sentence ? statements_ : marks_);
}

SourceFormat FormatDetector::Answer() const {
  if (told_) return *told_;
  if (static_cast<std::uint64_t>(notFixed_) * 50 > rows_) return SourceFormat::Free;
  return statements_ > marks_ ? SourceFormat::WideFixed : SourceFormat::Fixed;
}

}  // namespace

std::string_view NameOf(SourceFormat format) {
  switch (format) {
    case SourceFormat::Fixed:
      return "fixed";
    case SourceFormat::WideFixed:
      return "wide";
    case SourceFormat::Free:
      break;
  }
  return "free";
}

std::optional<SourceFormat> SourceFormatNamed(std::string_view name) {
  if (EqualWords("FIXED", name)) return SourceFormat::Fixed;
  if (EqualWords("WIDE", name)) return SourceFormat::WideFixed;
  if (EqualWords("FREE", name)) return SourceFormat::Free;
  return std::nullopt;
}

SourceFormat DetectFormat(std::string_view text) {
  FormatDetector detector;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    if (!detector.Take(text.substr(0, end))) break;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return detector.Answer();
}

SourceFormat DetectFormat(const SourceFile& file) {
  FormatDetector detector;
  for (std::uint32_t row = 1; row <= file.Rows(); ++row) {
    if (!detector.Take(file.Row(row))) break;
  }
  return detector.Answer();
}

std::optional<SourceFormat> FormatOfDirective(std::string_view directive) {
  const auto first = std::ranges::find_if(directive, [](char byte) { return ClassOf(byte) == CharacterClass::Letter; });
  directive = {first, directive.end()};
  if (!Begins(directive, "SOURCE") && !Begins(directive, "SET")) return std::nullopt;
  const std::size_t source = Find(directive, "SOURCE");
  if (source == std::string_view::npos) return std::nullopt;
  const std::string_view form = directive.substr(source);
  if (Find(form, "FREE") != std::string_view::npos) return SourceFormat::Free;
  if (Find(form, "FIXED") != std::string_view::npos) return SourceFormat::Fixed;
  if (Find(form, "VARIABLE") != std::string_view::npos) return SourceFormat::WideFixed;
  return std::nullopt;
}

}  // namespace qmrules::workbench::codemodel::cobol
