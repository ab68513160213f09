#include "desktop/source/sourceview.h"

#include <QAction>
#include <QComboBox>
#include <QEvent>
#include <QFontInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <exception>
#include <utility>

#include "desktop/source/codetext.h"
#include "desktop/source/findbar.h"
#include "desktop/source/namedtext.h"
#include "desktop/source/rowbar.h"

namespace qmrules::desktop {

namespace {

constexpr int kLeastZoom = -6;
constexpr int kMostZoom = 24;
constexpr double kLeastFontSize = 5;

// A file up to this size is shown at once: that takes less time than an eye sees.
constexpr std::size_t kMostBytesAtOnce = std::size_t{512} * 1024;

}  // namespace

SourceView::SourceView(platform::MemorySourceViewer& viewer, SourceTexts& texts, QWidget* parent)
    : QWidget(parent), viewer_(viewer), texts_(texts), marks_(new QTimer(this)) {
  LayOut();
  Retranslate();
  UseFontSize();
  Observe();
  ShowFile();
  TakeMarks();
}

SourceView::~SourceView() = default;

void SourceView::LayOut() {
  setAccessibleName(tr("Source viewer"));
  filesLabel_ = new QLabel(this);
  files_ = new QComboBox(this);
  files_->setObjectName(QStringLiteral("files"));
  files_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  filesLabel_->setBuddy(files_);
  text_ = new CodeText(this);
  reason_ = new NamedText(this);
  reason_->setObjectName(QStringLiteral("reason"));
  reason_->setWordWrap(true);
  reason_->setAlignment(Qt::AlignCenter);
  reason_->setMargin(24);
  reason_->setTextFormat(Qt::PlainText);
  reason_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  findBar_ = new FindBar(*text_, this);
  rowBar_ = new RowBar(*text_, this);
  findBar_->hide();
  rowBar_->hide();
  place_ = new NamedText(this);
  place_->setObjectName(QStringLiteral("place"));
  place_->setTextFormat(Qt::PlainText);
  place_->setMargin(4);
  auto* const head = new QHBoxLayout;
  head->setContentsMargins(6, 4, 6, 4);
  head->addWidget(filesLabel_);
  head->addWidget(files_, 1);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addLayout(head);
  column->addWidget(text_, 1);
  column->addWidget(reason_, 1);
  column->addWidget(findBar_);
  column->addWidget(rowBar_);
  column->addWidget(place_);
  setFocusProxy(text_);
  MakeActions();
}

QAction* SourceView::MakeAction(const char* name, const QList<QKeySequence>& shortcuts, std::function<void()> perform) {
  auto* const action = new QAction(this);
  action->setObjectName(QString::fromLatin1(name));
  action->setShortcuts(shortcuts);
  action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  connect(action, &QAction::triggered, this, std::move(perform));
  addAction(action);
  text_->addAction(action);
  actions_.push_back(action);
  return action;
}

void SourceView::MakeActions() {
  MakeAction("copy", {QKeySequence::Copy}, [this] { text_->copy(); });
  MakeAction("selectAll", {QKeySequence::SelectAll}, [this] { text_->SelectRows({1, text_->Rows()}); });
  MakeAction("find", {QKeySequence::Find}, [this] {
    rowBar_->hide();
    findBar_->Open();
  });
  MakeAction("findNext", {QKeySequence(Qt::Key_F3)}, [this] { findBar_->FindNext(); });
  MakeAction("findPrevious", {QKeySequence(Qt::SHIFT | Qt::Key_F3)}, [this] { findBar_->FindPrevious(); });
  MakeAction("goToRow", {QKeySequence(Qt::CTRL | Qt::Key_G)}, [this] {
    findBar_->hide();
    rowBar_->Open();
  });
  MakeAction("nextSegment", {QKeySequence(Qt::ALT | Qt::Key_Down)}, [this] { GoToSegment(true); });
  MakeAction("previousSegment", {QKeySequence(Qt::ALT | Qt::Key_Up)}, [this] { GoToSegment(false); });
  MakeAction("zoomIn", {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
             [this] { SetZoom(zoom_ + 1); });
  MakeAction("zoomOut", {QKeySequence(Qt::CTRL | Qt::Key_Minus)}, [this] { SetZoom(zoom_ - 1); });
  MakeAction("zoomReset", {QKeySequence(Qt::CTRL | Qt::Key_0)}, [this] { SetZoom(0); });
}

void SourceView::Retranslate() {
  setAccessibleName(tr("Source viewer"));
  filesLabel_->setText(tr("F&ile:"));
  files_->setAccessibleName(tr("File of the program"));
  reason_->SetName(tr("Why no source is shown"));
  place_->SetName(tr("Place in the source"));
  const QStringList names = {tr("&Copy"),          tr("Select &All"), tr("&Find…"),        tr("Find &Next"),
                             tr("Find &Previous"), tr("&Go to Row…"), tr("Next Se&gment"), tr("Pre&vious Segment"),
                             tr("Zoom &In"),       tr("Zoom &Out"),   tr("&Reset Zoom")};
  for (std::size_t at = 0; at < actions_.size(); ++at) actions_[at]->setText(names[static_cast<qsizetype>(at)]);
}

void SourceView::Observe() {
  subscriptions_.push_back(viewer_.OnFileChanged([this] { ShowFile(); }));
  subscriptions_.push_back(viewer_.OnCaretPlaced([this] { isPlaced_ = true; }));
  subscriptions_.push_back(viewer_.OnSelectionChanged([this] {
    const bool isPlaced = std::exchange(isPlaced_, false);
    if (std::exchange(isTelling_, false)) {
      ShowPlace();
      return;
    }
    ShowSelection();
    if (isPlaced) text_->RevealCaret();
  }));
  subscriptions_.push_back(viewer_.OnMarksChanged([this] { marks_->start(); }));
  marks_->setSingleShot(true);
  connect(marks_, &QTimer::timeout, this, &SourceView::TakeMarks);
  connect(text_, &CodeText::CaretPlaced, this,
          [this](int row, int column) { Tell([&] { viewer_.PlaceCaret(row, column); }); });
  connect(text_, &CodeText::RowsSelected, this,
          [this](int row, int count) { Tell([&] { viewer_.SelectRows(row, count); }); });
  connect(text_, &CodeText::PieceSelected, this, [this](int fromRow, int fromColumn, int toRow) {
    Tell([&] { viewer_.SelectText({fromRow, fromColumn, toRow}); });
  });
  connect(text_, &CodeText::ZoomAsked, this, [this](int steps) { SetZoom(zoom_ + steps); });
  connect(files_, &QComboBox::textActivated, this,
          [this](const QString& name) { Guard([&] { viewer_.OpenFile(name.toStdString()); }); });
}

void SourceView::ShowFile() {
  ListFiles();
  Load(std::nullopt);
}

void SourceView::ListFiles() {
  files_->clear();
  for (const std::string& name : viewer_.Files()) files_->addItem(QString::fromStdString(name));
  const auto file = viewer_.CurFile();
  files_->setCurrentIndex(file ? files_->findText(QString::fromStdString(file->FileName)) : -1);
  files_->setEnabled(files_->count() > 0);
}

void SourceView::Load(std::optional<Scrolled> scrolled) {
  loading_.Drop();
  coloring_.Drop();
  const auto file = viewer_.CurFile();
  if (!file) {
    ShowReason(tr("No source is on view."));
    return;
  }
  try {
    std::string bytes = texts_.ReadBytes(file->FileName);
    const std::string encoding = texts_.Encoding();
    if (bytes.size() <= kMostBytesAtOnce) {
      ShowSource(*file, LoadSource(file->FileName, bytes, encoding, text_->Style()), scrolled);
      return;
    }
    ShowReason(tr("Reading %1…").arg(QString::fromStdString(file->FileName)));
    loading_.Start([name = file->FileName, bytes = std::move(bytes), encoding,
                    style = text_->Style()] { return LoadSource(name, bytes, encoding, style); },
                   [this, file, scrolled](LoadedSource source) { ShowSource(*file, std::move(source), scrolled); },
                   [this, file](const std::exception& error) { ShowFailure(*file, error); });
  } catch (const std::exception& error) {
    ShowFailure(*file, error);
  }
}

void SourceView::ShowSource(const platform::CurrentFile& file, LoadedSource source, std::optional<Scrolled> scrolled) {
  StartColoring(file, source);
  text_->SetSource(std::move(source));
  text_->setAccessibleDescription(QString::fromStdString(file.FileName));
  ShowPage(*text_, *reason_);
  for (QAction* const action : actions_) action->setEnabled(true);
  findBar_->TakeSource();
  ShowSelection();
  if (scrolled) {
    text_->verticalScrollBar()->setValue(scrolled->down);
    text_->horizontalScrollBar()->setValue(scrolled->right);
  } else if (viewer_.Selected()->FromCol == 0) {
    text_->RevealCaret();
  }
}

void SourceView::StartColoring(const platform::CurrentFile& file, const LoadedSource& source) {
  Guard([&] {
    const auto classifier = texts_.Classifier(file);
    if (!classifier) return;
    coloring_.Start([classifier, text = source.file] { return classifier(text); },
                    [this](workbench::codemodel::ClassedText classes) { text_->SetClasses(std::move(classes)); },
                    [this](const std::exception& error) { Report(QString::fromUtf8(error.what())); });
  });
}

void SourceView::ShowFailure(const platform::CurrentFile& file, const std::exception& error) {
  ShowReason(tr("%1 cannot be shown.").arg(QString::fromStdString(file.FileName)) + QStringLiteral("\n\n") +
             QString::fromUtf8(error.what()));
}

void SourceView::ShowReason(const QString& text) {
  reason_->Show(text);
  ShowPage(*reason_, *text_);
  text_->Clear();
  findBar_->hide();
  rowBar_->hide();
  for (QAction* const action : actions_) action->setEnabled(false);
  ShowPlace();
}

// The focus goes along.
void SourceView::ShowPage(QWidget& shown, QWidget& hidden) {
  const bool hasFocus = hidden.hasFocus();
  shown.show();
  setFocusProxy(&shown);
  if (hasFocus) shown.setFocus(Qt::OtherFocusReason);
  hidden.hide();
}

bool SourceView::ShowsSource() const {
  return reason_->isHidden();
}

void SourceView::Reload() {
  Load(Scrolled{text_->horizontalScrollBar()->value(), text_->verticalScrollBar()->value()});
}

void SourceView::ShowSelection() {
  const auto selected = viewer_.Selected();
  if (!selected || !ShowsSource()) {
    ShowPlace();
    return;
  }
  const RowSelection rows{viewer_.Row(), viewer_.SelectedRowsCount()};
  if (rows.count != 0) {
    text_->ShowRows(rows);
    text_->Reveal(rows.FromRow(), rows.ToRow());
  } else if (selected->FromCol > 0) {
    text_->ShowPiece(*selected);
    text_->Reveal(selected->FromRow, selected->ToRow);
  } else {
    text_->ShowCaret(viewer_.Row(), viewer_.Column());
  }
  ShowPlace();
}

void SourceView::TakeMarks() {
  marks_->stop();
  text_->SetSegments(SegmentLanes(viewer_.Marks()));
  ShowPlace();
}

void SourceView::ShowPlace() {
  const auto selected = viewer_.Selected();
  if (!selected || !ShowsSource()) {
    place_->Show({});
    return;
  }
  QStringList parts;
  if (selected->FromCol == 0) {
    parts += tr("Row %1, column %2").arg(viewer_.Row()).arg(viewer_.Column());
  } else if (viewer_.SelectedRowsCount() == 0) {
    parts += selected->FromRow == selected->ToRow
                 ? tr("Text in row %1 selected").arg(selected->FromRow)
                 : tr("Text in rows %1 to %2 selected").arg(selected->FromRow).arg(selected->ToRow);
  } else if (selected->FromRow == selected->ToRow) {
    parts += tr("Row %1 selected").arg(selected->FromRow);
  } else {
    parts += tr("Rows %1 to %2 selected").arg(selected->FromRow).arg(selected->ToRow);
  }
  const QString segments = text_->SegmentsText(viewer_.Row());
  if (!segments.isEmpty()) parts += segments.split(u'\n');
  place_->Show(parts.join(QStringLiteral("  \u00b7  ")));
}

// A selection of the user's. The viewer tells the change back, which is not to be shown again; what observers change
// further is.
void SourceView::Tell(const std::function<void()>& action) {
  isTelling_ = true;
  Guard(action);
  isTelling_ = false;
}

void SourceView::Guard(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::exception& error) {
    Report(QString::fromUtf8(error.what()));
  }
}

void SourceView::GoToSegment(bool isBelow) {
  TakeMarks();
  const int row = text_->CaretRow();
  const auto next = isBelow ? text_->Segments().NextBelow(row) : text_->Segments().NextAbove(row);
  if (next && *next <= text_->Rows()) {
    text_->MoveCaret(*next);
  } else {
    place_->Show(isBelow ? tr("No segment begins below this row.") : tr("No segment begins above this row."));
  }
}

void SourceView::SetZoom(int steps) {
  const int zoom = std::clamp(steps, kLeastZoom, kMostZoom);
  if (zoom == zoom_) return;
  zoom_ = zoom;
  UseFontSize();
  emit ZoomChanged(zoom_);
}

void SourceView::UseFontSize() {
  text_->SetFontSize(std::max(QFontInfo(font()).pointSizeF() + zoom_, kLeastFontSize));
}

void SourceView::Report(const QString& reason) {
  place_->Show(reason);
  emit Failed(reason);
}

void SourceView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::LanguageChange) {
    Retranslate();
    if (!ShowsSource()) Load(std::nullopt);
    ShowPlace();
  } else if (event->type() == QEvent::FontChange) {
    UseFontSize();
  }
}

}  // namespace qmrules::desktop
