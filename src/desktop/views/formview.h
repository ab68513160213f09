#pragma once

#include <QDialog>
#include <QVBoxLayout>
#include <memory>
#include <vector>

#include "platform/event.h"
#include "platform/widgets/form.h"

namespace qmrules::desktop {

class FocusBridge;

// The window of a form, laid out by itself in the order of its widgets: each label left of its field, lists, trees and
// long texts over the whole width and growing, what a frame encloses within the frame, and the buttons at the bottom
// right.
class FormView final : public QDialog {
 public:
  // `form` outlives this.
  FormView(platform::widgets::Form& form, QWidget* parent);
  ~FormView() override;

  // Shows the window and returns once the form is hidden.
  void Run();

  QWidget* ViewOf(const platform::widgets::Widget& model) const;

 protected:
  void reject() override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Show();

  platform::widgets::Form& form_;
  std::unique_ptr<FocusBridge> focus_;
  std::vector<platform::Subscription> subscriptions_;
};

}  // namespace qmrules::desktop
