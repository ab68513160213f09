#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "browser/controlwidgets.h"
#include "platform/clock.h"
#include "platform/database.h"
#include "platform/dataflow.h"
#include "platform/dialogs.h"
#include "platform/event.h"
#include "platform/filesystem.h"
#include "platform/keyedcollection.h"
#include "platform/pointer.h"
#include "platform/repository.h"
#include "platform/settings.h"
#include "platform/tesselglobals.h"
#include "platform/widgets/splitter.h"
#include "platform/workspace.h"
#include "platform/xml.h"
#include "shell/failurereport.h"
#include "shell/messages.h"

namespace qmrules::validation {
struct ValidationReport;
}

namespace qmrules::shell {

class BoundControl;

// What the host lends the control. All of it outlives the control.
struct ControlServices {
  platform::TesselGlobals& globals;
  const StringTable& texts;
  platform::FileSystem& fileSystem;
  const platform::Registry& registry;
  platform::UserSettings& settings;
  const platform::Clock& clock;
  platform::DatabaseEngine& databases;
  platform::TracingLibrary& tracing;
  platform::Dialogs& dialogs;
  platform::Pointer& pointer;

  // The attribute repair walks all rules, so it runs only when there may be something to repair: after a change of the
  // schema document, or when rules were written since it ran. The host keeps that mark with its store.
  std::function<bool()> repairIsDue;
  std::function<void()> repairIsDone;
};

// The control. What a host does with it, in this order:
//
//   1. Makes it, and a view over Widgets() and PaneSplitter(), which live as long as the control. The popup menu and
//      the tool bar are filled from the start, in the language of `texts`; another language is another control.
//   2. Init, once the workspace stands. The commands are registered now (AddMethod), the attribute panel has its
//      fields, and the splitter its layout.
//   3. Show when the control comes into sight, Hide when it goes out of sight, any number of times; EnterFocus each
//      time that the focus comes to a widget of the control from elsewhere.
//   4. Raises the workspace's events (a command that was chosen in its menu, another current object, another
//      selection, a change of the source viewer); the control hears them from Init to DeInit.
//   5. DeInit before it drops the control or the workspace. The control may then be given another workspace.
//
// Failures: what the control itself is called for (the workspace's events, Show, the tool bar and the menus) is told to
// the user in a message box and does not come through. What the user does to a widget by the functions marked "user"
// throws platform::Error when it fails; the host catches it where its events arrive and gives its text to
// Failures().Tell. The control lives on in both cases, and what stands in the widgets is what stood there before.
class QMRules {
 public:
  explicit QMRules(ControlServices services);
  QMRules(const QMRules&) = delete;
  QMRules& operator=(const QMRules&) = delete;
  ~QMRules();

  // Takes the workspace, registers the commands under `aExtName`, and reads the schema document, the options and the
  // saved layout. `aIntName` is the name by which the workspace knows the control. Throws Error when any of these fails
  // (a picture that cannot be read is none); the control is then without a workspace as before. Throws std::logic_error
  // when it has one.
  void Init(platform::Workspace& aQMWS, std::string_view aIntName, std::string_view aExtName);

  // Each of the three does nothing without a workspace.
  //
  // Tells the workspace, fills the tree from the repository, demotes the rules whose source has changed or vanished,
  // and looks for the glossary. What fails is told to the user and leaves out that step only.
  void Show();
  // Tells the workspace. The widgets stay as they are until the next Show.
  void Hide();
  // Tells the workspace that the control has the focus.
  void EnterFocus();

  // Takes what other processes have changed, as Repository::TakeForeignChanges gives it behind its events: brings the
  // tree in line and shows the current object again where it is concerned, unless a field is being edited. While the
  // control is hidden it does nothing: Show reads everything. What fails is recorded with the workspace.
  void MendFromStore(const platform::ForeignChanges& changes);

  // Commits what the user has typed, gives everything back and saves the layout. Does nothing without a workspace.
  // Throws Error when an edit cannot be written or the layout cannot be saved; everything is given back all the same.
  void DeInit();

  // Whether the control takes the user's actions. Nothing else depends on it: a view greys itself as a whole, with what
  // is in its widgets as it was, and hands nothing on meanwhile.
  bool Enabled() const { return enabled_; }
  void Enabled(bool New_Enabled);
  platform::Event<> OnEnabledChanged;

  // What the command Validate has found, with its texts, before the user is told; whoever hears it may keep it. The
  // command does more work while someone listens.
  platform::Event<std::shared_ptr<const validation::ValidationReport>> OnValidated;

  // Takes a loader's failure text and does nothing with it: the target that bulk operations report single failures to.
  void ErrorRecord(std::string_view Msg);

  bool HasWorkspace() const { return bound_ != nullptr; }
  // Between Show and Hide.
  bool IsShown() const;

  // For views; each lives as long as the control.
  browser::ControlWidgets& Widgets() { return widgets_; }
  // The panes "Objects", "Descriptions", "FirstArea" and "SecondArea".
  platform::widgets::Splitter& PaneSplitter() { return splitter_; }
  // The one place that tells the user of a failure.
  const FailureReport& Failures() const { return failures_; }

  // What Init read, each until DeInit; std::logic_error without a workspace.

  // The schema document, and the path that it was read from and is saved to.
  const platform::XmlDocument& SchemaDocument() const;
  const std::string& SchemaPath() const;
  // The element `entityattrs` of the rules in it.
  const platform::XmlElement& SchemaElement() const;
  // The attributes of a rule that have a field, and those of them that the user may change, each under its own name.
  const platform::KeyedCollection<std::string>& ShownAttributes() const;
  const platform::KeyedCollection<std::string>& EditableAttributes() const;
  // The host's help file, "" for none, and the font of the workspace.
  const std::string& HelpFile() const;
  const platform::Font& Font() const;

 private:
  const BoundControl& Bound() const;

  ControlServices services_;
  FailureReport failures_;
  platform::widgets::Splitter splitter_;
  browser::ControlWidgets widgets_;
  std::unique_ptr<BoundControl> bound_;
  bool enabled_ = true;
};

}  // namespace qmrules::shell
