#include "workbench/codemodel/cobol/reading/expansion.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "platform/error.h"
#include "workbench/codemodel/cobol/reading/characters.h"
#include "workbench/codemodel/cobol/reading/words.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// What every program may cost, besides what its files allow.
constexpr std::size_t kFreeTokens = 100'000;
constexpr std::size_t kFreeBytes = std::size_t{16} * 1024 * 1024;
constexpr std::size_t kFreeComparisons = 10'000'000;
constexpr std::size_t kComparisonsForToken = 16;
// REPLACE ALSO statements that are active together.
constexpr std::size_t kMostActive = 16;

std::string TitleOf(std::string_view name, std::string_view library) {
  return library.empty() ? std::string(name) : fmt::format("{} in {}", name, library);
}

// True for the areas that every SQL program can include: they are supplied where no file holds them.
bool IsSuppliedSqlArea(std::string_view name) {
  const auto is = [&](std::string_view area) {
    return std::ranges::equal(name, area, [](char letter, char upper) { return UpperOf(letter) == upper; });
  };
  return is("SQLCA") || is("SQLDA");
}

// The name behind "++INCLUDE" or "-INC", in any case; "" for another directive.
std::string LibrarianName(std::string_view directive) {
  if (!directive.starts_with("++") && !directive.starts_with('-')) return "";
  const std::size_t blank = directive.find_first_of(" \t");
  if (blank == std::string_view::npos) return "";
  directive.remove_prefix(std::min(directive.find_first_not_of(" \t", blank), directive.size()));
  std::string_view name = directive.substr(0, directive.find_first_of(" \t,"));
  while (!name.empty() && (name.back() == '.' || name.back() == '\'' || name.back() == '"')) name.remove_suffix(1);
  while (!name.empty() && (name.front() == '\'' || name.front() == '"')) name.remove_prefix(1);
  return std::string(name);
}

// REPLACE takes the place of those before it, REPLACE ALSO is added to them, the oldest falling out where there are too
// many. OFF ends all, LAST OFF the newest.
void SetActive(std::vector<std::vector<ReplacementPair>>& active, ReplaceStatement statement) {
  const bool onlyLast = statement.off && statement.last;
  if (!statement.also && !onlyLast) active.clear();
  if (onlyLast && !active.empty()) active.pop_back();
  if (statement.off) return;
  if (active.size() == kMostActive) active.erase(active.begin());
  active.push_back(std::move(statement.pairs));
}

}  // namespace

Expansion::Result Expansion::Run(const SourceProvider::Source& source) {
  budget_ = {std::min(kFreeTokens, limits_.tokens), kFreeBytes, kFreeComparisons};
  ReadFile program = LexSource(source, options_, symbols_);
  programFormat_ = program.lexed.format;
  options_.decimalComma = options_.decimalComma || program.lexed.decimalComma;
  options_.debuggingLines = options_.debuggingLines || program.lexed.debuggingMode;
  text_.decimalComma = options_.decimalComma;
  text_.isFreeForm = program.lexed.format == SourceFormat::Free;
  text_.inclusions.emplace_back();
  if (program.places.empty()) {
    EnterPlain(std::move(program));
    return std::move(result_);
  }
  const auto file = std::make_shared<const ReadFile>(std::move(program));
  Enter(file);
  text_.tokens.reserve(file->lexed.tokens.size() * 2);
  ExpandFile({file, {}}, text_.tokens);
  text_.tokens.push_back(file->lexed.tokens.back());
  if (hasReplace_) ReplaceAll();
  return std::move(result_);
}

// A program that is its own expanded text.
void Expansion::EnterPlain(ReadFile program) {
  LexedFile& lexed = program.lexed;
  text_.files.push_back(lexed.file);
  text_.hashes.push_back({program.hash[0], program.hash[1]});
  text_.commentRows.push_back(std::move(lexed.commentRows));
  text_.tokens = std::move(lexed.tokens);
  text_.composed = std::move(lexed.composed);
  result_.diagnostics = std::move(lexed.diagnostics);
}

