#include "cli/sourcesegment.h"

#include <fmt/format.h>

#include <charconv>
#include <filesystem>
#include <optional>
#include <vector>

#include "catalogue/registeredsources.h"
#include "cli/command.h"
#include "cli/workspacecommand.h"
#include "platform/error.h"
#include "shell/casefold.h"
#include "shell/utf16.h"

namespace qmrules::cli {

using platform::Error;

namespace {

// A row from 1; nothing for any other text.
std::optional<std::int32_t> ParseRow(std::string_view text) {
  std::int32_t row = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), row);
  if (failure != std::errc() || end != text.data() + text.size() || row < 1) return std::nullopt;
  return row;
}

std::string WithSlashes(std::string path) {
  for (char& character : path) {
    if (character == '\\') character = '/';
  }
  return path;
}

// The programs of the file, named from the source folder on or, where there are none, from the current folder on.
std::vector<catalogue::RegisteredSource> ProgramsOf(workbench::EmbeddedHost& host, const CliEnvironment& environment,
                                                    const std::string& file) {
  const std::filesystem::path fromRoot(WithSlashes(file));
  if (fromRoot.is_relative()) {
    auto programs = catalogue::RegisteredSources(host, fromRoot.lexically_normal().string());
    if (!programs.empty()) return programs;
  }
  std::error_code unknown;  // a path that cannot be resolved is that of no registered file
  const auto absolute = std::filesystem::weakly_canonical(AbsolutePath(environment, fromRoot.string()), unknown);
  if (unknown) return {};
  return catalogue::RegisteredSources(host, absolute.lexically_relative(host.Folder().SourceFolder()).generic_string());
}

const catalogue::RegisteredSource& ProgramNamed(const std::vector<catalogue::RegisteredSource>& programs,
                                                const SegmentPlace& place, const std::string& name) {
  if (programs.empty()) {
    throw Error(fmt::format("{0} is no source of the project; \"qmrules source add {0}\" makes it one.", place.file));
  }
  if (name.empty() && programs.size() == 1) return programs.front();
  std::string names;
  for (const auto& program : programs) {
    if (shell::EqualIgnoringCase(program.name, name)) return program;
    names += (names.empty() ? "" : ", ") + program.name;
  }
  if (name.empty()) {
    throw Error(fmt::format("{} holds several programs: {}; name one with --program NAME.", place.file, names));
  }
  throw Error(fmt::format("{} holds no program \"{}\"; it holds: {}.", place.file, name, names));
}

}  // namespace

SegmentPlace ParseSegmentPlace(const std::string& text) {
  const std::size_t colon = text.rfind(':');
  if (colon != std::string::npos && colon > 0) {
    const std::string_view rows = std::string_view(text).substr(colon + 1);
    const std::size_t dash = rows.find('-');
    const auto from = ParseRow(rows.substr(0, dash));
    const auto to = dash == std::string_view::npos ? from : ParseRow(rows.substr(dash + 1));
    if (from && to && *from <= *to) return {text.substr(0, colon), *from, *to};
  }
  throw UsageError(
      fmt::format("\"{}\" names no lines: write FILE:FROM-TO, with rows from 1, as \"billing.cbl:437-460\".", text));
}

segments::Segment ReadSegment(workbench::EmbeddedHost& host, const CliEnvironment& environment,
                              const SegmentPlace& place, const std::string& program) {
  const auto programs = ProgramsOf(host, environment, place.file);
  const auto& source = ProgramNamed(programs, place, program);
  const std::string path = host.FileSystem().ResolveInside(host.Folder().SourceFolder(), source.file);
  auto text = segments::ReadSourceLines(host.FileSystem(), path, place.fromRow, place.toRow);
  if (text.empty()) throw Error(fmt::format("{} ends before line {}.", source.file, place.fromRow));
  if (segments::IsTooLong(text)) {
    throw Error(fmt::format("The lines {}-{} of {} have {} characters, and a segment has at most {}; name fewer lines.",
                            place.fromRow, place.toRow, source.file, shell::CharacterCount(text),
                            segments::kLongestSegment));
  }
  return {.Model = source.language,
          .Program = source.name,
          .FileName = source.file,
          .FromRow = place.fromRow,
          .ToRow = place.toRow,
          .SourceText = std::move(text)};
}

}  // namespace qmrules::cli
