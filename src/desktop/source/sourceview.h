#pragma once

#include <QString>
#include <QWidget>
#include <exception>
#include <functional>
#include <optional>
#include <vector>

#include "desktop/source/backgroundtask.h"
#include "desktop/source/loadedsource.h"
#include "desktop/source/sourcetexts.h"
#include "platform/event.h"
#include "platform/memorysourceviewer.h"

class QAction;
class QComboBox;
class QLabel;
class QTimer;

namespace qmrules::desktop {

class CodeText;
class FindBar;
class NamedText;
class RowBar;

// The source viewer on screen: the choice of the program's files, the text with its row numbers and segment marks, the
// fields for finding and for going to a row, and a line that tells caret, selection and segments.
//
// The viewer that it shows holds what the logic sees: files, file on view, caret, selection and marks. This widget
// shows each change of it and tells it what the user does; so everything that holds for the viewer holds on screen too.
// What is only for the eye (the text, the place that is scrolled to, the zoom) is the widget's own.
//
// A large file is read on another thread; until it can be shown, a text says so.
// A file that cannot be shown (not there, not readable, no text in the encoding) gives way to a text with the reason.
// Rows of more than kLongestRow characters are shown cut. Nothing is thrown out of the event loop: what an observer of
// the viewer throws after an action of the user is told in the last line and by Failed().
//
// Rows are selected whole by click and drag on the row numbers, Shift+Up, Shift+Down, Shift+PgUp, Shift+PgDn and
// Ctrl+A; pieces of text by mouse and by the other keys. A piece that consists of whole rows counts as rows.
class SourceView final : public QWidget {
  Q_OBJECT

 public:
  // Both outlive the widget.
  SourceView(platform::MemorySourceViewer& viewer, SourceTexts& texts, QWidget* parent = nullptr);
  ~SourceView() override;

  // Reads the file on view again. Caret, selection and the place that is scrolled to stay.
  void Reload();

  // Copy, find, find the next and the one before, go to a row, go to the next and the previous segment, zoom in, out
  // and back: for the host's menu. Their shortcuts work while the view or a part of it has the focus.
  const std::vector<QAction*>& Actions() const { return actions_; }

  // Steps by which the letters are larger than the application's, or smaller; kept by the owner over restarts.
  int Zoom() const { return zoom_; }
  void SetZoom(int steps);

 signals:
  void ZoomChanged(int steps);
  // A failure that was met in an action of the user, and that no caller could be told of.
  void Failed(const QString& reason);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void LayOut();
  void MakeActions();
  QAction* MakeAction(const char* name, const QList<QKeySequence>& shortcuts, std::function<void()> perform);
  void Observe();
  void Retranslate();

  // What the viewer tells.
  struct Scrolled {
    int right = 0, down = 0;
  };
  void ShowFile();
  void ListFiles();
  void Load(std::optional<Scrolled> scrolled);
  void ShowSource(const platform::CurrentFile& file, LoadedSource source, std::optional<Scrolled> scrolled);
  void ShowFailure(const platform::CurrentFile& file, const std::exception& error);
  void ShowReason(const QString& text);
  void ShowPage(QWidget& shown, QWidget& hidden);
  bool ShowsSource() const;
  void StartColoring(const platform::CurrentFile& file, const LoadedSource& source);
  void ShowSelection();
  void TakeMarks();
  void ShowPlace();

  // What the user does.
  void Tell(const std::function<void()>& action);
  void Guard(const std::function<void()>& action);
  void GoToSegment(bool isBelow);
  void UseFontSize();
  void Report(const QString& reason);

  platform::MemorySourceViewer& viewer_;
  SourceTexts& texts_;
  QLabel* filesLabel_ = nullptr;
  QComboBox* files_ = nullptr;
  CodeText* text_ = nullptr;
  NamedText* reason_ = nullptr;
  FindBar* findBar_ = nullptr;
  RowBar* rowBar_ = nullptr;
  NamedText* place_ = nullptr;
  BackgroundTask<LoadedSource> loading_;
  BackgroundTask<workbench::codemodel::ClassedText> coloring_;
  QTimer* marks_ = nullptr;  // marks come many at a time, and are shown when all have come
  std::vector<QAction*> actions_;
  int zoom_ = 0;
  bool isTelling_ = false;  // the next change of the selection is what this has told
  bool isPlaced_ = false;   // the caret was placed, so it is to be seen
  std::vector<platform::Subscription> subscriptions_;
};

}  // namespace qmrules::desktop
