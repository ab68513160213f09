#pragma once

#include "platform/sourceviewer.h"

namespace qmrules::platform {

// A source viewer without a screen: it knows the files' names and holds caret, selection and marks.
class MemorySourceViewer final : public SourceViewer {
 public:
  // The current program's files. The first one comes on view; none without files.
  void SetFiles(std::vector<CurrentFile> files);
  // The user's selection of a piece of text, from 1. Throws Error as SetRow does, and for a last row before the first.
  void SelectText(const SelectedRange& range);

  const std::vector<SegmentMark>& Marks() const { return marks_; }

  std::vector<std::string> Files() const override;
  std::optional<CurrentFile> CurFile() const override { return onView_; }
  void OpenFile(std::string_view name) override;
  int Row() const override { return row_; }
  void SetRow(int row) override;
  int SelectedRowsCount() const override { return selectedRows_; }
  void SetSelectedRowsCount(int count) override;
  std::optional<SelectedRange> Selected() const override;
  void CheckSegment(const SegmentMark& mark) override { marks_.push_back(mark); }
  void ClearMarks() override { marks_.clear(); }
  void GoTo(const SourcePosition& position) override;
  Subscription OnFileChanged(std::function<void()> observer) override;
  Subscription OnSelectionChanged(std::function<void()> observer) override;

 private:
  void Show(std::optional<CurrentFile> file);
  const CurrentFile& FileNamed(std::string_view name) const;
  void CheckRow(int row) const;

  std::vector<CurrentFile> files_;
  std::optional<CurrentFile> onView_;
  int row_ = 0;
  int selectedRows_ = 0;
  std::optional<SelectedRange> selectedText_;
  std::vector<SegmentMark> marks_;
  Event<> fileChanged_;
  Event<> selectionChanged_;
};

}  // namespace qmrules::platform
