#include "workbench/codemodel/cobol/reading/replacements.h"

#include <algorithm>
#include <string_view>

#include "workbench/codemodel/cobol/reading/characters.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

bool CanBePicture(std::string_view text) {
  return !text.empty() && text.find_first_not_of("ABCDEGNPRSUVXZabcdegnprsuvxz0123456789/,.+-*$()") == text.npos;
}

// ":LEN:" and "(LEN)", as opposed to "(5)".
bool CanBeTag(std::string_view text) {
  return text.size() > 1 && (text[0] == ':' || (text[0] == '(' && IsLetter(text[1])));
}

}  // namespace

Replacements::Replacements(std::span<const ReplacementPair> pairs, ExpandedText& text) {
  pairs_.reserve(pairs.size());
  for (const auto& written : pairs) {
    Pair pair;
    pair.part = written.part;
    for (const Token& token : written.from) {
      const std::string_view word = text.Text(token);
      pair.from.push_back({token.kind, token.Has(kAdjacent), token.symbol, std::string(word)});
      pair.partialWord += word;
    }
    pair.tag = CanBeTag(pair.partialWord);
    std::string whole;
    for (Token token : written.to) {
      std::string word(text.Text(token));
      whole += word;
      token.text = static_cast<std::uint32_t>(text.composed.size());
      token.flags = static_cast<std::uint8_t>((token.flags & (kAdjacent | kUnclosed)) | kComposed | kReplaced);
      text.composed.push_back(std::move(word));
      pair.to.push_back(token);
    }
    pair.picture = CanBePicture(whole);
    const auto index = static_cast<std::uint32_t>(pairs_.size());
    if (pair.part == ReplacementPair::Part::Whole) {
      const std::uint32_t key = KeyOf(pair.from[0].kind, pair.from[0].symbol);
      whole_.emplace_back(key, index);
      mask_ |= std::uint64_t{1} << (key & 63);
      if (pair.tag || pair.picture) inPictures_.push_back(index);
    } else {
      partial_.push_back(index);
    }
    pairs_.push_back(std::move(pair));
  }
  std::ranges::sort(whole_);
}

void Replacements::FindCandidates(const Token& token, std::vector<std::uint32_t>& candidates) const {
  candidates.clear();
  const std::uint32_t key = KeyOf(token.kind, token.symbol);
  auto whole = std::ranges::lower_bound(whole_, std::pair{key, std::uint32_t{0}});
  for (; whole != whole_.end() && whole->first == key; ++whole) candidates.push_back(whole->second);
  if (token.kind != TokenKind::Word || partial_.empty()) return;
  const auto middle = static_cast<std::ptrdiff_t>(candidates.size());
  candidates.insert(candidates.end(), partial_.begin(), partial_.end());
  std::inplace_merge(candidates.begin(), candidates.begin() + middle, candidates.end());
}

}  // namespace qmrules::workbench::codemodel::cobol
