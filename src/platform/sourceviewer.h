#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/event.h"
#include "platform/workspace.h"

namespace qmrules::platform {

// The mark on one segment of a program.
struct SegmentMark {
  std::string object;  // the program's key
  int fromRow = 0;     // from 1
  int toRow = 0;       // inclusive
  friend bool operator==(const SegmentMark&, const SegmentMark&) = default;
};

// A place in a source file.
struct SourcePosition {
  std::string file;  // relative to the source folder
  int row = 0;       // from 1
  int column = 1;    // from 1
};

// The host's view of the source files of the current program. Rows count from 1. A selection may reach behind the last
// row of the file: it keeps the rows that it was given.
class SourceViewer {
 public:
  virtual ~SourceViewer() = default;

  // The files of the current program, by their names relative to the source folder.
  virtual std::vector<std::string> Files() const = 0;
  // The file on view, or nothing.
  virtual std::optional<CurrentFile> CurFile() const = 0;
  // Puts another file of Files() on view, its name in any case, with the caret on row 1 and nothing selected. Throws
  // Error, naming the file, when it is not among them.
  virtual void OpenFile(std::string_view name) = 0;

  // The caret's row; 0 without a file.
  virtual int Row() const = 0;
  // Moves the caret and drops the selection. Throws Error for a row below 1 and without a file.
  virtual void SetRow(int row) = 0;
  // Number of whole rows selected: the caret's row and those below it or, with a minus sign, those above it. 0 for
  // none.
  virtual int SelectedRowsCount() const = 0;
  // Selects so from the caret's row. Throws Error when that reaches above row 1; without a file only 0 is taken.
  virtual void SetSelectedRowsCount(int count) = 0;
  // The selection in text: of rows, with FromCol 1; of a piece of text; or the caret's place, with FromCol 0. Nothing
  // without a file.
  virtual std::optional<SelectedRange> Selected() const = 0;

  // Adds a mark; it stays until ClearMarks.
  virtual void CheckSegment(const SegmentMark& mark) = 0;
  virtual void ClearMarks() = 0;
  // Opens the file of the position and puts the caret there. Throws Error as OpenFile and SetRow do.
  virtual void GoTo(const SourcePosition& position) = 0;

  [[nodiscard]] virtual Subscription OnFileChanged(std::function<void()> observer) = 0;
  [[nodiscard]] virtual Subscription OnSelectionChanged(std::function<void()> observer) = 0;
};

}  // namespace qmrules::platform
