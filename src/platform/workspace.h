#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/event.h"
#include "platform/frontend.h"
#include "platform/progress.h"
#include "platform/value.h"

namespace qmrules::platform {

class ModelObject;
class SearchEngine;
class SourceModel;

// The font that the host's components show their texts in.
struct Font {
  std::string family;
  double points = 0;  // 0: the system's own
  bool bold = false;
};

// The current selection in the workspace: rows and columns from 1; FromCol 0 means that no text is selected.
struct SelectedRange {
  int FromRow = 0;
  int FromCol = 0;
  int ToRow = 0;
};

// The file in the source viewer.
struct CurrentFile {
  std::string FileName;  // relative to the source folder
  std::string Language;  // "COBOL", "NATURAL", "NATSUBROUTINE", "PLI", "RPG", "JCL"
};

// The host workspace `QMWS`. Components (the control, the source viewer "QMSource", the trace tool
// "QMRippleExplorer", the list tool "Gleaner") are addressed by name, their properties and methods by text.
class Workspace {
 public:
  virtual ~Workspace() = default;

  virtual FrontEnd& FE() = 0;
  virtual platform::Progress& Progress() = 0;

  // Reads a component's property as text; nothing when the component does not answer. The component "QMWS" is the
  // workspace itself ("EvalSubst;" & name).
  virtual std::optional<std::string> PropertyGet(std::string_view component, std::string_view property) = 0;

  // Writes a component's property. For a component's own command key the values "enable", "disable", "show", "hide",
  // "check", "uncheck" set the state of its menu item in the host; for the property "" the values "show" and "hide"
  // tell that the component's window is shown or hidden. A component that is not there is passed over.
  virtual void PropertyLet(std::string_view component, std::string_view property, const Value& value) = 0;

  // Calls a component's method; nothing when there is no such component. Throws Error when the method fails.
  virtual std::optional<Value> MethodCall(std::string_view component, std::string_view method,
                                          std::string_view argument) = 0;

  // Registers a command of a component under `menuPath`, the component's external name & "|" & caption; the caption
  // "-" is a separator. An empty key registers the menu itself.
  virtual void AddMethod(std::string_view component, std::string_view key, std::string_view menuPath) = 0;

  // Key of the workspace's current object, the program on view; "" for none.
  virtual std::string ObjectID() const = 0;
  // Makes another object current. The workspace may refuse: ObjectID() then still gives the old one.
  virtual void SetObjectID(std::string_view key) = 0;

  virtual platform::Font Font() const = 0;

  virtual std::optional<SelectedRange> Selected() = 0;
  virtual std::optional<CurrentFile> CurFile() = 0;

  // The object of the code model that the user has picked in the source viewer, or nullptr. Good until the selection or
  // the current object changes.
  virtual const ModelObject* CurrentConstruct() = 0;

  // Takes the text of a failure that its routine does not report by itself.
  virtual void ErrorRecord(std::string_view message) = 0;

  // A setting of the workspace, such as "Gleaner", "ListName"; "" when it is unset.
  virtual std::string Setting(std::string_view section, std::string_view name) = 0;

  // The code model of the current object, or nullptr.
  virtual platform::SourceModel* SourceModel() = 0;
  // The store of the list tool's lists, or nullptr.
  virtual platform::SearchEngine* SearchEngine() = 0;

  // A command of component `who` was requested in the host's menu.
  using MethodObserver = std::function<void(const std::string& who, const std::string& actionid, Value& result)>;
  [[nodiscard]] virtual Subscription OnMethodRequested(MethodObserver observer) = 0;
  [[nodiscard]] virtual Subscription OnObjectIDChanged(std::function<void()> observer) = 0;
  [[nodiscard]] virtual Subscription OnSelectedChanged(std::function<void()> observer) = 0;
  using PropertyObserver =
      std::function<void(const std::string& component, const std::string& property, const Value& value)>;
  [[nodiscard]] virtual Subscription OnPropertyChanged(PropertyObserver observer) = 0;
};

}  // namespace qmrules::platform
