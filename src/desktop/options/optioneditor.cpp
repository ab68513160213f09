#include "desktop/options/optioneditor.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "desktop/options/encodingeditor.h"
#include "desktop/options/textlisteditor.h"

namespace qmrules::desktop {

namespace {

constexpr int kLongTextRows = 3;

QVBoxLayout* BareLayout(QWidget* owner) {
  auto* const layout = new QVBoxLayout(owner);
  layout->setContentsMargins(0, 0, 0, 0);
  return layout;
}

}  // namespace

OptionEditor* MakeOptionEditor(const OptionSpec& option, const QString& sourceFolder, QWidget* parent) {
  switch (option.kind) {
    case OptionKind::LongText:
      return new LongTextEditor(parent);
    case OptionKind::Choice:
      return new ChoiceEditor(option, parent);
    case OptionKind::Boolean:
    case OptionKind::Presence:
      return new SwitchEditor(option, parent);
    case OptionKind::Texts:
      return new TextListEditor(option, sourceFolder, parent);
    case OptionKind::Encoding:
      return new EncodingEditor(parent);
    case OptionKind::Text:
      break;
  }
  return new TextEditor(parent);
}

TextEditor::TextEditor(QWidget* parent) : OptionEditor(parent), field_(new QLineEdit(this)) {
  BareLayout(this)->addWidget(field_);
  setFocusProxy(field_);
  connect(field_, &QLineEdit::textChanged, this, &OptionEditor::Changed);
}

OptionValue TextEditor::Value() const {
  return field_->text().toStdString();
}

void TextEditor::SetValue(const OptionValue& value) {
  field_->setText(QString::fromStdString(std::get<std::string>(value)));
  field_->setCursorPosition(0);
}

LongTextEditor::LongTextEditor(QWidget* parent) : OptionEditor(parent), field_(new QPlainTextEdit(this)) {
  field_->setTabChangesFocus(true);
  const int frame = 2 * field_->frameWidth() + static_cast<int>(2 * field_->document()->documentMargin());
  field_->setFixedHeight(kLongTextRows * fontMetrics().lineSpacing() + frame);
  BareLayout(this)->addWidget(field_);
  setFocusProxy(field_);
  connect(field_, &QPlainTextEdit::textChanged, this, &OptionEditor::Changed);
}

OptionValue LongTextEditor::Value() const {
  return field_->toPlainText().toStdString();
}

void LongTextEditor::SetValue(const OptionValue& value) {
  field_->setPlainText(QString::fromStdString(std::get<std::string>(value)));
}

SwitchEditor::SwitchEditor(const OptionSpec& option, QWidget* parent)
    : OptionEditor(parent), box_(new QCheckBox(OptionText(option.caption), this)) {
  BareLayout(this)->addWidget(box_);
  setFocusProxy(box_);
  connect(box_, &QCheckBox::toggled, this, &OptionEditor::Changed);
}

OptionValue SwitchEditor::Value() const {
  return box_->isChecked();
}

void SwitchEditor::SetValue(const OptionValue& value) {
  box_->setChecked(std::get<bool>(value));
}

ChoiceEditor::ChoiceEditor(const OptionSpec& option, QWidget* parent)
    : OptionEditor(parent), option_(option), group_(new QButtonGroup(this)) {
  BareLayout(this);
  for (const OptionChoice& choice : option.choices) Add(OptionText(choice.caption));
  connect(group_, &QButtonGroup::idToggled, this, [this](int /*id*/, bool isChosen) {
    if (!isChosen) return;
    setFocusProxy(group_->checkedButton());
    emit Changed();
  });
}

QAbstractButton* ChoiceEditor::Add(const QString& caption) {
  auto* const button = new QRadioButton(caption, this);
  layout()->addWidget(button);
  group_->addButton(button, static_cast<int>(group_->buttons().size()));
  if (focusProxy() == nullptr) setFocusProxy(button);
  return button;
}

OptionValue ChoiceEditor::Value() const {
  const int chosen = group_->checkedId();
  if (chosen < 0 || static_cast<std::size_t>(chosen) >= option_.choices.size()) return unknownValue_;
  return std::string(option_.choices[static_cast<std::size_t>(chosen)].value);
}

void ChoiceEditor::SetValue(const OptionValue& value) {
  const auto& wanted = std::get<std::string>(value);
  for (std::size_t at = 0; at < option_.choices.size(); ++at) {
    if (option_.choices[at].value != wanted) continue;
    group_->button(static_cast<int>(at))->setChecked(true);
    return;
  }
  unknownValue_ = wanted;
  if (unknown_ == nullptr) unknown_ = Add({});
  unknown_->setText(tr("“%1”, as it stands in the file").arg(QString::fromStdString(wanted)));
  unknown_->setChecked(true);
}

}  // namespace qmrules::desktop
