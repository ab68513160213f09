#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/database.h"
#include "platform/dataflow.h"
#include "platform/filesystem.h"
#include "platform/keyedcollection.h"
#include "platform/settings.h"
#include "platform/tesselglobals.h"
#include "platform/widgets/imagelist.h"
#include "platform/widgets/splitter.h"
#include "platform/workspace.h"
#include "platform/xml.h"
#include "shell/messages.h"

namespace qmrules::shell {

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

  // The attribute repair walks all rules, so it runs only when there may be something to repair: after a change of the
  // schema document, or when rules were written since it ran. The host keeps that mark with its store.
  std::function<bool()> repairIsDue;
  std::function<void()> repairIsDone;
};

// The control: made, then Init, then shown and hidden any number of times, then DeInit, after which it may be given to
// another workspace. Nothing of the catalogue is kept between commands.
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

  // Gives everything back and saves the layout. Does nothing without a workspace. Throws Error when the layout cannot
  // be saved; everything is given back all the same.
  void DeInit();

  // Whether the control takes the user's actions. Nothing else depends on it.
  bool Enabled() const { return enabled_; }
  void Enabled(bool New_Enabled) { enabled_ = New_Enabled; }

  // Takes a loader's failure text and does nothing with it: the target that bulk operations report single failures to.
  void ErrorRecord(std::string_view Msg);

  bool HasWorkspace() const { return state_ != nullptr; }

  // What Init read, each until DeInit; std::logic_error without a workspace.
  const platform::XmlDocument& SchemaDocument() const;
  // The path that the schema document was read from and is saved to.
  const std::string& SchemaPath() const;
  // The element `entityattrs` of the rules in it.
  const platform::XmlElement& SchemaElement() const;
  // The attributes of a rule that have a field, and those of them that the user may change, each under its own name.
  const platform::KeyedCollection<std::string>& ShownAttributes() const;
  const platform::KeyedCollection<std::string>& EditableAttributes() const;
  // Place in the attribute panel, from 1, under the attribute's name.
  const platform::KeyedCollection<int>& AttributeIndex() const;
  // Names of the panel's attributes that have a field of several lines.
  const platform::KeyedCollection<std::string>& LongTextAttributes() const;
  // The attributes of a rule that the panes read, as a fetch list.
  const std::string& AttributeFetchList() const;
  // Keys of the checked tree nodes.
  platform::KeyedCollection<std::string>& SelectedKeys();
  // Pictures of the tree's nodes, by entity name.
  const platform::widgets::ImageList& NodeImages() const;
  const std::string& HelpFile() const;
  const platform::Font& Font() const;

  // The panes "Objects", "Descriptions", "FirstArea" and "SecondArea". Lives as long as the control.
  platform::widgets::Splitter& PaneSplitter() { return splitter_; }

 private:
  struct State;
  const State& Held() const;
  void LayOutPanes();

  ControlServices services_;
  platform::widgets::Splitter splitter_;
  std::unique_ptr<State> state_;
  bool enabled_ = true;
};

}  // namespace qmrules::shell
