#pragma once

#include "platform/sourceviewer.h"

namespace qmrules::platform {

// A source viewer without a screen: it knows the files' names and holds caret, selection and marks. A view on screen
// shows it and passes the user's actions to it.
class MemorySourceViewer final : public SourceViewer {
 public:
  // The current program's files. The first one comes on view; none without files.
  void SetFiles(std::vector<CurrentFile> files);
  // The user's selection of a piece of text, from 1. Throws Error as SetRow does, and for a last row before the first.
  void SelectText(const SelectedRange& range);
  // SetRow with a column, from 1: the user's caret.
  void PlaceCaret(int row, int column);
  // SetRow and SetSelectedRowsCount as one change: the user's selection of rows. Throws Error as they do, and changes
  // nothing then.
  void SelectRows(int row, int count);

  // The caret's column; 0 without a file.
  int Column() const { return column_; }
  const std::vector<SegmentMark>& Marks() const { return marks_; }
  [[nodiscard]] Subscription OnMarksChanged(std::function<void()> observer);
  // Told before OnSelectionChanged when the caret is put on a row, even on the one where it stands.
  [[nodiscard]] Subscription OnCaretPlaced(std::function<void()> observer);

  std::vector<std::string> Files() const override;
  std::optional<CurrentFile> CurFile() const override { return onView_; }
  void OpenFile(std::string_view name) override;
  int Row() const override { return row_; }
  void SetRow(int row) override;
  int SelectedRowsCount() const override { return selectedRows_; }
  void SetSelectedRowsCount(int count) override;
  std::optional<SelectedRange> Selected() const override;
  void CheckSegment(const SegmentMark& mark) override;
  void ClearMarks() override;
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
  int column_ = 0;
  int selectedRows_ = 0;
  std::optional<SelectedRange> selectedText_;
  std::vector<SegmentMark> marks_;
  Event<> fileChanged_;
  Event<> selectionChanged_;
  Event<> marksChanged_;
  Event<> caretPlaced_;
};

}  // namespace qmrules::platform
