#include "support/annotatedsource.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

namespace qmrules::test {
namespace {

// The length of the mark's head at this place, `$name[[` or `$name^`; 0 for none.
std::size_t HeadLength(std::string_view text) {
  if (text.empty() || text[0] != '$') return 0;
  std::size_t length = 1;
  while (length < text.size() && std::isalnum(static_cast<unsigned char>(text[length])) != 0) ++length;
  if (length == 1) return 0;
  if (text.substr(length, 2) == "[[") return length + 2;
  return text.substr(length, 1) == "^" ? length + 1 : 0;
}

class Reader {
 public:
  AnnotatedSource Read(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
      if (const std::size_t length = HeadLength(text.substr(at)); length > 0) {
        Open(text.substr(at, length));
        at += length;
      } else if (!open_.empty() && text.substr(at, 2) == "]]") {
        source_.marks[open_.back()].end = static_cast<std::uint32_t>(source_.text.size());
        open_.pop_back();
        at += 2;
      } else {
        Put(text[at++]);
      }
    }
    if (!open_.empty()) throw std::invalid_argument("The mark " + source_.marks[open_.back()].name + " is not closed.");
    return std::move(source_);
  }

 private:
  void Open(std::string_view head) {
    const bool range = head.back() == '[';
    const auto offset = static_cast<std::uint32_t>(source_.text.size());
    if (range) open_.push_back(source_.marks.size());
    source_.marks.push_back(
        {std::string(head.substr(1, head.size() - (range ? 3 : 2))), offset, offset, row_, column_});
  }

  void Put(char character) {
    source_.text += character;
    ++column_;
    if (character != '\n') return;
    ++row_;
    column_ = 1;
  }

  AnnotatedSource source_;
  std::vector<std::size_t> open_;
  std::uint32_t row_ = 1, column_ = 1;
};

}  // namespace

const SourceMark& AnnotatedSource::At(std::string_view mark) const {
  const auto found =
      std::find_if(marks.begin(), marks.end(), [&](const SourceMark& each) { return each.name == mark; });
  if (found == marks.end()) throw std::out_of_range("There is no mark " + std::string(mark) + ".");
  return *found;
}

AnnotatedSource Annotated(std::string_view text) {
  return Reader().Read(text);
}

}  // namespace qmrules::test
