#include "desktop/options/optionswindow.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "desktop/icons/iconset.h"
#include "desktop/options/optiondocument.h"
#include "desktop/options/optionpage.h"
#include "desktop/options/optionrow.h"
#include "platform/error.h"

namespace qmrules::desktop {

namespace {

// Of the window, in letters and lines, so that it grows with them.
constexpr int kLettersWide = 137;
constexpr int kLinesHigh = 43;
constexpr int kPageItemPadding = 15;
constexpr int kPageListPadding = 20;

// True when the option's node is the one that the path selects or stands below it.
bool IsBelow(const platform::XmlDocument& document, const OptionSpec& option, const platform::XmlElement& top) {
  for (auto node = document.selectSingleNode(option.path); node; node = node.parentNode()) {
    if (node == top) return true;
  }
  return false;
}

bool HasOptionBelow(const OptionsSheet& sheet, const platform::XmlElement& top) {
  return std::ranges::any_of(OptionTable(), [&](const OptionSpec& option) {
    return option.scope == sheet.scope && IsBelow(sheet.document, option, top);
  });
}

// The value that an option has where its document has none.
OptionValue DefaultOf(const OptionsSheet& sheet, const OptionSpec& option) {
  auto value = ReadOption(sheet.defaults, option);
  if (!value) throw platform::Error("The default options lack " + std::string(option.name) + ".");
  return *value;
}

}  // namespace

OptionsWindow::OptionsWindow(Request request, QWidget* parent)
    : QDialog(parent),
      request_(std::move(request)),
      search_(new QLineEdit(this)),
      pageList_(new QListWidget(this)),
      stack_(new QStackedWidget(this)),
      nothingFound_(new QLabel(tr("No option matches."), this)),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::RestoreDefaults,
                                    this)) {
  setWindowTitle(tr("Options"));
  pageList_->setIconSize({20, 20});
  MakePages();
  LayOut();
  connect(search_, &QLineEdit::textChanged, this, &OptionsWindow::Filter);
  connect(pageList_, &QListWidget::currentRowChanged, stack_, &QStackedWidget::setCurrentIndex);
  connect(buttons_, &QDialogButtonBox::accepted, this, &OptionsWindow::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &OptionsWindow::reject);
  connect(buttons_->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
          &OptionsWindow::RestoreDefaults);
  pageList_->setCurrentRow(0);
}

OptionsWindow::~OptionsWindow() = default;

void OptionsWindow::MakePages() {
  for (OptionsSheet& sheet : request_.sheets) {
    const auto top = request_.path.empty() ? platform::XmlElement() : sheet.document.selectSingleNode(request_.path);
    const bool showsAll = !top || !HasOptionBelow(sheet, top);
    for (const OptionSpec& option : OptionTable()) {
      if (option.scope != sheet.scope || (!showsAll && !IsBelow(sheet.document, option, top))) continue;
      AddOption(option, sheet);
    }
  }
}

void OptionsWindow::AddOption(const OptionSpec& option, OptionsSheet& sheet) {
  const bool isNewPage = entries_.empty() || entries_.back().row->Option().page != option.page;
  auto* const page = isNewPage ? new OptionPage(option, stack_) : entries_.back().page;
  if (isNewPage) {
    stack_->addWidget(page);
    auto* const item =
        new QListWidgetItem(IconSet(palette()).Icon(option.page->icon), OptionText(option.page->caption));
    const QFontMetrics letters = pageList_->fontMetrics();
    item->setSizeHint({letters.horizontalAdvance(item->text()) + pageList_->iconSize().width() + kPageListPadding,
                       letters.height() + kPageItemPadding});
    pageList_->addItem(item);
  }
  auto& row = page->Add(option, QString::fromStdString(request_.sourceFolder));
  const auto held = ReadOption(sheet.document, option);
  row.Editor().SetValue(held ? *held : DefaultOf(sheet, option));
  entries_.push_back({&sheet, &row, page, row.Editor().Value()});
}

