#include "desktop/options/encodingeditor.h"

#include <QHBoxLayout>

#include "desktop/options/encodingbox.h"

namespace qmrules::desktop {

EncodingEditor::EncodingEditor(QWidget* parent) : OptionEditor(parent), box_(new EncodingBox(this)) {
  auto* const line = new QHBoxLayout(this);
  line->setContentsMargins(0, 0, 0, 0);
  line->addWidget(box_);
  line->addStretch();
  setFocusProxy(box_);
  connect(box_, &EncodingBox::EncodingChanged, this, &OptionEditor::Changed);
}

OptionValue EncodingEditor::Value() const {
  return box_->Encoding();
}

void EncodingEditor::SetValue(const OptionValue& value) {
  box_->SetEncoding(std::get<std::string>(value));
}

}  // namespace qmrules::desktop
