#include "workbench/codemodel/crossreference.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <tuple>
#include <utility>

#include "shell/casefold.h"

namespace qmrules::workbench::codemodel {

namespace {

bool IsDeclaration(Entity entity) {
  return entity == Entity::Decl || entity == Entity::File || entity == Entity::Section || entity == Entity::Par;
}

// The name itself, then its qualifiers from the innermost on.
std::vector<std::string_view> SplitName(std::string_view name) {
  std::vector<std::string_view> words;
  for (std::size_t at = name.find_first_not_of(' '); at != std::string_view::npos;) {
    const std::size_t end = std::min(name.find(' ', at), name.size());
    words.push_back(name.substr(at, end - at));
    at = name.find_first_not_of(' ', end);
  }
  std::vector<std::string_view> names;
  for (std::size_t at = 0; at < words.size(); ++at) {
    const bool isLink =
        at % 2 == 1 && (shell::EqualIgnoringCase(words[at], "OF") || shell::EqualIgnoringCase(words[at], "IN"));
    if (!isLink) names.push_back(words[at]);
  }
  return names;
}

bool StandsWithin(const ModelImage& model, NodeId node, const std::vector<std::string_view>& names) {
  std::size_t next = 1;
  for (NodeId around = model.Nodes()[node].parent; around != 0 && next < names.size();
       around = model.Nodes()[around].parent) {
    const NodeRecord& record = model.Nodes()[around];
    if (IsDeclaration(record.entity) && shell::EqualIgnoringCase(model.Text(record.name), names[next])) ++next;
  }
  return next == names.size();
}

// The number of letters to put in, leave out or change to make one word of the other, as far as it is at most `most`;
// otherwise more than that.
std::size_t Distance(std::string_view left, std::string_view right, std::size_t most) {
  if (std::max(left.size(), right.size()) - std::min(left.size(), right.size()) > most) return most + 1;
  std::vector<std::size_t> row(right.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t l = 0; l < left.size(); ++l) {
    std::size_t diagonal = std::exchange(row[0], l + 1);
    for (std::size_t r = 0; r < right.size(); ++r) {
      const std::size_t changed = diagonal + (left[l] == right[r] ? 0 : 1);
      diagonal = row[r + 1];
      row[r + 1] = std::min({changed, row[r] + 1, row[r + 1] + 1});
    }
  }
  return row.back();
}

}  // namespace

CrossReference FindCrossReference(const ModelImage& model, std::string_view name) {
  CrossReference found;
  const auto names = SplitName(name);
  if (names.empty()) return found;
  std::vector<bool> isMeant(model.Texts());
  for (TextId text = 1; text < model.Texts(); ++text) {
    isMeant[text] = shell::EqualIgnoringCase(model.Text(text), names.front());
  }
  const auto nodes = model.Nodes();
  std::vector<bool> isDeclared(nodes.size());
  for (NodeId node = 1; node < nodes.size(); ++node) {
    if (!isMeant[nodes[node].name] || !IsDeclaration(nodes[node].entity)) continue;
    // The paragraph that holds a section's first statements has the section's name and is no declaration of it.
    if ((nodes[node].flags & kImplicit) != 0 || !StandsWithin(model, node, names)) continue;
    isDeclared[node] = true;
    found.declarations.push_back(node);
  }
  for (NodeId node = 1; node < nodes.size(); ++node) {
    const NodeRecord& record = nodes[node];
    if (record.entity != Entity::Var && record.entity != Entity::Ref) continue;
    const bool isUnknown = record.declaration == 0 && isMeant[record.name] && names.size() == 1;
    if (isUnknown || isDeclared[record.declaration]) found.occurrences.push_back(node);
  }
  return found;
}

std::vector<std::string> FindSimilarNames(const ModelImage& model, std::string_view name, std::size_t most) {
  const auto names = SplitName(name);
  if (names.empty()) return {};
  const std::string wanted = shell::ToUpper(names.front());
  const std::size_t limit = std::max<std::size_t>(1, wanted.size() / 3);
  std::set<std::tuple<std::size_t, std::string>> similar;
  std::vector<bool> isSeen(model.Texts());
  for (const NodeRecord& node : model.Nodes()) {
    if (node.name == 0 || !IsDeclaration(node.entity) || isSeen[node.name]) continue;
    isSeen[node.name] = true;
    std::string declared = shell::ToUpper(model.Text(node.name));
    const std::size_t distance = Distance(wanted, declared, limit);
    if (distance <= limit) similar.emplace(distance, std::move(declared));
    if (similar.size() > most) similar.erase(std::prev(similar.end()));
  }
  std::vector<std::string> result;
  result.reserve(similar.size());
  for (const auto& entry : similar) result.push_back(std::get<1>(entry));
  return result;
}

NodeId StatementAround(const ModelImage& model, NodeId node) {
  while (node != 0 && !IsKindOf(model.Nodes()[node].entity, Entity::Stat)) node = model.Nodes()[node].parent;
  return node;
}

}  // namespace qmrules::workbench::codemodel