void OptionsWindow::LayOut() {
  search_->setPlaceholderText(tr("Search options"));
  search_->setAccessibleName(tr("Search options"));
  search_->setClearButtonEnabled(true);
  pageList_->setAccessibleName(tr("Pages"));
  pageList_->setFixedWidth(pageList_->sizeHintForColumn(0) + 2 * pageList_->frameWidth());
  nothingFound_->setAlignment(Qt::AlignCenter);
  nothingFound_->hide();
  const bool hasSeveralPages = stack_->count() > 1;
  search_->setVisible(hasSeveralPages);
  pageList_->setVisible(hasSeveralPages);
  auto* const pages = new QHBoxLayout;
  pages->addWidget(pageList_);
  pages->addWidget(stack_, 1);
  pages->addWidget(nothingFound_, 1);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(search_);
  layout->addLayout(pages, 1);
  layout->addWidget(buttons_);
  auto* const restore = buttons_->button(QDialogButtonBox::RestoreDefaults);
  restore->setToolTip(tr("Gives the options of this page the values that they had at first"));
  restore->setAutoDefault(false);
  buttons_->button(QDialogButtonBox::Ok)->setDefault(true);
  const QSize wished(kLettersWide * fontMetrics().averageCharWidth(), kLinesHigh * fontMetrics().lineSpacing());
  const QSize size = wished.boundedTo(screen()->availableSize() - QSize(kPageListPadding, 4 * kPageListPadding));
  resize(size);
  if (!hasSeveralPages) {
    setWindowTitle(tr("Options: %1").arg(OptionText(entries_.front().row->Option().page->caption)));
    resize(size.width() - pageList_->width(), size.height() * 3 / 5);
  }
}

void OptionsWindow::Filter(const QString& text) {
  int firstFound = -1;
  for (int at = 0; at < stack_->count(); ++at) {
    const bool found = static_cast<OptionPage*>(stack_->widget(at))->Filter(text);
    pageList_->item(at)->setHidden(!found);
    if (found && firstFound < 0) firstFound = at;
  }
  stack_->setVisible(firstFound >= 0);
  nothingFound_->setVisible(firstFound < 0);
  auto* const current = pageList_->currentItem();
  if (firstFound >= 0 && (current == nullptr || current->isHidden())) pageList_->setCurrentRow(firstFound);
}

void OptionsWindow::RestoreDefaults() {
  for (const Entry& entry : entries_) {
    if (entry.page != stack_->currentWidget()) continue;
    entry.row->Editor().SetValue(DefaultOf(*entry.sheet, entry.row->Option()));
  }
}

void OptionsWindow::Show(const Entry& entry) {
  search_->clear();
  pageList_->setCurrentRow(stack_->indexOf(entry.page));
  entry.page->ScrollTo(*entry.row);
  entry.row->Editor().setFocus();
}

bool OptionsWindow::ShowPage(std::string_view path) {
  for (const Entry& entry : entries_) {
    const auto top = entry.sheet->document.selectSingleNode(path);
    if (!top || !IsBelow(entry.sheet->document, entry.row->Option(), top)) continue;
    Show(entry);
    return true;
  }
  return false;
}

std::vector<OptionsWindow::Entry*> OptionsWindow::ChangedEntries() {
  std::vector<Entry*> changed;
  for (Entry& entry : entries_) {
    if (entry.row->Editor().Value() != entry.shown) changed.push_back(&entry);
  }
  return changed;
}

bool OptionsWindow::HasProblem() {
  const Entry* first = nullptr;
  for (const Entry* const entry : ChangedEntries()) {
    const auto check = entry->row->Option().check;
    const QString problem = check == nullptr ? QString() : check(entry->row->Editor().Value());
    entry->row->ShowProblem(problem);
    if (!problem.isEmpty() && first == nullptr) first = entry;
  }
  if (first != nullptr) Show(*first);
  return first != nullptr;
}

// Writes all of them and stores the documents, or nothing.
bool OptionsWindow::Write(const std::vector<Entry*>& entries) {
  std::vector<UndoWrite> undo;
  try {
    for (const Entry* const entry : entries) {
      undo.push_back(WriteOption(entry->sheet->document, entry->sheet->defaults, entry->row->Option(),
                                 entry->row->Editor().Value()));
    }
    if (request_.store && !entries.empty()) request_.store();
  } catch (const platform::Error& failure) {
    for (auto step = undo.rbegin(); step != undo.rend(); ++step) (*step)();
    QMessageBox::warning(
        this, windowTitle(),
        tr("The options were not stored, and are as they were.") + "\n\n" + QString::fromUtf8(failure.what()));
    return false;
  }
  return true;
}

void OptionsWindow::accept() {
  // A line of a list that is still being typed is taken when its field loses focus.
  if (auto* const typed = focusWidget()) typed->clearFocus();
  if (HasProblem()) return;
  const auto changed = ChangedEntries();
  if (!Write(changed)) return;
  for (const Entry* const entry : changed) changed_.emplace_back(entry->row->Option().name);
  QDialog::accept();
}

void OptionsWindow::reject() {
  if (!ChangedEntries().empty()) {
    const auto answer = QMessageBox::question(this, windowTitle(), tr("Drop the changes that you have made?"));
    if (answer != QMessageBox::Yes) return;
  }
  QDialog::reject();
}

}  // namespace qmrules::desktop
