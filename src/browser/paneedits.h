#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "browser/attributepanel.h"
#include "browser/browserservices.h"
#include "browser/currentobject.h"
#include "browser/objecttree.h"
#include "platform/event.h"

namespace qmrules::browser {

// Writes what the user types in the panes: each handler runs when the focus leaves its field, SaveName on Enter too. A
// field whose text is what its tag holds writes nothing. A change of a rule is logged.
//
// A text goes through SafeText, and into the field's tag, before it is written; the field shows what was stored. A
// handler sets `cancel` when it refuses the text: it has told the user so, the focus is in the field again, and nothing
// is written.
class PaneEdits {
 public:
  // All of them outlive this.
  PaneEdits(const BrowserServices& services, ObjectTree& tree, const AttributeSource& source,
            AttributePanel& attributes, const CurrentObject& current);
  PaneEdits(const PaneEdits&) = delete;
  PaneEdits& operator=(const PaneEdits&) = delete;

  // The name, while its node is in the tree; one of blanks is refused. All nodes of the object get the new text. A name
  // that cannot be stored stays in the field, and nobody is told. Throws Error when the calls of a function or rule set
  // cannot follow, with nothing written, and when a rule's new name cannot be logged.
  void SaveName(bool& cancel);
  // The two long texts. One that cannot be stored stays in the field, and nobody is told. Throws Error when the change
  // cannot be logged; it is stored then.
  void SaveDescription(bool& cancel);
  void SaveBusiness(bool& cancel);
  // A field of the attribute panel by its index, from 1: one line, choice, long text. A text that the schema document
  // does not admit is refused. Throws Error when the change cannot be stored or logged; the text stays in the field and
  // is not written again.
  void SaveText(int index, bool& cancel);
  void SaveCombo(int index, bool& cancel);
  void SaveLongText(int index, bool& cancel);

  // Told in detailpanes.h.
  bool CommitActiveField();
  void CommitAll();
  bool IsEdited() const;

  // Writes all that is pending and admissible and leaves the rest. Shows nothing; what fails goes to the host as a
  // failure that nobody is there to catch.
  void CommitPending();

 private:
  // A field with the handler that writes it.
  struct Field {
    platform::widgets::Widget* widget = nullptr;
    std::function<void(bool& cancel)> save;
  };

  std::vector<Field> Fields();
  bool IsRule() const;
  void Refuse(platform::widgets::Widget& field, int message, bool& cancel) const;
  void Put(std::string_view attribute, const std::string& value) const;
  void Log(std::string_view attribute, const std::string& value) const;

  bool IsNameChanged() const;
  void WriteName();
  bool PutName(const std::string& name) const;
  void RenameNodes(const std::string& name) const;

  std::string_view BusinessAttribute() const;
  void WriteLongText(platform::widgets::TextBox& field, std::string_view attribute);

  bool IsAttributeChanged(int index) const;
  bool IsAdmissible(int index) const;
  void SaveAttribute(int index, bool& cancel);
  void WriteAttribute(int index);

  BrowserServices services_;
  ObjectTree& objects_;
  AttributeSource source_;
  AttributePanel& attributes_;
  const CurrentObject& current_;
  std::vector<platform::Subscription> hooks_;
};

}  // namespace qmrules::browser
