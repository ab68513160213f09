#pragma once

#include <QWidget>

#include "desktop/options/optioneditor.h"

class QLabel;

namespace qmrules::desktop {

// One option on its page: caption, meaning, field, and below them what is wrong with its value.
class OptionRow final : public QWidget {
  Q_OBJECT

 public:
  OptionRow(const OptionSpec& option, const QString& sourceFolder, QWidget* parent);

  const OptionSpec& Option() const { return option_; }
  OptionEditor& Editor() { return *editor_; }
  const OptionEditor& Editor() const { return *editor_; }

  // Shows what is wrong, or nothing when the text is empty. The next change of the value takes it away.
  void ShowProblem(const QString& problem);

  // True when each word of the text stands in a text of the option, its page included.
  bool Matches(const QString& text) const;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void LayOut();
  void TintTexts();

  const OptionSpec& option_;
  OptionEditor* editor_;
  QLabel* meaning_;
  QLabel* problem_;
};

}  // namespace qmrules::desktop
