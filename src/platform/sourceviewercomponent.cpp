#include "platform/sourceviewercomponent.h"

#include <fmt/format.h>

#include <charconv>
#include <limits>

#include "platform/error.h"

namespace qmrules::platform {

namespace {

int RowNumber(std::string_view property, const Value& value) {
  const std::int64_t number = value.Integer();
  if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max()) {
    throw Error(fmt::format("{} is out of range for {}.", number, property));
  }
  return static_cast<int>(number);
}

// Cuts the number behind the last ":" off the text; nothing, with the text as it was, when there is no such number.
std::optional<int> CutNumber(std::string_view& text) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const std::string_view digits = text.substr(colon + 1);
  int number = 0;
  const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (digits.empty() || error != std::errc() || stop != digits.data() + digits.size() || number < 0) {
    return std::nullopt;
  }
  text = text.substr(0, colon);
  return number;
}

SegmentMark MarkOf(std::string_view argument) {
  std::string_view rest = argument;
  const auto toRow = CutNumber(rest);
  const auto fromRow = toRow ? CutNumber(rest) : std::nullopt;
  if (!fromRow || rest.empty()) {
    throw Error(fmt::format("\"{}\" is not a segment such as \"COBOL#12:100:120\".", argument));
  }
  return {std::string(rest), *fromRow, *toRow};
}

SourcePosition PositionOf(std::string_view argument) {
  std::string_view rest = argument;
  const auto last = CutNumber(rest);
  const auto before = last ? CutNumber(rest) : std::nullopt;
  if (!last || rest.empty()) {
    throw Error(fmt::format("\"{}\" is not a position such as \"PAYROLL.CBL:100:12\".", argument));
  }
  if (before) return {std::string(rest), *before, *last};
  return {std::string(rest), *last, 1};
}

}  // namespace

std::optional<std::string> SourceViewerComponent::PropertyGet(std::string_view property) {
  if (property == "Files") {
    std::string lines;
    for (const std::string& file : viewer_.Files()) lines += file + "\n";
    return lines;
  }
  const auto file = viewer_.CurFile();
  if (!file) return std::nullopt;
  if (property == "Row") return std::to_string(viewer_.Row());
  if (property == "SelectedRowsCount") return std::to_string(viewer_.SelectedRowsCount());
  if (property == "FileName") return file->FileName;
  return std::nullopt;
}

void SourceViewerComponent::PropertyLet(std::string_view property, const Value& value) {
  if (property == "Row") {
    viewer_.SetRow(RowNumber(property, value));
  } else if (property == "SelectedRowsCount") {
    viewer_.SetSelectedRowsCount(RowNumber(property, value));
  } else if (property == "FileName") {
    viewer_.OpenFile(value.Text());
  }
}

Value SourceViewerComponent::MethodCall(std::string_view method, std::string_view argument) {
  if (method == "CheckSegment") {
    if (argument.empty()) {
      viewer_.ClearMarks();
    } else {
      viewer_.CheckSegment(MarkOf(argument));
    }
  } else if (method == "GoTo") {
    viewer_.GoTo(PositionOf(argument));
  } else {
    throw Error(fmt::format("The source viewer has no method \"{}\".", method));
  }
  return {};
}

}  // namespace qmrules::platform
