#pragma once

#include <QDialog>
#include <functional>

#include "workbench/host/embeddedhost.h"

class QCheckBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;

namespace qmrules::desktop {

class EncodingBox;

// Asks for what a new workspace needs, and makes it. A failure is shown in the dialog, which stays open with what was
// typed.
class NewWorkspaceDialog final : public QDialog {
  Q_OBJECT

 public:
  // Makes the workspace. Throws platform::Error, nothing having been made.
  using Maker = std::function<void(const workbench::EmbeddedHost::NewWorkspace&)>;

  explicit NewWorkspaceDialog(Maker make, QWidget* parent = nullptr);

  // Of the workspace that was made.
  QString Folder() const;
  bool WantsScan() const;

  void accept() override;

 private:
  void LayOut();
  void Browse();
  void FolderChanged();
  void ShowWhetherReady();

  Maker make_;
  QLineEdit* folder_;
  QLineEdit* project_;
  EncodingBox* encoding_;
  QCheckBox* scan_;
  QLabel* failure_;
  QDialogButtonBox* buttons_;
};

}  // namespace qmrules::desktop
