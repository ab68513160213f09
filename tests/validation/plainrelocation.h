#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/keyedcollection.h"
#include "validation/segmentrelocation.h"

namespace qmrules::test {

// The relocation of segments in the plainest form: every list is walked, every path compared whole, and nothing is
// looked up by other means than going through it. It takes time without measure and is what the fast form is held
// against.
class PlainRelocation {
 public:
  struct Node {
    std::string Kind;
    std::int32_t Suffix = 0;
    std::vector<std::int32_t> Children;
    std::int32_t SuffixLink = 0;
    std::int32_t Parent = 0;
    std::int32_t BackLink = 0;
    std::int32_t EdgeStart = 0;
    std::int32_t EdgeLength = 0;
    std::int32_t Depth = 0;
    friend bool operator==(const Node&, const Node&) = default;
  };

  PlainRelocation(std::string_view fileText, bool collapseSpaces);

  std::int32_t RelocateSegments(std::vector<validation::RuleRecord>& records);
  // All places of one segment, in their order; empty also where its rows disagree with its text.
  std::vector<validation::MatchRecord> MatchesOf(const validation::RuleRecord& record);

  // From 1; the first is not used.
  const std::vector<Node>& SuffixNodes() const { return suffixNodes_; }
  const std::vector<std::int32_t>& LineIds() const { return lineIds_; }
  const std::vector<std::int32_t>& LineRows() const { return lineRows_; }

 private:
  void LoadLineIds(std::string_view fileText);
  std::int32_t LineId(const std::string& key, bool add);
  std::string CollapseRuns(std::string text) const;
  void BuildSuffixTree();
  void InsertSuffix();
  void LinkHead();
  bool PathMatches(std::int32_t x, std::int32_t limit, std::int32_t from, std::int32_t to) const;
  std::int32_t ChildBeginningWith(std::int32_t node, std::int32_t position) const;
  void FindSegment(std::int32_t node);
  void CollectLeaves(std::int32_t node, std::vector<std::int32_t>& suffixes) const;
  void AddMatches(std::int32_t node);

  Node& At(std::int32_t node) { return suffixNodes_[static_cast<std::size_t>(node)]; }
  const Node& At(std::int32_t node) const { return suffixNodes_[static_cast<std::size_t>(node)]; }
  std::int32_t Id(std::int32_t position) const { return lineIds_[static_cast<std::size_t>(position)]; }
  std::int32_t Row(std::int32_t position) const { return lineRows_[static_cast<std::size_t>(position)]; }

  bool collapseSpaces_;
  platform::KeyedCollection<std::int32_t> lineDictionary_;
  std::vector<std::int32_t> lineIds_;
  std::vector<std::int32_t> lineRows_;
  std::int32_t lineCount_ = 0;
  std::vector<Node> suffixNodes_;
  std::int32_t nodeCount_ = 0;
  std::int32_t currentSuffix_ = 0;
  std::int32_t head_ = 0;
  std::int32_t tail_ = 0;

  std::vector<std::string> segmentLines_;
  std::vector<std::int32_t> segmentIds_;
  std::int32_t position_ = 0;
  bool stopped_ = false;
  bool matchFound_ = false;
  std::vector<validation::MatchRecord> matches_;
};

}  // namespace qmrules::test
