#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/component.h"
#include "platform/sourceviewer.h"
#include "platform/workspace.h"

namespace qmrules::platform {

// A command in the host's menu.
struct HostCommand {
  std::string component;
  std::string key;
  std::string menuPath;
  bool enabled = true;
  bool visible = true;
  bool checked = false;
  friend bool operator==(const HostCommand&, const HostCommand&) = default;
};

// A workspace without windows. Components are put in by name; its own answers (settings, substitutions, the current
// object) are set by whoever owns it; what the user does in the host's windows is raised by calls.
class MemoryWorkspace final : public Workspace {
 public:
  // Both outlive the workspace.
  MemoryWorkspace(FrontEnd& frontEnd, platform::Progress& progress) : frontEnd_(frontEnd), progress_(progress) {}
  MemoryWorkspace(const MemoryWorkspace&) = delete;
  MemoryWorkspace& operator=(const MemoryWorkspace&) = delete;

  // Registers a component; it outlives the workspace. One of the same name is replaced.
  void AddComponent(std::string name, Component& component) { components_[std::move(name)] = &component; }
  // Makes the viewer answer Selected() and CurFile(), and raises the workspace's events for its changes. It outlives
  // the workspace.
  void SetViewer(SourceViewer& viewer);

  // The commands, in the order of their registration, with their present states.
  const std::vector<HostCommand>& Commands() const { return commands_; }
  // A command, or nullptr.
  const HostCommand* FindCommand(std::string_view component, std::string_view key) const;
  // True while the component's window is shown.
  bool IsShown(std::string_view component) const;
  // The component that last told that it has the focus; "" for none.
  const std::string& FocusedComponent() const { return focused_; }
  // The texts given to ErrorRecord.
  const std::vector<std::string>& Errors() const { return errors_; }

  void SetSetting(std::string_view section, std::string_view name, std::string value);
  // What the property "EvalSubst;" & name of "QMWS" gives.
  void SetSubstitution(std::string name, std::string value) { substitutions_[std::move(name)] = std::move(value); }
  void SetFont(platform::Font font) { font_ = std::move(font); }
  // Nothing is handed over: these outlive their use. nullptr for none.
  void SetSourceModel(platform::SourceModel* model) {
    SetSourceModelProvider([model] { return model; });
  }
  // Asked at each call of SourceModel(), so that a model can be opened when it is first needed.
  void SetSourceModelProvider(std::function<platform::SourceModel*()> provider) { sourceModel_ = std::move(provider); }
  void SetSearchEngine(platform::SearchEngine* engine) { searchEngine_ = engine; }
  void SetCurrentConstruct(const ModelObject* construct) { construct_ = construct; }
  // Asked before another object becomes current; by default every object may.
  void SetObjectGate(std::function<bool(std::string_view key)> admits) { admits_ = std::move(admits); }

  // Forgets all commands of a component, as when it leaves.
  void RemoveMethods(std::string_view component);
  // Told after commands were registered or forgotten, and after the state of one was set to another.
  [[nodiscard]] Subscription OnCommandsChanged(std::function<void()> observer);
  // Told of each text that is given to ErrorRecord.
  [[nodiscard]] Subscription OnErrorRecorded(std::function<void(const std::string& message)> observer);

  // Raises OnMethodRequested as a choice in the host's menu does; gives the result that an observer set.
  Value RequestMethod(const std::string& component, const std::string& key);
  void RaiseSelectedChanged() { selectedChanged_.Raise(); }
  // property "": all properties of the component may have changed.
  void RaisePropertyChanged(const std::string& component, const std::string& property, const Value& value);

  FrontEnd& FE() override { return frontEnd_; }
  platform::Progress& Progress() override { return progress_; }
  std::optional<std::string> PropertyGet(std::string_view component, std::string_view property) override;
  void PropertyLet(std::string_view component, std::string_view property, const Value& value) override;
  std::optional<Value> MethodCall(std::string_view component, std::string_view method,
                                  std::string_view argument) override;
  void AddMethod(std::string_view component, std::string_view key, std::string_view menuPath) override;
  std::string ObjectID() const override { return objectId_; }
  void SetObjectID(std::string_view key) override;
  platform::Font Font() const override { return font_; }
  std::optional<SelectedRange> Selected() override;
  std::optional<CurrentFile> CurFile() override;
  const ModelObject* CurrentConstruct() override { return construct_; }
  void ErrorRecord(std::string_view message) override;
  std::string Setting(std::string_view section, std::string_view name) override;
  platform::SourceModel* SourceModel() override { return sourceModel_ ? sourceModel_() : nullptr; }
  platform::SearchEngine* SearchEngine() override { return searchEngine_; }
  Subscription OnMethodRequested(MethodObserver observer) override;
  Subscription OnObjectIDChanged(std::function<void()> observer) override;
  Subscription OnSelectedChanged(std::function<void()> observer) override;
  Subscription OnPropertyChanged(PropertyObserver observer) override;

 private:
  Component* FindComponent(std::string_view name) const;
  void ChangeState(HostCommand& command, const std::string& state);

  FrontEnd& frontEnd_;
  platform::Progress& progress_;
  std::map<std::string, Component*, std::less<>> components_;
  SourceViewer* viewer_ = nullptr;
  std::vector<HostCommand> commands_;
  std::map<std::string, bool, std::less<>> shown_;
  std::string focused_;
  std::vector<std::string> errors_;
  std::map<std::pair<std::string, std::string>, std::string> settings_;
  std::map<std::string, std::string, std::less<>> substitutions_;
  platform::Font font_;
  std::function<platform::SourceModel*()> sourceModel_;
  platform::SearchEngine* searchEngine_ = nullptr;
  const ModelObject* construct_ = nullptr;
  std::string objectId_;
  std::function<bool(std::string_view)> admits_;
  Event<std::string, std::string, Value&> methodRequested_;
  Event<> objectIdChanged_;
  Event<> selectedChanged_;
  Event<> commandsChanged_;
  Event<std::string> errorRecorded_;
  Event<std::string, std::string, Value> propertyChanged_;
  Subscription fileChanges_;
  Subscription selectionChanges_;
};

}  // namespace qmrules::platform
