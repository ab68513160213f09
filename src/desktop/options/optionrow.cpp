#include "desktop/options/optionrow.h"

#include <QEvent>
#include <QLabel>
#include <QPalette>
#include <QVBoxLayout>

namespace qmrules::desktop {

namespace {

constexpr float kMeaningOpacity = 0.75F;
const QColor kRedOnLight(0xb3, 0x1b, 0x17);
const QColor kRedOnDark(0xf2, 0x8b, 0x82);

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

void Tint(QLabel* label, const QColor& color) {
  QPalette tinted;
  tinted.setColor(QPalette::WindowText, color);
  label->setPalette(tinted);
}

}  // namespace

OptionRow::OptionRow(const OptionSpec& option, const QString& sourceFolder, QWidget* parent)
    : QWidget(parent),
      option_(option),
      editor_(MakeOptionEditor(option, sourceFolder, this)),
      meaning_(new QLabel(OptionText(option.meaning), this)),
      problem_(new QLabel(this)) {
  LayOut();
  TintTexts();
  connect(editor_, &OptionEditor::Changed, this, [this] { ShowProblem({}); });
}

void OptionRow::LayOut() {
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  if (!editor_->ShowsCaption()) {
    auto* const caption = new QLabel(OptionText(option_.caption), this);
    QFont font = caption->font();
    font.setWeight(QFont::DemiBold);
    caption->setFont(font);
    caption->setBuddy(editor_);
    layout->addWidget(caption);
  }
  if (editor_->ShowsCaption()) layout->addWidget(editor_);
  layout->addWidget(meaning_);
  if (!editor_->ShowsCaption()) layout->addWidget(editor_);
  layout->addWidget(problem_);
  meaning_->setWordWrap(true);
  problem_->setWordWrap(true);
  problem_->hide();
  QWidget* const field = editor_->focusProxy() == nullptr ? editor_ : editor_->focusProxy();
  if (option_.kind != OptionKind::Choice) field->setAccessibleName(OptionText(option_.caption));
  field->setAccessibleDescription(OptionText(option_.meaning));
}

void OptionRow::ShowProblem(const QString& problem) {
  problem_->setText(problem);
  problem_->setVisible(!problem.isEmpty());
}

bool OptionRow::Matches(const QString& text) const {
  QString all = OptionText(option_.page->caption) + '\n' + OptionText(option_.caption) + '\n' +
                OptionText(option_.meaning) + '\n' +
                QString::fromUtf8(option_.name.data(), static_cast<qsizetype>(option_.name.size()));
  for (const OptionChoice& choice : option_.choices) all += '\n' + OptionText(choice.caption);
  const auto words = text.split(' ', Qt::SkipEmptyParts);
  return std::all_of(words.begin(), words.end(),
                     [&](const QString& word) { return all.contains(word, Qt::CaseInsensitive); });
}

void OptionRow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) TintTexts();
}

void OptionRow::TintTexts() {
  QColor quiet = palette().color(QPalette::WindowText);
  quiet.setAlphaF(kMeaningOpacity);
  Tint(meaning_, quiet);
  Tint(problem_, IsDark(palette()) ? kRedOnDark : kRedOnLight);
}

}  // namespace qmrules::desktop
