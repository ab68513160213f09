#pragma once

#include <QString>

#include "desktop/options/optioneditor.h"

class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace qmrules::desktop {

// A list of texts, each with a tick: added, edited in place (F2 or a double click), removed with Delete, and put in
// order.
class TextListEditor final : public OptionEditor {
  Q_OBJECT

 public:
  TextListEditor(const OptionSpec& option, const QString& sourceFolder, QWidget* parent);
  OptionValue Value() const override;
  void SetValue(const OptionValue& value) override;

 private:
  QListWidgetItem* Append(const QString& text, bool counts);
  void AddTyped();
  void AddFolder();
  void RemoveCurrent();
  void MoveCurrent(int rows);
  void UpdateButtons();

  QString sourceFolder_;
  QListWidget* list_;
  QPushButton* remove_;
  QPushButton* up_;
  QPushButton* down_;
};

}  // namespace qmrules::desktop
