#include "validation/filelines.h"

#include <algorithm>

#include "platform/linereader.h"
#include "validation/largepages.h"
#include "validation/preparedline.h"

namespace qmrules::validation {

bool FileLines::LoadLineIds(std::string_view fileText, bool collapseSpaces, std::int32_t mostLines) {
  collapseSpaces_ = collapseSpaces;
  Clear(fileText.size());
  const bool fits = Append(fileText, mostLines);
  if (!fits) Clear(0);
  lineIds_.push_back(kTerminator);
  lineRows_.push_back(0);
  return fits;
}

std::int32_t FileLines::IdOf(std::string_view line) {
  return dictionary_.LineId(Key(line), false);
}

std::size_t FileLines::Bytes() const {
  return (lineIds_.capacity() + lineRows_.capacity()) * sizeof(std::int32_t) + dictionary_.Bytes();
}

bool FileLines::Append(std::string_view fileText, std::int32_t mostLines) {
  const auto lines = std::min(std::ranges::count(fileText, '\n') + 1, std::ptrdiff_t{mostLines});
  for (auto* numbers : {&lineIds_, &lineRows_}) {
    // One for what stands before the first line and one for the terminator.
    numbers->reserve(static_cast<std::size_t>(lines) + 2);
    PreferLargePages(numbers->data(), numbers->capacity() * sizeof(std::int32_t));
  }
  std::string safe;
  platform::LineReader reader(fileText);
  for (std::int32_t count = 0; const auto raw = reader.Next();) {
    const std::string_view line = PrepareLine(*raw, safe);
    if (line.empty()) continue;
    if (++count > mostLines) return false;
    dictionary_.Announce(Key(line));
    lineRows_.push_back(static_cast<std::int32_t>(reader.Row()));
    if (dictionary_.IsBlockFull()) dictionary_.EnterAnnounced(lineIds_);
  }
  dictionary_.EnterAnnounced(lineIds_);
  return true;
}

void FileLines::Clear(std::size_t bytesToCome) {
  dictionary_.Clear(bytesToCome);
  lineIds_.assign(1, kBeforeFirst);
  lineRows_.assign(1, 0);
}

std::string_view FileLines::Key(std::string_view line) {
  if (!collapseSpaces_) return line;
  collapsed_ = line;
  CollapseRuns(collapsed_, collapseSpaces_);
  return collapsed_;
}

}  // namespace qmrules::validation