// The number of the file, which is made known to the program when it is new.
std::uint32_t Expansion::Enter(const std::shared_ptr<const ReadFile>& file) {
  const LexedFile& lexed = file->lexed;
  const auto number = static_cast<std::uint32_t>(text_.files.size());
  const auto [known, isNew] = fileNumbers_.emplace(lexed.file->Name(), number);
  if (!isNew) return known->second;
  text_.files.push_back(lexed.file);
  text_.hashes.push_back({file->hash[0], file->hash[1]});
  text_.commentRows.push_back(lexed.commentRows);
  composedStarts_.push_back(static_cast<std::uint32_t>(text_.composed.size()));
  text_.composed.insert(text_.composed.end(), lexed.composed.begin(), lexed.composed.end());
  result_.diagnostics.insert(result_.diagnostics.end(), lexed.diagnostics.begin(), lexed.diagnostics.end());
  const std::size_t tokens = std::min(lexed.tokens.size() * limits_.growth, limits_.tokens - granted_);
  granted_ += tokens;
  budget_.tokens += tokens;
  budget_.bytes += lexed.file->Text().size() * limits_.growth;
  budget_.comparisons += lexed.tokens.size() * limits_.growth * kComparisonsForToken;
  if (number == 0) return number;
  if ((lexed.decimalComma && !options_.decimalComma) || (lexed.debuggingMode && !options_.debuggingLines)) {
    if (!result_.again) result_.again = options_;
    result_.again->decimalComma = result_.again->decimalComma || lexed.decimalComma;
    result_.again->debuggingLines = result_.again->debuggingLines || lexed.debuggingMode;
  }
  return number;
}

void Expansion::ExpandFile(const Reading& reading, std::vector<Token>& out) {
  conditions_.EnterFile();
  const LexedFile& lexed = reading.file->lexed;
  const std::size_t size = lexed.tokens.size() - 1;
  std::size_t position = 0;
  const auto takeUpTo = [&](std::size_t end) {
    if (end <= position) return;
    if (conditions_.IsActive()) TakeTokens(reading, position, end, out);
    position = end;
  };
  for (const DirectingPlace& place : reading.file->places) {
    const bool isDirective = place.kind == DirectingPlace::Kind::Directive;
    if (place.token < position && !isDirective) continue;
    takeUpTo(place.token);
    if (isDirective) {
      TakeDirective(reading, lexed.directives[place.directive], out);
    } else if (conditions_.IsActive()) {
      if (place.kind == DirectingPlace::Kind::Copy) position = TakeCopy(reading, place.token, out);
      if (place.kind == DirectingPlace::Kind::SqlInclude) position = TakeSqlInclude(reading, place.token, out);
      if (place.kind == DirectingPlace::Kind::Replace) hasReplace_ = true;
    }
  }
  takeUpTo(size);
  if (std::string problem = conditions_.LeaveFile(); !problem.empty()) {
    Report(Severity::Warning, *lexed.file, static_cast<std::uint32_t>(lexed.file->Text().size()), std::move(problem));
  }
}

void Expansion::TakeTokens(const Reading& reading, std::size_t first, std::size_t end, std::vector<Token>& out) {
  const std::vector<Token>& tokens = reading.file->lexed.tokens;
  const auto at = [&](std::size_t index) { return tokens.begin() + static_cast<std::ptrdiff_t>(index); };
  const std::size_t start = out.size();
  out.insert(out.end(), at(first), at(end));
  for (std::size_t index = start; index < out.size(); ++index) out[index] = reading.placement(out[index]);
  Spend(end - first, 0);
}

void Expansion::Spend(std::size_t tokens, std::size_t bytes) {
  budget_.tokens -= std::min(budget_.tokens, tokens);
  budget_.bytes -= std::min(budget_.bytes, bytes);
}

