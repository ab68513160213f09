#pragma once

#include <QWidget>

#include "desktop/options/optiontable.h"

class QAbstractButton;
class QButtonGroup;
class QCheckBox;
class QLineEdit;
class QPlainTextEdit;

namespace qmrules::desktop {

// The field of one option. It holds a value of the option's kind and shows no caption, but for a switch, whose box has
// it.
class OptionEditor : public QWidget {
  Q_OBJECT

 public:
  using QWidget::QWidget;
  virtual OptionValue Value() const = 0;
  virtual void SetValue(const OptionValue& value) = 0;
  // True when the editor shows the option's caption itself.
  virtual bool ShowsCaption() const { return false; }

 signals:
  // The value has changed, by the user or by SetValue.
  void Changed();
};

// The editor for the option's kind. `sourceFolder`: the root of the workspace, where folders are chosen from; "" when
// they can only be typed.
OptionEditor* MakeOptionEditor(const OptionSpec& option, const QString& sourceFolder, QWidget* parent);

class TextEditor final : public OptionEditor {
  Q_OBJECT

 public:
  explicit TextEditor(QWidget* parent);
  OptionValue Value() const override;
  void SetValue(const OptionValue& value) override;

 private:
  QLineEdit* field_;
};

class LongTextEditor final : public OptionEditor {
  Q_OBJECT

 public:
  explicit LongTextEditor(QWidget* parent);
  OptionValue Value() const override;
  void SetValue(const OptionValue& value) override;

 private:
  QPlainTextEdit* field_;
};

class SwitchEditor final : public OptionEditor {
  Q_OBJECT

 public:
  SwitchEditor(const OptionSpec& option, QWidget* parent);
  OptionValue Value() const override;
  void SetValue(const OptionValue& value) override;
  bool ShowsCaption() const override { return true; }

 private:
  QCheckBox* box_;
};

// A value that is not among the choices is offered besides them while it is held, so that it is not lost unseen.
class ChoiceEditor final : public OptionEditor {
  Q_OBJECT

 public:
  ChoiceEditor(const OptionSpec& option, QWidget* parent);
  OptionValue Value() const override;
  void SetValue(const OptionValue& value) override;

 private:
  QAbstractButton* Add(const QString& caption);

  const OptionSpec& option_;
  QButtonGroup* group_;
  QAbstractButton* unknown_ = nullptr;
  std::string unknownValue_;
};

}  // namespace qmrules::desktop
