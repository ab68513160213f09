#pragma once

#include "desktop/options/optioneditor.h"

namespace qmrules::desktop {

class EncodingBox;

class EncodingEditor final : public OptionEditor {
  Q_OBJECT

 public:
  explicit EncodingEditor(QWidget* parent);
  OptionValue Value() const override;
  void SetValue(const OptionValue& value) override;

 private:
  EncodingBox* box_;
};

}  // namespace qmrules::desktop
