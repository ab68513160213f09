#include "browser/segmentview.h"

#include <algorithm>
#include <string_view>

#include "platform/error.h"
#include "shell/text.h"

namespace qmrules::browser {

using platform::widgets::Color;

namespace {

constexpr std::string_view kViewer = "QMSource";
constexpr int kNotInProject = 586;
constexpr int kNoValidSegment = 622;

}  // namespace

void SegmentView::Clear() const {
  services_.QMWS.PropertyLet(kViewer, "SelectedRowsCount", 0);
  auto& field = services_.widgets.txtFileName;
  field.SetText("");
  field.SetToolTipText("");
  field.SetForeColor(Color::Normal);
}

void SegmentView::Show(const SegmentPlace& segment) const {
  if (segment.model.empty()) return;
  if (segment.programKey.empty()) {
    ShowFailure(kNotInProject, segment.fileName, "");
    return;
  }
  try {
    if (Select(segment)) {
      services_.widgets.txtFileName.SetText(segment.fileName);
      services_.widgets.txtFileName.SetToolTipText(segment.fileName);
    } else {
      ShowFailure(kNoValidSegment, segment.fileName, "");
    }
  } catch (const platform::Error& failure) {
    ShowFailure(kNoValidSegment, segment.fileName, failure.what());
  }
}

// False when the program or the file does not come, and for rows that no file has.
bool SegmentView::Select(const SegmentPlace& segment) const {
  auto& workspace = services_.QMWS;
  if (workspace.ObjectID() != segment.programKey) workspace.SetObjectID(segment.programKey);
  if (workspace.ObjectID() != segment.programKey || !OpenFile(segment.fileName)) return false;
  if (segment.fromRow < 1 || segment.toRow < segment.fromRow) return false;
  workspace.PropertyLet(kViewer, "SelectedRowsCount", 0);
  workspace.PropertyLet(kViewer, "Row", segment.fromRow);
  workspace.PropertyLet(kViewer, "SelectedRowsCount", segment.toRow - segment.fromRow + 1);
  return true;
}

// Walks the viewer's files for the one of this name; false when it has none.
bool SegmentView::OpenFile(const std::string& fileName) const {
  auto& workspace = services_.QMWS;
  const auto onView = workspace.CurFile();
  if (onView && shell::EqualIgnoringCase(onView->FileName, fileName)) return true;
  const std::string files = workspace.PropertyGet(kViewer, "Files").value_or("");
  for (std::string_view rest = files; !rest.empty();) {
    const std::string_view name = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(rest.size(), name.size() + 1));
    if (!shell::EqualIgnoringCase(name, fileName)) continue;
    workspace.PropertyLet(kViewer, "FileName", name);
    return true;
  }
  return false;
}

void SegmentView::ShowFailure(int message, const std::string& fileName, const std::string& cause) const {
  auto& field = services_.widgets.txtFileName;
  const std::string text = shell::Subst(services_.texts.Text(message), {fileName});
  field.SetText(text);
  field.SetToolTipText(cause.empty() ? text : text + "\r\n" + cause);
  field.SetForeColor(Color::Red);
}

}  // namespace qmrules::browser
