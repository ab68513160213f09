#include "workbench/codemodel/sourcefile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "platform/error.h"

namespace qmrules::workbench::codemodel {

namespace {

// UTF-16 code units of a piece of UTF-8: one for each lead byte, two where four bytes make a character.
std::uint32_t CountCharacters(std::string_view utf8) {
  std::uint32_t count = 0;
  for (const char byte : utf8) {
    const auto value = static_cast<unsigned char>(byte);
    if ((value & 0xC0) != 0x80) ++count;
    if (value >= 0xF0) ++count;
  }
  return count;
}

bool HoldsAsciiOnly(std::string_view text) {
  constexpr std::uint64_t highBits = 0x8080808080808080;
  std::uint64_t all = 0;
  for (; text.size() >= sizeof all; text.remove_prefix(sizeof all)) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text.data(), sizeof bytes);
    all |= bytes;
  }
  return (all & highBits) == 0 &&
         std::ranges::none_of(text, [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
}

// Where the rows begin, and the end of the text.
std::vector<std::uint32_t> RowStartsOf(std::string_view text) {
  constexpr std::size_t bytesPerRow = 40;
  std::vector<std::uint32_t> starts;
  starts.reserve(text.size() / bytesPerRow + 2);
  starts.push_back(0);
  std::size_t lineFeed = text.find('\n');
  std::size_t carriageReturn = text.find('\r');
  while (lineFeed != std::string_view::npos || carriageReturn != std::string_view::npos) {
    const std::size_t next =
        carriageReturn < lineFeed && carriageReturn + 1 != lineFeed ? carriageReturn + 1 : lineFeed + 1;
    starts.push_back(static_cast<std::uint32_t>(next));
    if (lineFeed < next) lineFeed = text.find('\n', next);
    if (carriageReturn < next) carriageReturn = text.find('\r', next);
  }
  if (starts.back() != text.size()) starts.push_back(static_cast<std::uint32_t>(text.size()));
  return starts;
}

}  // namespace

SourceFile::SourceFile(std::string name, std::string text) : name_(std::move(name)), text_(std::move(text)) {
  if (text_.size() >= std::numeric_limits<std::uint32_t>::max()) {
    throw platform::Error(fmt::format("{} is too large to be read: it has 4 GiB or more.", name_));
  }
  rowStarts_ = RowStartsOf(text_);
  if (HoldsAsciiOnly(text_)) return;
  rowCharacters_.reserve(rowStarts_.size());
  std::uint32_t characters = 0;
  for (std::uint32_t row = 1; row <= Rows(); ++row) {
    rowCharacters_.push_back(characters);
    const std::uint32_t begin = rowStarts_[row - 1];
    characters += CountCharacters(Text().substr(begin, rowStarts_[row] - begin));
  }
  rowCharacters_.push_back(characters);
}

std::string_view SourceFile::Row(std::uint32_t row) const {
  std::string_view text = Text().substr(rowStarts_[row - 1], rowStarts_[row] - rowStarts_[row - 1]);
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.remove_suffix(1);
  return text;
}

std::uint32_t SourceFile::RowOf(std::uint32_t offset) const {
  const auto after = std::upper_bound(rowStarts_.begin(), rowStarts_.end(), offset);
  const auto row = static_cast<std::uint32_t>(after - rowStarts_.begin());
  return std::clamp(row, std::uint32_t{1}, std::max(Rows(), std::uint32_t{1}));
}

std::uint32_t SourceFile::CharacterInRow(std::uint32_t offset, std::uint32_t row) const {
  const std::uint32_t begin = rowStarts_[row - 1];
  return rowCharacters_[row - 1] + CountCharacters(Text().substr(begin, offset - begin));
}

std::uint32_t SourceFile::Column(std::uint32_t offset) const {
  const std::uint32_t begin = rowStarts_[RowOf(offset) - 1];
  if (rowCharacters_.empty()) return offset - begin + 1;
  return CountCharacters(Text().substr(begin, offset - begin)) + 1;
}

std::uint32_t SourceFile::Offset(std::uint32_t character) const {
  const auto size = static_cast<std::uint32_t>(text_.size());
  if (rowCharacters_.empty()) return std::min(character, size);
  const auto after = std::upper_bound(rowCharacters_.begin(), rowCharacters_.end(), character);
  const auto row = static_cast<std::size_t>(after - rowCharacters_.begin()) - 1;
  std::uint32_t offset = rowStarts_[row];
  std::uint32_t before = rowCharacters_[row];
  while (offset < size && before < character) {
    std::uint32_t next = offset + 1;
    while (next < size && (static_cast<unsigned char>(text_[next]) & 0xC0) == 0x80) ++next;
    before += CountCharacters(Text().substr(offset, next - offset));
    if (before <= character) offset = next;
  }
  return offset;
}

}  // namespace qmrules::workbench::codemodel