void Expansion::TakeDirective(const Reading& reading, const Directive& directive, std::vector<Token>& out) {
  const SourceFile& file = *reading.file->lexed.file;
  const std::string_view text = reading.file->lexed.Text(directive);
  if (std::string problem = conditions_.Take(text); !problem.empty()) {
    Report(Severity::Warning, file, directive.offset, std::move(problem));
  }
  if (!conditions_.IsActive()) return;
  Request request;
  request.name = LibrarianName(text);
  if (request.name.empty()) return;
  request.offset = directive.offset;
  request.end = directive.offset + directive.length;
  request.row = request.endRow = directive.row;
  Include(reading, request, out);
}

// Works off the COPY statement and returns the place behind it.
std::size_t Expansion::TakeCopy(const Reading& reading, std::size_t first, std::vector<Token>& out) {
  const LexedFile& lexed = reading.file->lexed;
  const CopyStatement statement = ParseCopy(reading, first);
  const Token& copy = lexed.tokens[first];
  const Token& last = lexed.tokens[statement.end - 1];
  if (!statement.fault.text.empty()) {
    Report(Severity::Gap, *lexed.file, lexed.tokens[statement.fault.token].offset, statement.fault.text);
  } else if (!statement.hasPeriod) {
    Report(Severity::Warning, *lexed.file, copy.offset,
           fmt::format("The full stop behind COPY {} is missing.", TitleOf(statement.name, statement.library)));
  }
  Spend(statement.end - first, last.offset + last.length - copy.offset);
  if (statement.name.empty()) return statement.end;
  Request request;
  request.name = statement.name;
  request.library = statement.library;
  request.pairs = &statement.pairs;
  request.offset = copy.offset;
  request.end = last.offset + last.length;
  request.row = copy.row;
  request.endRow = last.row;
  Include(reading, request, out);
  return statement.end;
}

// A COPY in a copybook can have its name by the REPLACING around it: COPY :TAG:REC.
CopyStatement Expansion::ParseCopy(const Reading& reading, std::size_t first) {
  const std::vector<Token>& tokens = reading.file->lexed.tokens;
  CopyStatement statement = DirectingStatementParser(tokens, reading.placement, text_).ParseCopy(first);
  const bool isSimple = (tokens[first + 1].kind == TokenKind::Word || tokens[first + 1].kind == TokenKind::Literal) &&
                        (!tokens[first + 2].Has(kAdjacent) || tokens[first + 2].kind == TokenKind::Period);
  if (around_.empty() || isSimple || !statement.fault.text.empty()) return statement;
  std::vector<Token> replaced;
  for (std::size_t index = first; index < statement.end; ++index) replaced.push_back(reading.placement(tokens[index]));
  for (auto replacements = around_.rbegin(); replacements != around_.rend(); ++replacements) {
    std::vector<Token> in;
    in.swap(replaced);
    Replacer(text_, symbols_, options_, budget_).Apply(**replacements, in, replaced);
  }
  replaced.push_back(tokens.back());
  CopyStatement known = DirectingStatementParser(replaced, {}, text_).ParseCopy(0);
  known.end = statement.end;
  known.hasPeriod = statement.hasPeriod;
  known.fault.token = first;
  return known;
}

// EXEC SQL INCLUDE name END-EXEC, with the full stop behind it where that ends nothing else.
std::size_t Expansion::TakeSqlInclude(const Reading& reading, std::size_t first, std::vector<Token>& out) {
  const LexedFile& lexed = reading.file->lexed;
  const std::vector<Token>& tokens = lexed.tokens;
  std::size_t index = first + 3;
  Request request;
  request.isSql = true;
  if (!IsWord(tokens[index], Word::EndExec)) {
    request.name = DirectingStatementParser(tokens, reading.placement, text_).ParseName(index);
  }
  const bool isEnded = IsWord(tokens[index], Word::EndExec);
  if (isEnded) ++index;
  request.offset = tokens[first].offset;
  request.end = tokens[index - 1].offset + tokens[index - 1].length;
  request.row = tokens[first].row;
  request.endRow = tokens[index - 1].row;
  if (request.name.empty()) {
    Report(Severity::Gap, *lexed.file, request.offset, "EXEC SQL INCLUDE names no text.");
  } else {
    if (!isEnded) Report(Severity::Warning, *lexed.file, request.offset, "EXEC SQL INCLUDE is not ended by END-EXEC.");
    Include(reading, request, out);
  }
  const bool endsNothing = out.empty() || out.back().kind == TokenKind::Period;
  return tokens[index].kind == TokenKind::Period && endsNothing ? index + 1 : index;
}

