#include "desktop/locator/locator.h"

#include <QApplication>
#include <QGraphicsDropShadowEffect>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "desktop/locator/locatordelegate.h"
#include "desktop/locator/locatormodel.h"
#include "platform/error.h"

namespace qmrules::desktop {

namespace {

constexpr std::size_t kShownEntries = 50;
// In letters and lines, so that the popup grows with them.
constexpr int kLettersWide = 107;
constexpr int kLinesHigh = 30;
constexpr int kMargin = 10;
constexpr int kTopShare = 8;  // the popup stands one part in so many below the top of the window

bool MovesInList(int key) {
  return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

}  // namespace

Locator::Locator(LocatorSource& source, Chosen chosen, QWidget* parent)
    : QFrame(parent->window()),
      source_(source),
      chosen_(std::move(chosen)),
      field_(new QLineEdit(this)),
      list_(new QListView(this)),
      state_(new QLabel(this)),
      model_(new LocatorModel(this)) {
  hide();
  LayOut();
  ShowTexts();
  model_->SetPalette(palette());
  step_.setInterval(0);
  connect(&step_, &QTimer::timeout, this, &Locator::GoOn);
  connect(field_, &QLineEdit::textChanged, this, &Locator::Begin);
  connect(list_, &QListView::clicked, this, &Locator::ChooseCurrent);
  connect(qApp, &QApplication::focusChanged, this, [this](const QWidget* /*old*/, const QWidget* now) {
    if (isVisible() && now != nullptr && now != this && !isAncestorOf(now)) Close();
  });
  field_->installEventFilter(this);
  window()->installEventFilter(this);
}

Locator::~Locator() = default;

void Locator::LayOut() {
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  auto* const shadow = new QGraphicsDropShadowEffect(this);
  shadow->setBlurRadius(24);
  shadow->setOffset(0, 6);
  shadow->setColor(QColor(0, 0, 0, 110));
  setGraphicsEffect(shadow);
  field_->setClearButtonEnabled(true);
  list_->setModel(model_);
  list_->setItemDelegate(new LocatorDelegate(list_));
  list_->setUniformItemSizes(true);
  list_->setFocusPolicy(Qt::NoFocus);
  list_->setFrameShape(QFrame::NoFrame);
  state_->setWordWrap(true);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->addWidget(field_);
  layout->addWidget(list_, 1);
  layout->addWidget(state_);
}

void Locator::ShowTexts() {
  setAccessibleName(tr("Locator"));
  field_->setPlaceholderText(tr("Go to a function, rule set, rule or program"));
  field_->setAccessibleName(tr("Part of a name"));
  list_->setAccessibleName(tr("Matches"));
  ShowState();
}

void Locator::Open() {
  if (!isVisible()) focusBefore_ = QApplication::focusWidget();
  Place();
  show();
  raise();
  field_->setFocus();
  field_->selectAll();
  Begin();
}

void Locator::Close() {
  if (isHidden()) return;
  step_.stop();
  search_.reset();
  const bool hadFocus = isAncestorOf(QApplication::focusWidget());
  hide();
  if (hadFocus && focusBefore_ != nullptr) focusBefore_->setFocus();
}

void Locator::Place() {
  const QSize room = parentWidget()->size();
  const QSize wished(kLettersWide * fontMetrics().averageCharWidth(), kLinesHigh * fontMetrics().lineSpacing());
  const QSize size = wished.boundedTo(room);
  setGeometry((room.width() - size.width()) / 2, std::min(room.height() / kTopShare, room.height() - size.height()),
              size.width(), size.height());
}

// Searches for the text of the field. The first step is done at once, so that Enter never goes to what an earlier text
// has found.
void Locator::Begin() {
  failure_.clear();
  try {
    const std::string text = field_->text().toStdString();
    auto narrowed = search_ == nullptr ? nullptr : search_->NarrowedTo(text);
    search_ = narrowed == nullptr ? source_.Find(text, kShownEntries) : std::move(narrowed);
  } catch (const platform::Error& failure) {
    Fail(failure);
    return;
  }
  step_.start();
  GoOn();
}

void Locator::GoOn() {
  if (search_ == nullptr) return;
  try {
    if (!search_->Continue()) step_.stop();
  } catch (const platform::Error& failure) {
    Fail(failure);
    return;
  }
  ShowFound();
  ShowState();
}

void Locator::ShowFound() {
  const int row = list_->currentIndex().row();
  const std::string current = row > 0 ? model_->Entry(row).key : std::string();
  model_->Show(search_->Best(), LocatorQuery(field_->text().toStdString()));
  if (model_->rowCount() > 0) list_->setCurrentIndex(model_->index(std::max(0, model_->RowOf(current))));
}

void Locator::Fail(const platform::Error& failure) {
  step_.stop();
  search_.reset();
  failure_ = QString::fromUtf8(failure.what());
  ShowState();
}

void Locator::ShowState() {
  const bool isSearching = step_.isActive();
  if (!failure_.isEmpty()) {
    state_->setText(failure_);
  } else if (field_->text().trimmed().isEmpty()) {
    state_->setText(tr("Type a part of a name, or several parts with blanks between them."));
  } else if (model_->rowCount() == 0) {
    state_->setText(isSearching ? tr("Searching... %1 %").arg(search_->Percent()) : tr("No name matches."));
  } else if (isSearching) {
    state_->setText(tr("Searching for better matches... %1 %. Enter goes to the marked one.").arg(search_->Percent()));
  } else {
    state_->setText(tr("Enter goes to the marked one, Escape closes."));
  }
}

void Locator::ChooseCurrent() {
  const QModelIndex current = list_->currentIndex();
  if (!current.isValid()) return;
  const LocatorEntry entry = model_->Entry(current.row());
  Close();
  chosen_(entry);
}

bool Locator::TakeKey(QKeyEvent& key) {
  if (key.key() == Qt::Key_Escape) {
    Close();
    return true;
  }
  if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
    ChooseCurrent();
    return true;
  }
  if (MovesInList(key.key())) {
    QApplication::sendEvent(list_, &key);
    return true;
  }
  return key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab;
}

bool Locator::eventFilter(QObject* watched, QEvent* event) {
  if (watched == field_ && event->type() == QEvent::KeyPress) return TakeKey(static_cast<QKeyEvent&>(*event));
  if (watched == parentWidget() && event->type() == QEvent::Resize && isVisible()) Place();
  return QFrame::eventFilter(watched, event);
}

void Locator::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() == QEvent::LanguageChange) ShowTexts();
  if (event->type() == QEvent::PaletteChange) model_->SetPalette(palette());
}

}  // namespace qmrules::desktop
