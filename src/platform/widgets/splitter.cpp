#include "platform/widgets/splitter.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <stdexcept>

namespace qmrules::platform::widgets {

namespace {

constexpr int leastShare = 1;
constexpr int greatestShare = 999;
constexpr int deepestLayout = 32;

bool IsNameCharacter(char character) {
  return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
         (character >= '0' && character <= '9') || character == '_';
}

bool IsName(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsNameCharacter);
}

bool IsShare(int share) {
  return share >= leastShare && share <= greatestShare;
}

Splitter::Pane* FindPane(Splitter::Pane& pane, std::string_view name) {
  if (pane.name == name) return &pane;
  if (pane.first == nullptr) return nullptr;
  if (Splitter::Pane* found = FindPane(*pane.first, name)) return found;
  return FindPane(*pane.second, name);
}

void AppendLeaves(const Splitter::Pane& pane, std::vector<std::string>& leaves) {
  if (pane.first == nullptr) {
    leaves.push_back(pane.name);
    return;
  }
  AppendLeaves(*pane.first, leaves);
  AppendLeaves(*pane.second, leaves);
}

std::string TextOf(const Splitter::Pane& pane) {
  if (pane.first == nullptr) return pane.name;
  const char direction = pane.direction == SplitDirection::SideBySide ? 'h' : 'v';
  return pane.name + "(" + direction + std::to_string(pane.share) + " " + TextOf(*pane.first) + "," +
         TextOf(*pane.second) + ")";
}

std::unique_ptr<Splitter::Pane> NewPane(std::string_view name) {
  auto pane = std::make_unique<Splitter::Pane>();
  pane->name = name;
  return pane;
}

// Reads a layout text from its beginning; each step gives null or false at the first thing that does not fit.
class LayoutReader {
 public:
  explicit LayoutReader(std::string_view text) : rest_(text) {}

  std::unique_ptr<Splitter::Pane> Read() {
    auto root = ReadPane(0);
    return rest_.empty() ? std::move(root) : nullptr;
  }

 private:
  bool Take(char character) {
    if (rest_.empty() || rest_.front() != character) return false;
    rest_.remove_prefix(1);
    return true;
  }

  std::unique_ptr<Splitter::Pane> ReadPane(int depth) {
    const auto end = std::find_if_not(rest_.begin(), rest_.end(), IsNameCharacter);
    const auto length = static_cast<std::size_t>(end - rest_.begin());
    if (length == 0 || depth > deepestLayout) return nullptr;
    auto pane = NewPane(rest_.substr(0, length));
    rest_.remove_prefix(length);
    if (!names_.insert(pane->name).second) return nullptr;
    if (Take('(') && !ReadDivision(*pane, depth)) return nullptr;
    return pane;
  }

  bool ReadDivision(Splitter::Pane& pane, int depth) {
    pane.direction = Take('h') ? SplitDirection::SideBySide : SplitDirection::Stacked;
    if (pane.direction == SplitDirection::Stacked && !Take('v')) return false;
    const auto [stop, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), pane.share);
    if (error != std::errc() || !IsShare(pane.share)) return false;
    rest_.remove_prefix(static_cast<std::size_t>(stop - rest_.data()));
    if (!Take(' ') || (pane.first = ReadPane(depth + 1)) == nullptr) return false;
    return Take(',') && (pane.second = ReadPane(depth + 1)) != nullptr && Take(')');
  }

  std::string_view rest_;
  std::set<std::string> names_;
};

}  // namespace

Splitter::Splitter(std::string name, int index) : Widget(std::move(name), index), root_(NewPane("All")) {}

Splitter::~Splitter() = default;

void Splitter::Reset(std::string_view name) {
  if (!IsName(name)) throw std::invalid_argument("\"" + std::string(name) + "\" cannot name a pane");
  root_ = NewPane(name);
  OnChanged.Raise();
}

void Splitter::Split(std::string_view pane, const Division& division) {
  Pane* const divided = FindPane(*root_, pane);
  if (divided == nullptr || divided->first != nullptr) {
    throw std::invalid_argument("there is no undivided pane \"" + std::string(pane) + "\"");
  }
  for (const std::string& name : {division.first, division.second}) {
    if (!IsName(name) || FindPane(*root_, name) != nullptr) {
      throw std::invalid_argument("\"" + name + "\" cannot name a pane");
    }
  }
  if (division.first == division.second || !IsShare(division.share)) {
    throw std::invalid_argument("the pane \"" + std::string(pane) + "\" cannot be divided so");
  }
  divided->direction = division.direction;
  divided->share = division.share;
  divided->first = NewPane(division.first);
  divided->second = NewPane(division.second);
  OnChanged.Raise();
}

Splitter::Pane& Splitter::Divided(std::string_view pane) const {
  Pane* const found = FindPane(*root_, pane);
  if (found == nullptr || found->first == nullptr) {
    throw std::out_of_range("there is no divided pane \"" + std::string(pane) + "\"");
  }
  return *found;
}

int Splitter::Share(std::string_view pane) const {
  return Divided(pane).share;
}

std::vector<std::string> Splitter::Panes() const {
  std::vector<std::string> leaves;
  AppendLeaves(*root_, leaves);
  return leaves;
}

std::string Splitter::LayoutText() const {
  return TextOf(*root_);
}

bool Splitter::FitsRequired(const Pane& root) const {
  if (required_.empty()) return true;
  std::vector<std::string> leaves;
  AppendLeaves(root, leaves);
  return std::set<std::string>(leaves.begin(), leaves.end()) ==
         std::set<std::string>(required_.begin(), required_.end());
}

bool Splitter::SetLayoutText(std::string_view text) {
  auto root = LayoutReader(text).Read();
  if (root == nullptr || !FitsRequired(*root)) return false;
  root_ = std::move(root);
  OnChanged.Raise();
  return true;
}

bool Splitter::Drag(std::string_view pane, int share) {
  Pane& divided = Divided(pane);
  if (!BeginUserAction()) return false;
  Assign(divided.share, std::clamp(share, leastShare, greatestShare));
  return true;
}

}  // namespace qmrules::platform::widgets
