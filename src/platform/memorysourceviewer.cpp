#include "platform/memorysourceviewer.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

#include "platform/error.h"
#include "shell/casefold.h"

namespace qmrules::platform {

namespace {

// The last of `count` rows from `row` on, or the largest number where that is more.
int LastRow(int row, int count) {
  return count > std::numeric_limits<int>::max() - row ? std::numeric_limits<int>::max() : row + count - 1;
}

}  // namespace

void MemorySourceViewer::Show(std::optional<CurrentFile> file) {
  onView_ = std::move(file);
  row_ = column_ = onView_ ? 1 : 0;
  selectedRows_ = 0;
  selectedText_.reset();
  fileChanged_.Raise();
}

void MemorySourceViewer::SetFiles(std::vector<CurrentFile> files) {
  files_ = std::move(files);
  ClearMarks();
  Show(files_.empty() ? std::nullopt : std::optional(files_.front()));
}

std::vector<std::string> MemorySourceViewer::Files() const {
  std::vector<std::string> names;
  for (const CurrentFile& file : files_) names.push_back(file.FileName);
  return names;
}

const CurrentFile& MemorySourceViewer::FileNamed(std::string_view name) const {
  const auto found = std::find_if(files_.begin(), files_.end(), [&](const CurrentFile& file) {
    return shell::EqualIgnoringCase(file.FileName, name);
  });
  if (found == files_.end()) throw Error(fmt::format("{}: the current program has no such file.", name));
  return *found;
}

void MemorySourceViewer::OpenFile(std::string_view name) {
  Show(FileNamed(name));
}

void MemorySourceViewer::CheckRow(int row) const {
  if (!onView_) throw Error("No source file is on view.");
  if (row < 1) throw Error(fmt::format("{}: there is no row {}; rows count from 1.", onView_->FileName, row));
}

void MemorySourceViewer::SetRow(int row) {
  PlaceCaret(row, 1);
}

void MemorySourceViewer::PlaceCaret(int row, int column) {
  CheckRow(row);
  row_ = row;
  column_ = std::max(column, 1);
  selectedRows_ = 0;
  selectedText_.reset();
  caretPlaced_.Raise();
  selectionChanged_.Raise();
}

void MemorySourceViewer::SetSelectedRowsCount(int count) {
  if (count != 0) CheckRow(count < 0 ? row_ + count + 1 : row_);
  selectedRows_ = count;
  selectedText_.reset();
  selectionChanged_.Raise();
}

void MemorySourceViewer::SelectRows(int row, int count) {
  CheckRow(row);
  if (count < 0) CheckRow(row + count + 1);
  row_ = row;
  column_ = 1;
  selectedRows_ = count;
  selectedText_.reset();
  selectionChanged_.Raise();
}

void MemorySourceViewer::SelectText(const SelectedRange& range) {
  CheckRow(range.FromRow);
  if (range.ToRow < range.FromRow) throw Error("A selection ends at its first row or below it.");
  row_ = range.FromRow;
  column_ = std::max(range.FromCol, 1);
  selectedRows_ = 0;
  selectedText_ = range;
  selectionChanged_.Raise();
}

std::optional<SelectedRange> MemorySourceViewer::Selected() const {
  if (!onView_) return std::nullopt;
  if (selectedText_) return selectedText_;
  if (selectedRows_ > 0) return SelectedRange{row_, 1, LastRow(row_, selectedRows_)};
  if (selectedRows_ < 0) return SelectedRange{row_ + selectedRows_ + 1, 1, row_};
  return SelectedRange{row_, 0, row_};
}

void MemorySourceViewer::GoTo(const SourcePosition& position) {
  const CurrentFile& file = FileNamed(position.file);
  if (!onView_ || onView_->FileName != file.FileName) Show(file);
  PlaceCaret(position.row, position.column);
}

void MemorySourceViewer::CheckSegment(const SegmentMark& mark) {
  marks_.push_back(mark);
  marksChanged_.Raise();
}

void MemorySourceViewer::ClearMarks() {
  marks_.clear();
  marksChanged_.Raise();
}

Subscription MemorySourceViewer::OnCaretPlaced(std::function<void()> observer) {
  return caretPlaced_.Subscribe(std::move(observer));
}

Subscription MemorySourceViewer::OnMarksChanged(std::function<void()> observer) {
  return marksChanged_.Subscribe(std::move(observer));
}

Subscription MemorySourceViewer::OnFileChanged(std::function<void()> observer) {
  return fileChanged_.Subscribe(std::move(observer));
}

Subscription MemorySourceViewer::OnSelectionChanged(std::function<void()> observer) {
  return selectionChanged_.Subscribe(std::move(observer));
}

}  // namespace qmrules::platform
