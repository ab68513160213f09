#include "workbench/repository/idlist.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <system_error>
#include <unordered_set>

namespace qmrules::workbench::repository {

namespace {

// Lists come mostly in rising order, from queries; only the others can hold a duplicate and cost a set.
void DropDuplicates(std::vector<std::int64_t>& ids) {
  if (std::adjacent_find(ids.begin(), ids.end(), std::greater_equal<>()) == ids.end()) return;
  std::unordered_set<std::int64_t> seen;
  seen.reserve(ids.size());
  std::erase_if(ids, [&](std::int64_t id) { return !seen.insert(id).second; });
}

class IDListParser {
 public:
  IDListParser(const QueryText& query, std::size_t first, std::size_t last)
      : query_(query), position_(first), last_(last) {}

  std::vector<std::int64_t> Parse() {
    std::vector<std::int64_t> ids;
    for (;;) {
      SkipBlanks();
      ids.push_back(Number());
      SkipBlanks();
      if (position_ == last_) break;
      if (query_.text[position_] != ',') throw SyntaxError(query_, position_, "a \",\" is expected");
      ++position_;
    }
    DropDuplicates(ids);
    return ids;
  }

 private:
  void SkipBlanks() {
    while (position_ < last_ && query_.text[position_] == ' ') ++position_;
  }

  std::int64_t Number() {
    // A sign is no digit, though the conversion would take a minus.
    if (position_ == last_ || query_.text[position_] < '0' || query_.text[position_] > '9') {
      throw SyntaxError(query_, position_, "a number is expected");
    }
    std::int64_t number = 0;
    const char* const text = query_.text.data();
    const auto read = std::from_chars(text + position_, text + last_, number);
    if (read.ec != std::errc()) {
      throw SyntaxError(query_, position_, "a number of at most 9223372036854775807 is expected");
    }
    position_ = static_cast<std::size_t>(read.ptr - text);
    return number;
  }

  QueryText query_;
  std::size_t position_;
  std::size_t last_;
};

}  // namespace

std::vector<std::int64_t> ParseIDList(std::string_view text) {
  return ParseIDList({"ID list", text}, 0, text.size());
}

std::vector<std::int64_t> ParseIDList(const QueryText& query, std::size_t first, std::size_t last) {
  return IDListParser(query, first, last).Parse();
}

}  // namespace qmrules::workbench::repository