void Expansion::Include(const Reading& reading, const Request& request, std::vector<Token>& out) {
  const SourceFile& asking = *reading.file->lexed.file;
  const std::string title = TitleOf(request.name, request.library);
  const std::string file = FileOf(request);
  if (file.empty()) {
    if (request.isSql && IsSuppliedSqlArea(request.name)) return;
    Report(Severity::Gap, asking, request.offset,
           fmt::format("Copybook {} was not found. Name the folder that holds it with --copybooks.", title));
    return;
  }
  if (std::string refusal = Refusal(reading, file, title); !refusal.empty()) {
    Report(Severity::Gap, asking, request.offset, std::move(refusal));
    return;
  }
  std::shared_ptr<const ReadFile> copybook;
  try {
    copybook = copybooks_.Get(file, options_, programFormat_);
  } catch (const platform::Error& failure) {
    Report(Severity::Gap, asking, request.offset, fmt::format("Copybook {} cannot be read: {}", title, failure.what()));
    return;
  }
  const std::uint32_t number = Enter(copybook);
  const bool hasPairs = request.pairs != nullptr && !request.pairs->empty();
  if (copybook->lexed.tokens.size() > budget_.tokens || (hasPairs && budget_.IsSpent())) {
    Report(Severity::Gap, asking, request.offset,
           fmt::format("Copybook {} was left out: with it the program grows past what can be read.", title));
    return;
  }
  IncludeFile(reading, request, number, copybook, out);
}

// The file that the name means, or "". Each name is looked for once and noted as a dependency.
std::string Expansion::FileOf(const Request& request) {
  std::string key = request.name;
  key += '\0';
  key += request.library;
  const auto [known, isNew] = dependencyNumbers_.emplace(std::move(key), text_.dependencies.size());
  if (isNew) {
    auto file = provider_.FindCopybook(request.name, request.library, text_.files[0]->Name());
    text_.dependencies.push_back({request.name, request.library, std::move(file).value_or("")});
  }
  return text_.dependencies[known->second].file;
}

// The files from this one down to the one that is being worked off, when it is among them; or "".
std::string Expansion::RingOf(const Reading& reading, const std::string& file) const {
  const auto known = fileNumbers_.find(file);
  if (known == fileNumbers_.end()) return "";
  std::vector<std::uint32_t> above;
  for (std::uint32_t inclusion = reading.placement.inclusion;; inclusion = text_.inclusions[inclusion].parent) {
    above.push_back(text_.inclusions[inclusion].file);
    if (above.back() == known->second) break;
    if (inclusion == 0) return "";
  }
  std::string ring;
  for (auto number = above.rbegin(); number != above.rend(); ++number) ring += text_.files[*number]->Name() + ", ";
  return ring + file;
}

// Why the file cannot be taken in at this place, or "".
std::string Expansion::Refusal(const Reading& reading, const std::string& file, std::string_view title) const {
  const std::vector<Inclusion>& inclusions = text_.inclusions;
  const std::uint32_t depth = inclusions[reading.placement.inclusion].depth;
  if (const std::string ring = RingOf(reading, file); !ring.empty()) {
    return fmt::format("Copybook {} copies itself ({}); this COPY was left out.", title, ring);
  }
  if (depth >= limits_.depth) {
    return fmt::format("Copybook {} was left out: COPY statements lie more than {} deep.", title, limits_.depth);
  }
  if (inclusions.size() > limits_.inclusions) {
    return fmt::format("Copybook {} was left out: the program has more than {} COPY statements.", title,
                       limits_.inclusions);
  }
  return "";
}

