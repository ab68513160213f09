#pragma once

#include <QCoreApplication>
#include <QPointer>
#include <QWidget>
#include <memory>

#include "platform/dialogs.h"
#include "platform/pointer.h"

namespace qmrules::desktop {

// Everything that stops and waits for the user, as windows of Qt. A window comes up over the dialog that is up already,
// else over the main window.
class QtDialogs final : public platform::Dialogs {
  Q_DECLARE_TR_FUNCTIONS(qmrules::desktop::QtDialogs)

 public:
  // Both outlive this; `mainWindow` may be nullptr.
  QtDialogs(platform::Pointer& pointer, QWidget* mainWindow);
  ~QtDialogs() override;

  // What a handler throws goes to QApplication::notify, and the form stays up.
  void ShowModal(platform::widgets::Form& form) override;
  platform::MessageAnswer MessageBox(std::string_view text, std::string_view caption,
                                     platform::MessageStyle style) override;
  std::optional<std::string> PickFileToOpen(const platform::FileRequest& request) override;
  std::optional<std::string> PickFileToSave(const platform::FileRequest& request) override;
  // At the pointer; after a key, at the item that has the focus.
  void PopupMenu(platform::widgets::Menu& menu) override;

 private:
  class LastInput;

  QWidget* WindowBelow() const;
  std::optional<std::string> PickFile(const platform::FileRequest& request, bool save);

  platform::Pointer& pointer_;
  QPointer<QWidget> mainWindow_;
  std::unique_ptr<LastInput> lastInput_;
};

}  // namespace qmrules::desktop
