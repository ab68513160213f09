#include "validation/fileindex.h"

namespace qmrules::validation {

bool FileIndex::Load(std::string_view fileText) {
  const bool fits = lines_.LoadLineIds(fileText, options_.collapseSpaces, kMostLines);
  tree_.BuildSuffixTree(lines_.LineIds(), options_.processEvents);
  return fits;
}

void FileIndex::SegmentIds(const SegmentLines& segment, std::vector<std::int32_t>& ids) {
  ids.clear();
  for (std::int64_t j = 1; j <= segment.Count(); ++j) {
    const std::int32_t id = lines_.IdOf(segment.Line(j));
    if (id == 0) return ids.clear();
    ids.push_back(id);
  }
}

}  // namespace qmrules::validation