void Expansion::IncludeFile(const Reading& reading, const Request& request, std::uint32_t file,
                            const std::shared_ptr<const ReadFile>& copybook, std::vector<Token>& out) {
  const std::uint32_t parent = reading.placement.inclusion;
  const auto inclusion = static_cast<std::uint32_t>(text_.inclusions.size());
  text_.inclusions.push_back(
      {file, parent, text_.inclusions[parent].depth + 1, request.offset, request.end, request.row, request.endRow});
  const Reading inner{copybook, {inclusion, composedStarts_[file]}};
  if (request.pairs == nullptr || request.pairs->empty()) {
    ExpandFile(inner, out);
    return;
  }
  const Replacements replacements(*request.pairs, text_);
  std::vector<Token> tokens;
  tokens.reserve(copybook->lexed.tokens.size());
  around_.push_back(&replacements);
  ExpandFile(inner, tokens);
  around_.pop_back();
  if (Replacer(text_, symbols_, options_, budget_).Apply(replacements, tokens, out)) return;
  Report(Severity::Gap, *reading.file->lexed.file, request.offset,
         fmt::format("REPLACING was given up in copybook {}: it makes the program grow past what can be read.",
                     TitleOf(request.name, request.library)));
}

// Works off the REPLACE statements, which stand in the text behind all COPY.
void Expansion::ReplaceAll() {
  std::vector<Token> in;
  in.swap(text_.tokens);
  std::vector<Token>& out = text_.tokens;
  out.reserve(in.size());
  std::vector<std::vector<ReplacementPair>> active;  // of REPLACE ALSO the newest last
  std::optional<Replacements> replacements;
  std::size_t position = 0;
  const auto takeUpTo = [&](std::size_t end) {
    const std::span<const Token> piece = std::span(in).subspan(position, end - position);
    position = end;
    if (!replacements || replacements->Empty()) {
      out.insert(out.end(), piece.begin(), piece.end());
    } else if (!Replacer(text_, symbols_, options_, budget_).Apply(*replacements, piece, out) && !piece.empty()) {
      Report(Severity::Gap, text_.File(piece[0]), piece[0].offset,
             "REPLACE was given up: it makes the program grow past what can be read.");
      replacements.reset();
    }
  };
  for (std::size_t index = 0; index < in.size(); ++index) {
    if (!IsWord(in[index], Word::Replace) || !DirectingStatementParser::IsReplace(in, index)) continue;
    takeUpTo(index);
    ReplaceStatement statement = DirectingStatementParser(in, {}, text_).ParseReplace(index);
    if (!statement.fault.text.empty()) {
      const Token& place = in[statement.fault.token];
      Report(Severity::Gap, text_.File(place), place.offset, statement.fault.text);
    }
    position = statement.end;
    if (statement.also && active.size() == kMostActive) {
      Report(Severity::Gap, text_.File(in[index]), in[index].offset,
             fmt::format("More than {} REPLACE statements are active; the oldest was given up.", kMostActive));
    }
    SetActive(active, std::move(statement));
    std::vector<ReplacementPair> pairs;
    for (auto newest = active.rbegin(); newest != active.rend(); ++newest) {
      pairs.insert(pairs.end(), newest->begin(), newest->end());
    }
    replacements.emplace(pairs, text_);
    index = position - 1;
  }
  takeUpTo(in.size());
}

void Expansion::Report(Severity severity, const SourceFile& file, std::uint32_t offset, std::string text) {
  result_.diagnostics.push_back({severity, file.Name(), file.RowOf(offset), file.Column(offset), std::move(text)});
}

}  // namespace qmrules::workbench::codemodel::cobol
