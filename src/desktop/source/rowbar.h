#pragma once

#include "desktop/source/textbar.h"

namespace qmrules::desktop {

// The field for going to a row. Enter goes there and closes it; a row that the text does not have is told.
class RowBar final : public TextBar {
  Q_OBJECT

 public:
  explicit RowBar(CodeText& text, QWidget* parent = nullptr);
  void Open();

 protected:
  void Act(bool withShift) override;
  void Retranslate() override;

 private:
  void ShowRows();
};

}  // namespace qmrules::desktop
