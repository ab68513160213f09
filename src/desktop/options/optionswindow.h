#pragma once

#include <QDialog>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "desktop/options/optiontable.h"
#include "platform/xml.h"

class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QStackedWidget;

namespace qmrules::desktop {

class OptionPage;
class OptionRow;

// An options document that the window works on.
struct OptionsSheet {
  OptionScope scope;
  platform::XmlDocument document;  // changed when the user accepts, and only then
  platform::XmlDocument defaults;  // what a new project or workspace starts with
};

// The options of a project and of its workspace, each with its meaning in words, on pages with a search box.
//
// As the host's dialog for one document:
//
//   services.projectOptionsDialog = [&](XmlDocument& document, std::string_view path) {
//     return OptionsWindow({.sheets = {{OptionScope::Project, document, DefaultProjectOptions()}},
//                           .path = std::string(path)}, &window).exec() == QDialog::Accepted;
//   };
//
// As a window over all options: both sheets, and `store` to keep them.
//
// Nothing but the options that the user changed is written: nodes, attributes and values that the window does not know
// stay as they are. An option whose node is missing is shown with its default and gets a node when it is changed.
class OptionsWindow final : public QDialog {
  Q_OBJECT

 public:
  struct Request {
    std::vector<OptionsSheet> sheets;
    // Only the options at or below the node that this path selects, or all when it is empty or has no options below it.
    std::string path = {};
    // Keeps the changed documents. When it throws platform::Error, the documents are put back as they were, the reader
    // is told, and the window stays open.
    std::function<void()> store = nullptr;
    // The root of the workspace, where folders are chosen from; "" when they can only be typed.
    std::string sourceFolder = {};
  };

  explicit OptionsWindow(Request request, QWidget* parent = nullptr);
  ~OptionsWindow() override;

  // Shows the page with the first option at or below the node of this path. False when there is none.
  bool ShowPage(std::string_view path);

  // The names of the options that were changed and written, such as "CopybookFolders"; empty until the user accepted.
  const std::vector<std::string>& Changed() const { return changed_; }

  // Checks all options and writes those that were changed. Stays open, at the first refused one, when a check fails.
  void accept() override;
  // Asks before changes are dropped.
  void reject() override;

 private:
  struct Entry {
    OptionsSheet* sheet;
    OptionRow* row;
    OptionPage* page;
    OptionValue shown;  // when the window was opened
  };

  void MakePages();
  void AddOption(const OptionSpec& option, OptionsSheet& sheet);
  void LayOut();
  void Filter(const QString& text);
  void RestoreDefaults();
  void Show(const Entry& entry);
  std::vector<Entry*> ChangedEntries();
  bool HasProblem();
  bool Write(const std::vector<Entry*>& entries);

  Request request_;
  std::vector<Entry> entries_;
  std::vector<std::string> changed_;
  QLineEdit* search_ = nullptr;
  QListWidget* pageList_ = nullptr;
  QStackedWidget* stack_ = nullptr;
  QLabel* nothingFound_ = nullptr;
  QDialogButtonBox* buttons_ = nullptr;
};

}  // namespace qmrules::desktop
