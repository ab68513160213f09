#include "segments/sourceselection.h"

#include <fmt/format.h>

#include <limits>
#include <optional>

#include "catalogue/gateway.h"
#include "platform/error.h"

namespace qmrules::segments {

namespace {

constexpr int kNoSelection = 598;

struct Rows {
  std::int32_t first = 0;
  std::int32_t count = 0;
};

std::int32_t NumberOf(platform::Workspace& workspace, std::string_view property) {
  const auto text = workspace.PropertyGet(kSourceViewer, property);
  const std::int64_t number = text ? platform::Value(*text).Integer() : 0;
  if (number < std::numeric_limits<std::int32_t>::min() || number > std::numeric_limits<std::int32_t>::max()) {
    throw platform::Error(fmt::format("The source viewer's {} is out of range: {}.", property, number));
  }
  return static_cast<std::int32_t>(number);
}

// The whole rows that are selected. A selection made upwards has a negative count and ends at the caret's row.
Rows SelectedRows(platform::Workspace& workspace) {
  if (!workspace.PropertyGet(kSourceViewer, "Row")) return {};
  const Rows rows{NumberOf(workspace, "Row"), NumberOf(workspace, "SelectedRowsCount")};
  return rows.count < 0 ? Rows{rows.first + rows.count + 1, -rows.count} : rows;
}

Rows RowsOfText(platform::Workspace& workspace) {
  const auto selected = workspace.Selected();
  if (!selected || selected->FromCol == 0) return {};
  return {selected->FromRow, selected->ToRow - selected->FromRow + 1};
}

}  // namespace

Segment GetSourceSegment(const SelectionServices& services, bool showMessage) {
  platform::Workspace& workspace = services.QMWS;
  Rows rows = SelectedRows(workspace);
  if (rows.count == 0) rows = RowsOfText(workspace);
  const auto refuse = [&](int message) {
    services.dialogs.MessageBox(services.texts.Text(message), services.globals.externalName,
                                platform::MessageStyle::Exclamation);
  };
  const auto file = workspace.CurFile();
  if (rows.count == 0 || !file) {
    if (showMessage) refuse(kNoSelection);
    return {};
  }

  Segment segment;
  segment.FromRow = rows.first;
  segment.ToRow = rows.first + rows.count - 1;
  const std::string folder = workspace.FE().GetFerrowoodName(platform::FerrowoodName::SourceFolder);
  std::string text =
      ReadSourceLines(services.fileSystem, folder + "\\" + file->FileName, segment.FromRow, segment.ToRow);
  if (IsTooLong(text)) {
    refuse(kSegmentTooLong);
  } else {
    const std::string program = workspace.ObjectID();
    segment.Model = catalogue::SplitKey(program).entity;
    segment.Program = services.repository.object(program)->Attrs("Name").Text();
    segment.FileName = file->FileName;
    segment.SourceText = std::move(text);
  }
  workspace.PropertyLet(kSourceViewer, "SelectedRowsCount", 0);
  workspace.PropertyLet(kSourceViewer, "Row", segment.FromRow);
  workspace.PropertyLet(kSourceViewer, "SelectedRowsCount", rows.count);
  return segment;
}

}  // namespace qmrules::segments
