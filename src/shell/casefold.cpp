#include "shell/casefold.h"

#include <algorithm>
#include <cstddef>

#include "shell/casemapping.h"
#include "shell/utf8.h"

namespace qmrules::shell {
namespace {

bool IsAscii(char character) {
  return static_cast<unsigned char>(character) < 0x80;
}

char FoldAsciiByte(char character) {
  return static_cast<char>(FoldAscii(static_cast<unsigned char>(character)));
}

/// Hands out the bytes of a folded text one by one, without building it.
class FoldedBytes {
 public:
  explicit FoldedBytes(std::string_view text) : rest_(text) {}

  /// The next byte, 0 to 255, or -1 behind the last.
  int Next() {
    if (at_ == end_) {
      if (rest_.empty()) {
        return -1;
      }
      const Utf8Step step = DecodeAt(rest_, 0);
      rest_.remove_prefix(step.length);
      end_ = EncodeTo(CaseMapping::Unicode().Fold(step.value), bytes_);
      at_ = 0;
    }
    return static_cast<unsigned char>(bytes_[at_++]);
  }

 private:
  std::string_view rest_;
  char bytes_[4] = {};
  std::size_t at_ = 0;
  std::size_t end_ = 0;
};

int CompareFolded(std::string_view left, std::string_view right) {
  FoldedBytes leftBytes(left);
  FoldedBytes rightBytes(right);
  while (true) {
    const int leftByte = leftBytes.Next();
    const int rightByte = rightBytes.Next();
    if (leftByte != rightByte) {
      return leftByte < rightByte ? -1 : 1;
    }
    if (leftByte < 0) {
      return 0;
    }
  }
}

template <typename Mapping>
std::string MapLetters(std::string_view text, Mapping mapping) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const Utf8Step step = DecodeAt(text, position);
    AppendUtf8(result, mapping(step.value));
    position += step.length;
  }
  return result;
}

}  // namespace

std::string FoldCase(std::string_view text) {
  if (std::ranges::all_of(text, IsAscii)) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), FoldAsciiByte);
    return result;
  }
  return MapLetters(text, [](char32_t value) { return CaseMapping::Unicode().Fold(value); });
}

int CompareIgnoringCase(std::string_view left, std::string_view right) {
  const std::size_t common = std::min(left.size(), right.size());
  std::size_t position = 0;
  // Two ASCII bytes always begin a character, so the plain walk may stop at any place where one of them is not.
  while (position < common && IsAscii(left[position]) && IsAscii(right[position])) {
    const char leftByte = FoldAsciiByte(left[position]);
    const char rightByte = FoldAsciiByte(right[position]);
    if (leftByte != rightByte) {
      return leftByte < rightByte ? -1 : 1;
    }
    ++position;
  }
  return CompareFolded(left.substr(position), right.substr(position));
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
  return CompareIgnoringCase(left, right) == 0;
}

std::string ToUpper(std::string_view text) {
  return MapLetters(text, [](char32_t value) { return CaseMapping::Unicode().Upper(value); });
}

}  // namespace qmrules::shell
