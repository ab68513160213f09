#pragma once

#include <QFrame>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <functional>
#include <memory>

#include "desktop/locator/locatorsource.h"

class QKeyEvent;
class QLabel;
class QLineEdit;
class QListView;

namespace qmrules::platform {
class Error;
}

namespace qmrules::desktop {

class LocatorModel;

// The locator: a popup with a field and a list. The user types a part of a name, goes through what is offered with Up,
// Down, Page Up and Page Down without leaving the field, and jumps with Enter or a click; Escape closes it, and so does
// a click elsewhere.
class Locator final : public QFrame {
  Q_OBJECT

 public:
  using Chosen = std::function<void(const LocatorEntry&)>;

  // `source` outlives this. `chosen` is told of the entry that the user chose, after the popup was closed.
  Locator(LocatorSource& source, Chosen chosen, QWidget* parent);
  ~Locator() override;

  // Opens the popup over the upper middle of the parent's window, with the text of the last time selected.
  void Open();

  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void LayOut();
  void ShowTexts();
  void Place();
  void Close();
  void Begin();
  void GoOn();
  void ShowFound();
  void ShowState();
  void Fail(const platform::Error& failure);
  void ChooseCurrent();
  bool TakeKey(QKeyEvent& key);

  LocatorSource& source_;
  Chosen chosen_;
  std::unique_ptr<LocatorSearch> search_;
  QString failure_;
  QPointer<QWidget> focusBefore_;
  QTimer step_;
  QLineEdit* field_ = nullptr;
  QListView* list_ = nullptr;
  QLabel* state_ = nullptr;
  LocatorModel* model_ = nullptr;
};

}  // namespace qmrules::desktop
