#include "workbench/codemodel/textclasses.h"

namespace qmrules::workbench::codemodel {

void ClassedText::Add(std::uint32_t row, ClassedRun run) {
  while (starts_.size() < row) starts_.push_back(static_cast<std::uint32_t>(runs_.size()));
  runs_.push_back(run);
}

std::span<const ClassedRun> ClassedText::Row(std::uint32_t row) const {
  if (row < 1 || row > starts_.size()) return {};
  const std::size_t begin = starts_[row - 1];
  const std::size_t end = row < starts_.size() ? starts_[row] : runs_.size();
  return std::span(runs_).subspan(begin, end - begin);
}

}  // namespace qmrules::workbench::codemodel
