#include "platform/memoryworkspace.h"

#include <algorithm>

#include "platform/error.h"

namespace qmrules::platform {

namespace {

constexpr std::string_view viewerComponent = "QMSource";
constexpr std::string_view ownComponent = "QMWS";
constexpr std::string_view substitutionProperty = "EvalSubst;";

}  // namespace

void MemoryWorkspace::SetViewer(SourceViewer& viewer) {
  viewer_ = &viewer;
  fileChanges_ = viewer.OnFileChanged([this] {
    const auto file = viewer_->CurFile();
    RaisePropertyChanged(std::string(viewerComponent), "FileName", file ? file->FileName : std::string());
  });
  selectionChanges_ = viewer.OnSelectionChanged([this] { selectedChanged_.Raise(); });
}

const HostCommand* MemoryWorkspace::FindCommand(std::string_view component, std::string_view key) const {
  const auto found = std::find_if(commands_.begin(), commands_.end(), [&](const HostCommand& command) {
    return command.component == component && command.key == key;
  });
  return found == commands_.end() ? nullptr : &*found;
}

bool MemoryWorkspace::IsShown(std::string_view component) const {
  const auto found = shown_.find(component);
  return found != shown_.end() && found->second;
}

Component* MemoryWorkspace::FindComponent(std::string_view name) const {
  const auto found = components_.find(name);
  return found == components_.end() ? nullptr : found->second;
}

void MemoryWorkspace::SetSetting(std::string_view section, std::string_view name, std::string value) {
  settings_[{std::string(section), std::string(name)}] = std::move(value);
}

std::string MemoryWorkspace::Setting(std::string_view section, std::string_view name) {
  const auto found = settings_.find({std::string(section), std::string(name)});
  return found == settings_.end() ? std::string() : found->second;
}

Value MemoryWorkspace::RequestMethod(const std::string& component, const std::string& key) {
  Value result;
  methodRequested_.Raise(component, key, result);
  return result;
}

void MemoryWorkspace::RaisePropertyChanged(const std::string& component, const std::string& property,
                                           const Value& value) {
  propertyChanged_.Raise(component, property, value);
}

std::optional<std::string> MemoryWorkspace::PropertyGet(std::string_view component, std::string_view property) {
  if (component == ownComponent) {
    if (!property.starts_with(substitutionProperty)) return std::nullopt;
    const auto found = substitutions_.find(property.substr(substitutionProperty.size()));
    return found == substitutions_.end() ? std::string() : found->second;
  }
  Component* const asked = FindComponent(component);
  return asked == nullptr ? std::nullopt : asked->PropertyGet(property);
}

void MemoryWorkspace::ChangeState(HostCommand& command, const std::string& state) {
  const HostCommand before = command;
  if (state == "enable" || state == "disable") {
    command.enabled = state == "enable";
  } else if (state == "show" || state == "hide") {
    command.visible = state == "show";
  } else if (state == "check" || state == "uncheck") {
    command.checked = state == "check";
  } else {
    throw Error("The command " + command.key + " has no state \"" + state + "\".");
  }
  if (command != before) commandsChanged_.Raise();
}

void MemoryWorkspace::PropertyLet(std::string_view component, std::string_view property, const Value& value) {
  if (property.empty()) {
    shown_.insert_or_assign(std::string(component), value.Text() == "show");
    return;
  }
  if (component == "Container" && property == "CurrFocus") {
    focused_ = value.Text();
    return;
  }
  const auto command = std::find_if(commands_.begin(), commands_.end(), [&](const HostCommand& registered) {
    return registered.component == component && registered.key == property;
  });
  if (command != commands_.end()) {
    ChangeState(*command, value.Text());
  } else if (Component* const addressed = FindComponent(component)) {
    addressed->PropertyLet(property, value);
  }
}

std::optional<Value> MemoryWorkspace::MethodCall(std::string_view component, std::string_view method,
                                                 std::string_view argument) {
  Component* const called = FindComponent(component);
  if (called == nullptr) return std::nullopt;
  return called->MethodCall(method, argument);
}

void MemoryWorkspace::AddMethod(std::string_view component, std::string_view key, std::string_view menuPath) {
  commands_.push_back({std::string(component), std::string(key), std::string(menuPath), true, true, false});
  commandsChanged_.Raise();
}

void MemoryWorkspace::RemoveMethods(std::string_view component) {
  const auto removed =
      std::erase_if(commands_, [&](const HostCommand& command) { return command.component == component; });
  if (removed > 0) commandsChanged_.Raise();
}

void MemoryWorkspace::ErrorRecord(std::string_view message) {
  errors_.emplace_back(message);
  errorRecorded_.Raise(std::string(message));
}

void MemoryWorkspace::SetObjectID(std::string_view key) {
  if (key == objectId_ || (admits_ && !admits_(key))) return;
  objectId_ = key;
  objectIdChanged_.Raise();
}

std::optional<SelectedRange> MemoryWorkspace::Selected() {
  return viewer_ == nullptr ? std::nullopt : viewer_->Selected();
}

std::optional<CurrentFile> MemoryWorkspace::CurFile() {
  return viewer_ == nullptr ? std::nullopt : viewer_->CurFile();
}

Subscription MemoryWorkspace::OnCommandsChanged(std::function<void()> observer) {
  return commandsChanged_.Subscribe(std::move(observer));
}

Subscription MemoryWorkspace::OnErrorRecorded(std::function<void(const std::string&)> observer) {
  return errorRecorded_.Subscribe(std::move(observer));
}

Subscription MemoryWorkspace::OnMethodRequested(MethodObserver observer) {
  return methodRequested_.Subscribe(std::move(observer));
}

Subscription MemoryWorkspace::OnObjectIDChanged(std::function<void()> observer) {
  return objectIdChanged_.Subscribe(std::move(observer));
}

Subscription MemoryWorkspace::OnSelectedChanged(std::function<void()> observer) {
  return selectedChanged_.Subscribe(std::move(observer));
}

Subscription MemoryWorkspace::OnPropertyChanged(PropertyObserver observer) {
  return propertyChanged_.Subscribe(std::move(observer));
}

}  // namespace qmrules::platform
