#include "validation/plainrelocation.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "platform/linereader.h"
#include "shell/text.h"
#include "shell/trim.h"

namespace qmrules::test {

using validation::MatchRecord;
using validation::RuleRecord;

PlainRelocation::PlainRelocation(std::string_view fileText, bool collapseSpaces) : collapseSpaces_(collapseSpaces) {
  LoadLineIds(fileText);
  BuildSuffixTree();
}

void PlainRelocation::LoadLineIds(std::string_view fileText) {
  lineIds_.push_back(-1);
  lineRows_.push_back(0);
  std::int32_t row = 0;
  for (const auto raw : platform::SplitLines(fileText)) {
    const std::string safe = shell::SafeText(raw);
    const std::string line(shell::TrimBlanks(safe));
    ++row;
    if (line.empty()) continue;
    lineIds_.push_back(LineId(CollapseRuns(line), true));
    lineRows_.push_back(row);
  }
  lineIds_.push_back(-2);
  lineRows_.push_back(0);
  lineCount_ = static_cast<std::int32_t>(lineIds_.size()) - 1;
}

std::int32_t PlainRelocation::LineId(const std::string& key, bool add) {
  if (key.empty()) return 0;
  if (const std::int32_t* id = lineDictionary_.Find(key)) return *id;
  if (!add) return 0;
  const auto id = static_cast<std::int32_t>(lineDictionary_.Count()) + 1;
  lineDictionary_.Add(id, key);
  return id;
}

std::string PlainRelocation::CollapseRuns(std::string text) const {
  if (!collapseSpaces_) return text;
  for (std::size_t at = text.find("  "); at != std::string::npos; at = text.find("  ")) text.replace(at, 2, " ");
  return text;
}

void PlainRelocation::BuildSuffixTree() {
  const std::int32_t n = lineCount_;
  suffixNodes_.resize(static_cast<std::size_t>(2 * n) + 1);
  At(1) = {"root", 0, {}, 1, 1, 0, 0, 0, 0};
  nodeCount_ = 1;
  tail_ = 0;
  head_ = 1;
  for (currentSuffix_ = 1; currentSuffix_ < n; ++currentSuffix_) InsertSuffix();
  ++nodeCount_;
  At(nodeCount_) = {"leaf", n, {}, 0, 1, 0, n - 1, 1, 1};
  suffixNodes_.resize(static_cast<std::size_t>(nodeCount_) + 1);
}

bool PlainRelocation::PathMatches(std::int32_t x, std::int32_t limit, std::int32_t from, std::int32_t to) const {
  const Node& node = At(x);
  if (to < 0 || (limit == 0 && node.Depth == 0)) return true;
  if ((limit <= 0 && node.Depth > 0) || (node.Depth <= 0 && limit > 0)) return false;
  if (to > node.Depth || to > limit) return false;
  const std::int32_t pathStart = node.EdgeStart + node.EdgeLength - node.Depth;
  for (std::int32_t k = from; k <= to; ++k) {
    if (Id(pathStart + k - 1) != Id(currentSuffix_ + k - 1)) return false;
  }
  return true;
}

std::int32_t PlainRelocation::ChildBeginningWith(std::int32_t node, std::int32_t position) const {
  for (const std::int32_t child : At(node).Children) {
    if (Id(At(child).EdgeStart) == Id(position)) return child;
  }
  return 0;
}

void PlainRelocation::LinkHead() {
  const std::int32_t i = currentSuffix_;
  if (tail_ < i) {
    At(head_).SuffixLink = 1;
    return;
  }
  const std::int32_t limit = lineCount_ - i + 1;
  const std::int32_t w = tail_ - i + 1;
  std::int32_t v = At(At(head_).Parent).SuffixLink;
  while (!PathMatches(v, limit, 1, w)) {
    std::int32_t b = 1;
    while (!PathMatches(v, limit, w - b, w - b) || !PathMatches(v, limit, 1, w - b)) ++b;
    const std::int32_t c = std::max(w - b + 1, 1);
    v = ChildBeginningWith(v, i + c - 1);
    if (v == 0) throw std::logic_error("the head's string without its first number is not in the tree");
  }
  At(head_).SuffixLink = v;
}

void PlainRelocation::InsertSuffix() {
  const std::int32_t i = currentSuffix_;
  const std::int32_t n = lineCount_;
  if (At(head_).SuffixLink < 1) LinkHead();

  std::int32_t k = head_ == 1 ? 1 : At(head_).Depth;
  std::int32_t v = At(head_).SuffixLink;
  std::int32_t limitDepth = v > 1 ? At(v).Depth : 0;
  for (bool matching = true; matching;) {
    if (k <= limitDepth && v != 1) {
      if (PathMatches(v, n - i + 1, k, k)) {
        ++k;
      } else {
        matching = false;
      }
    } else if (const std::int32_t u = ChildBeginningWith(v, i + k - 1); u != 0) {
      v = u;
      ++k;
      limitDepth = At(u).Depth;
    } else {
      matching = false;
    }
  }
  const std::int32_t c = k - 1;
  const std::int32_t e = c + i - 1;
  const std::int32_t x = v;
  std::int32_t y = x;
  if (!PathMatches(x, c, 1, std::max(At(x).Depth, c))) {
    y = ++nodeCount_;
    const std::int32_t parent = At(x).Parent;
    At(y) = {"internal", i, {x}, 0, parent, 0, At(x).EdgeStart, c - At(parent).Depth, c};
    std::erase(At(parent).Children, x);
    At(parent).Children.push_back(y);
    At(x).Parent = y;
    At(x).EdgeLength -= At(y).EdgeLength;
    At(x).EdgeStart += At(y).EdgeLength;
    if (const std::int32_t b = At(x).BackLink; b >= 1 && At(b).Depth <= At(y).Depth + 1) {
      throw std::logic_error("a node is linked to the lower end of an edge although its own place lies on the edge");
    }
    if (At(y).Depth >= At(head_).Depth - 1 && At(y).Depth < At(At(head_).SuffixLink).Depth) At(head_).SuffixLink = y;
  }
  const std::int32_t l = At(head_).SuffixLink;
  if (At(l).BackLink < 1 || At(At(l).BackLink).Depth > At(head_).Depth) At(l).BackLink = head_;
  const std::int32_t z = ++nodeCount_;
  At(z) = {"leaf", i, {}, 0, y, 0, e + 1, n - e, At(y).Depth + n - e};
  At(y).Children.push_back(z);
  tail_ = e;
  head_ = y;
}

void PlainRelocation::FindSegment(std::int32_t node) {
  if (stopped_) return;
  const auto m = static_cast<std::int32_t>(segmentIds_.size());
  const Node& t = At(node);
  const std::int32_t saved = position_;
  bool matched = false;
  for (std::int32_t k = 1; position_ <= m && k <= t.EdgeLength; ++k) {
    if (Id(t.EdgeStart + k - 1) != segmentIds_[static_cast<std::size_t>(position_ - 1)]) {
      matched = false;
      if (position_ > saved) {
        position_ = saved;
        stopped_ = true;
      }
      break;
    }
    ++position_;
    matched = true;
    if (position_ > m) {
      matchFound_ = true;
      break;
    }
  }
  if (!matchFound_) {
    if (position_ > m || t.Kind == "leaf" || (node != 1 && !matched)) return;
    for (const std::int32_t child : t.Children) {
      FindSegment(child);
      if (matchFound_) return;
    }
    // The search is exact: what began on this edge ends here, and no later sibling is compared from its middle.
    if (node != 1) stopped_ = true;
    return;
  }
  AddMatches(node);
}

void PlainRelocation::AddMatches(std::int32_t node) {
  const auto m = static_cast<std::int32_t>(segmentIds_.size());
  std::vector<std::int32_t> starts;
  CollectLeaves(node, starts);
  for (const std::int32_t s : starts) {
    std::string text = segmentLines_[0] + "\n";
    for (std::int32_t j = 2; j <= m; ++j) {
      for (std::int32_t row = Row(s + j - 2) + 1; row < Row(s + j - 1); ++row) text += "\n";
      text += segmentLines_[static_cast<std::size_t>(j - 1)] + "\n";
    }
    matches_.push_back({"", Row(s), Row(s + m - 1), text});
  }
}

void PlainRelocation::CollectLeaves(std::int32_t node, std::vector<std::int32_t>& suffixes) const {
  if (At(node).Kind == "leaf") suffixes.push_back(At(node).Suffix);
  for (const std::int32_t child : At(node).Children) CollectLeaves(child, suffixes);
}

std::vector<MatchRecord> PlainRelocation::MatchesOf(const RuleRecord& record) {
  matches_.clear();
  segmentLines_.clear();
  segmentIds_.clear();
  const std::int32_t rows = record.ToRow - record.FromRow + 1;
  std::int32_t taken = 0;
  for (std::string rest = record.SegText; !shell::IsBlank(rest);) {
    if (taken >= rows) return {};
    const std::size_t end = rest.find('\n');
    const std::string line(shell::TrimBlanks(std::string_view(rest).substr(0, end)));
    rest.erase(0, end == std::string::npos ? rest.size() : end + 1);
    if (line.empty()) continue;
    segmentLines_.push_back(line);
    ++taken;
  }
  if (segmentLines_.empty()) return {};
  for (const std::string& line : segmentLines_) {
    const std::int32_t id = LineId(CollapseRuns(line), false);
    if (id == 0) return {};
    segmentIds_.push_back(id);
  }
  matchFound_ = false;
  stopped_ = false;
  position_ = 1;
  FindSegment(1);
  return matches_;
}

std::int32_t PlainRelocation::RelocateSegments(std::vector<RuleRecord>& records) {
  std::int32_t relocated = 0;
  for (RuleRecord& record : records) {
    const auto matches = MatchesOf(record);
    if (matches.empty()) continue;
    ++relocated;
    MatchRecord best = matches[0];
    std::int32_t nearest = std::abs(best.FromRow - record.FromRow);
    for (const MatchRecord& match : matches) {
      const std::int32_t distance = std::abs(match.FromRow - record.FromRow);
      if (nearest <= distance) continue;
      nearest = distance;
      best = match;
    }
    record = {record.RuleID, best.FromRow, best.ToRow, best.SegText, true};
  }
  return relocated;
}

}  // namespace qmrules::test
