#include "desktop/views/qtdialogs.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCursor>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>

#include "desktop/views/formview.h"
#include "desktop/views/qtmenu.h"
#include "desktop/views/qttext.h"

namespace qmrules::desktop {

using platform::FileRequest;
using platform::MessageAnswer;
using platform::MessageStyle;
using platform::NormalCursor;
using platform::widgets::Form;
using platform::widgets::Menu;
using platform::widgets::MenuItem;

namespace {

// "Text file|*.txt|" as "Text file (*.txt)"; several patterns may be parted by ";".
QString FilterOf(const std::string& filter) {
  const QStringList parts = ToQt(filter).split(QLatin1Char('|'), Qt::SkipEmptyParts);
  QStringList filters;
  for (qsizetype part = 0; part + 1 < parts.size(); part += 2) {
    QString patterns = parts[part + 1];
    patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
    filters << QStringLiteral("%1 (%2)").arg(parts[part], patterns);
  }
  return filters.join(QStringLiteral(";;"));
}

// The ending that a name typed without one gets: that of the first pattern, where it tells one.
QString EndingOf(const std::string& filter) {
  const QString pattern = ToQt(filter).section(QLatin1Char('|'), 1, 1).section(QLatin1Char(';'), 0, 0);
  const QString ending = pattern.section(QLatin1Char('.'), -1);
  const bool plain = pattern.startsWith(QStringLiteral("*.")) && !ending.contains(QLatin1Char('*')) &&
                     !ending.contains(QLatin1Char('?'));
  return plain ? ending : QString();
}

// Where a popup that was asked for by a key belongs.
QPoint FocusedPlace() {
  QWidget* const widget = QApplication::focusWidget();
  if (widget == nullptr) return QCursor::pos();
  if (const auto* const items = qobject_cast<QAbstractItemView*>(widget)) {
    const QRect row = items->visualRect(items->currentIndex()).intersected(items->viewport()->rect());
    return items->viewport()->mapToGlobal(row.isEmpty() ? QPoint() : QPoint(row.center().x(), row.bottom()));
  }
  return widget->mapToGlobal(widget->rect().center());
}

}  // namespace

// Tells whether the user's last input was a key.
class QtDialogs::LastInput final : public QObject {
 public:
  LastInput() { qApp->installEventFilter(this); }
  bool WasKey() const { return wasKey_; }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::KeyPress) wasKey_ = true;
    if (event->type() == QEvent::MouseButtonPress) wasKey_ = false;
    return false;
  }

 private:
  bool wasKey_ = false;
};

QtDialogs::QtDialogs(platform::Pointer& pointer, QWidget* mainWindow)
    : pointer_(pointer), mainWindow_(mainWindow), lastInput_(std::make_unique<LastInput>()) {}

QtDialogs::~QtDialogs() = default;

QWidget* QtDialogs::WindowBelow() const {
  QWidget* const modal = QApplication::activeModalWidget();
  return modal != nullptr && modal->isVisible() ? modal : mainWindow_.data();
}

void QtDialogs::ShowModal(Form& form) {
  const NormalCursor normal(pointer_);
  FormView(form, WindowBelow()).Run();
}

MessageAnswer QtDialogs::MessageBox(std::string_view text, std::string_view caption, MessageStyle style) {
  const NormalCursor normal(pointer_);
  QMessageBox box(WindowBelow());
  box.setTextFormat(Qt::PlainText);
  box.setWindowTitle(ToQt(caption));
  box.setText(ToQt(text));
  switch (style) {
    case MessageStyle::Question:
      box.setIcon(QMessageBox::Question);
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
      box.setDefaultButton(QMessageBox::Yes);
      box.setEscapeButton(QMessageBox::No);
      break;
    case MessageStyle::QuestionOkCancel:
      box.setIcon(QMessageBox::Question);
      box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
      box.setDefaultButton(QMessageBox::Ok);
      box.setEscapeButton(QMessageBox::Cancel);
      break;
    case MessageStyle::Information:
    case MessageStyle::Exclamation:
      box.setIcon(style == MessageStyle::Information ? QMessageBox::Information : QMessageBox::Warning);
      box.setStandardButtons(QMessageBox::Ok);
      break;
  }
  switch (box.exec()) {
    case QMessageBox::Yes:
      return MessageAnswer::Yes;
    case QMessageBox::No:
      return MessageAnswer::No;
    case QMessageBox::Cancel:
      return MessageAnswer::Cancel;
    default:
      return MessageAnswer::Ok;
  }
}

std::optional<std::string> QtDialogs::PickFile(const FileRequest& request, bool save) {
  const NormalCursor normal(pointer_);
  QFileDialog dialog(WindowBelow(), ToQt(request.title), ToQt(request.folder), FilterOf(request.filter));
  dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  if (save) dialog.setDefaultSuffix(EndingOf(request.filter));
  if (!request.defaultName.empty()) dialog.selectFile(ToQt(request.defaultName));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return FromQt(dialog.selectedFiles().front());
}

std::optional<std::string> QtDialogs::PickFileToOpen(const FileRequest& request) {
  return PickFile(request, false);
}

std::optional<std::string> QtDialogs::PickFileToSave(const FileRequest& request) {
  return PickFile(request, true);
}

void QtDialogs::PopupMenu(Menu& menu) {
  MenuItem* chosen = nullptr;
  {
    const NormalCursor normal(pointer_);
    QtMenu popup(menu, WindowBelow());
    chosen = popup.Choose(lastInput_->WasKey() ? FocusedPlace() : QCursor::pos());
  }
  if (chosen != nullptr) chosen->Click();
}

}  // namespace qmrules::desktop
