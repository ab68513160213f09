#pragma once

#include <QPlainTextEdit>

#include "desktop/views/widgetbinding.h"
#include "platform/widgets/richtextbox.h"

namespace qmrules::desktop {

// Shows a field of several lines. Tab leaves it.
class QtRichTextBox final : public QPlainTextEdit {
 public:
  QtRichTextBox(FocusBridge& focus, platform::widgets::RichTextBox& model, QWidget* parent);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 private:
  void Show();
  void Edited();
  void HandSelection();
  QString TextNow() const;

  platform::widgets::RichTextBox& model_;
  WidgetBinding binding_;
  QString held_;   // the model's text
  QString shown_;  // the same with each line break as one line feed
  bool showing_ = false;
  bool handing_ = false;
  platform::Subscription changed_;
};

}  // namespace qmrules::desktop
