#pragma once

#include <QLabel>

namespace qmrules::desktop {

// A text that changes. A screen reader says what it is and what it tells: "Place in the source: Row 12".
class NamedText final : public QLabel {
 public:
  using QLabel::QLabel;
  void SetName(const QString& name);
  void Show(const QString& text);

 private:
  void Name();

  QString name_;
};

}  // namespace qmrules::desktop
