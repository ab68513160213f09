#pragma once

#include <QScrollArea>
#include <vector>

#include "desktop/options/optiontable.h"

class QVBoxLayout;

namespace qmrules::desktop {

class OptionRow;

// The options of one page, below their headline.
class OptionPage final : public QScrollArea {
  Q_OBJECT

 public:
  OptionPage(const OptionSpec& first, QWidget* parent);

  OptionRow& Add(const OptionSpec& option, const QString& sourceFolder);
  const std::vector<OptionRow*>& Rows() const { return rows_; }

  // Shows the options that match, all for an empty text. False when there is none.
  bool Filter(const QString& text);
  void ScrollTo(OptionRow& row);

 private:
  std::vector<OptionRow*> rows_;
  QVBoxLayout* layout_;
};

}  // namespace qmrules::desktop
