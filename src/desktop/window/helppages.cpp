#include "desktop/window/helppages.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMessageBox>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "desktop/icons/iconset.h"

namespace qmrules::desktop {

namespace {

// Of the page, in letters and lines, so that it grows with them.
constexpr int kLettersWide = 93;
constexpr int kLinesHigh = 40;
constexpr int kSignSize = 64;

class Pages {
  Q_DECLARE_TR_FUNCTIONS(HelpPages)
};

using Shortcut = WindowMenus::Shortcut;

std::vector<Shortcut> TreeKeys() {
  return {{Pages::tr("Check or uncheck the node"), Pages::tr("Space")},
          {Pages::tr("Delete"), Pages::tr("Del")},
          {Pages::tr("Check all"), Pages::tr("Ctrl+A")},
          {Pages::tr("Uncheck all"), Pages::tr("Ctrl+U")},
          {Pages::tr("Open the popup menu"), Pages::tr("Shift+F10")}};
}

std::vector<Shortcut> SourceKeys() {
  return {{Pages::tr("Select whole rows"), Pages::tr("Shift+Up, Shift+Down")},
          {Pages::tr("Select rows with the mouse"), Pages::tr("Click and drag on the row numbers")}};
}

std::vector<Shortcut> WorkKeys() {
  return {{Pages::tr("Cancel work that takes long"), Pages::tr("Esc")},
          {Pages::tr("Next or previous field"), Pages::tr("Tab, Shift+Tab")}};
}

void AddKeys(QTreeWidget& list, const QString& title, const std::vector<Shortcut>& keys) {
  auto* const group = new QTreeWidgetItem(&list, {title});
  QFont font = group->font(0);
  font.setBold(true);
  group->setFont(0, font);
  group->setFirstColumnSpanned(true);
  for (const auto& [caption, key] : keys) new QTreeWidgetItem(group, {caption, key});
}

}  // namespace

void ShowKeyboardPage(const std::vector<WindowMenus::Shortcut>& shortcuts, QWidget* parent) {
  QDialog page(parent);
  page.setObjectName("keyboardPage");
  page.setWindowTitle(Pages::tr("Keyboard"));
  auto* const layout = new QVBoxLayout(&page);
  auto* const list = new QTreeWidget(&page);
  list->setHeaderLabels({Pages::tr("What it does"), Pages::tr("Key")});
  list->setAccessibleName(Pages::tr("Keyboard"));
  AddKeys(*list, Pages::tr("Window"), shortcuts);
  AddKeys(*list, Pages::tr("Tree of the rules"), TreeKeys());
  AddKeys(*list, Pages::tr("Source"), SourceKeys());
  AddKeys(*list, Pages::tr("Everywhere"), WorkKeys());
  list->expandAll();
  list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  layout->addWidget(list);
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, &page);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &page, &QDialog::reject);
  layout->addWidget(buttons);
  page.resize(kLettersWide * page.fontMetrics().averageCharWidth(), kLinesHigh * page.fontMetrics().lineSpacing());
  page.exec();
}

void ShowAboutPage(QWidget* parent) {
  QMessageBox page(parent);
  page.setWindowTitle(Pages::tr("About"));
  page.setTextFormat(Qt::PlainText);
  page.setIconPixmap(IconSet(parent->palette()).Icon("App").pixmap(kSignSize, kSignSize));
  page.setText(Pages::tr("QMRules Workbench %1").arg(QMRULES_VERSION));
  page.setInformativeText(
      Pages::tr("The catalogue of the business rules of legacy programs.\n\nMade with Qt %1, SQLite "
                "and libxml2.")
          .arg(QString::fromLatin1(qVersion())));
  page.exec();
}

}  // namespace qmrules::desktop
