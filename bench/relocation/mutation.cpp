#include "relocation/mutation.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>

#include "platform/linereader.h"
#include "shell/trim.h"

namespace qmrules::bench {

namespace {

using Place = std::ptrdiff_t;

std::int32_t Below(std::int32_t limit, std::mt19937& random) {
  return std::uniform_int_distribution<std::int32_t>(0, limit - 1)(random);
}

bool IsOf(const VersionLine& line, const CutSegment& segment) {
  return line.origin >= segment.fromRow && line.origin <= segment.toRow;
}

bool IsOfAny(const VersionLine& line, const std::vector<CutSegment>& segments) {
  return std::ranges::any_of(segments, [&](const auto& segment) { return IsOf(line, segment); });
}

VersionLine NewLine(std::mt19937& random) {
  return {fmt::format("           MOVE WS-NEW-{} TO WS-OTHER-{}.", Below(1'000'000, random), Below(50, random)), 0};
}

Place AnyPlace(const Version& version, std::mt19937& random) {
  return Below(static_cast<std::int32_t>(version.size()) + 1, random);
}

// Lines come in at some places, also into segments now and then, and lines of no segment go.
void EditAround(Version& version, const std::vector<CutSegment>& segments, std::mt19937& random) {
  for (std::int32_t places = 3 + Below(12, random); places > 0; --places) {
    const Place at = AnyPlace(version, random);
    const bool inside = at > 0 && at < std::ssize(version) &&
                        IsOfAny(version[static_cast<std::size_t>(at)], segments) &&
                        IsOfAny(version[static_cast<std::size_t>(at - 1)], segments);
    if (inside && Below(4, random) != 0) continue;
    for (std::int32_t lines = 1 + Below(8, random); lines > 0; --lines) {
      version.insert(version.begin() + at, NewLine(random));
    }
  }
  for (std::int32_t places = Below(8, random); places > 0; --places) {
    const Place at = AnyPlace(version, random);
    if (at == std::ssize(version) || IsOfAny(version[static_cast<std::size_t>(at)], segments)) continue;
    version.erase(version.begin() + at);
  }
}

template <class Change>
void ForEachLine(Version& version, const CutSegment& segment, const Change& change) {
  for (auto& line : version) {
    if (IsOf(line, segment) && !IsBlankLine(line.text)) change(line.text);
  }
}

Version LinesOf(const Version& version, const CutSegment& segment) {
  Version lines;
  std::ranges::copy_if(version, std::back_inserter(lines), [&](const auto& line) { return IsOf(line, segment); });
  return lines;
}

void Move(Version& version, const CutSegment& segment, std::mt19937& random) {
  const Version lines = LinesOf(version, segment);
  std::erase_if(version, [&](const auto& line) { return IsOf(line, segment); });
  version.insert(version.begin() + AnyPlace(version, random), lines.begin(), lines.end());
}

void Copy(Version& version, const CutSegment& segment, std::mt19937& random) {
  Version lines = LinesOf(version, segment);
  for (auto& line : lines) line.origin = 0;
  version.insert(version.begin() + AnyPlace(version, random), lines.begin(), lines.end());
}

void Reindent(Version& version, const CutSegment& segment, std::mt19937& random) {
  const std::string indent(static_cast<std::size_t>(1 + Below(8, random)), ' ');
  ForEachLine(version, segment, [&](std::string& line) { line.insert(0, indent); });
}

void ChangeBlankLines(Version& version, const CutSegment& segment, std::mt19937& random) {
  std::erase_if(version, [&](const auto& line) { return IsOf(line, segment) && IsBlankLine(line.text); });
  for (std::size_t at = 1; at < version.size(); ++at) {
    if (!IsOf(version[at], segment) || !IsOf(version[at - 1], segment) || Below(3, random) != 0) continue;
    version.insert(version.begin() + static_cast<Place>(at), VersionLine{});
    ++at;
  }
}

void Realign(Version& version, const CutSegment& segment, std::mt19937& random) {
  ForEachLine(version, segment, [&](std::string& line) {
    const std::size_t first = line.find_first_not_of(' ');
    const std::size_t gap = line.find(' ', first);
    if (gap == std::string::npos || line.find_first_not_of(' ', gap) == std::string::npos) return;
    line.insert(gap, static_cast<std::size_t>(1 + Below(6, random)), ' ');
  });
}

void ChangeOneLine(Version& version, const CutSegment& segment, std::mt19937& random) {
  const auto rows = segment.toRow - segment.fromRow + 1;
  std::int32_t chosen = Below(rows, random);
  ForEachLine(version, segment, [&](std::string& line) {
    if (chosen-- == 0) line += fmt::format("-{}", Below(1000, random));
  });
}

void Apply(Edit edit, Version& version, const CutSegment& segment, std::mt19937& random) {
  switch (edit) {
    case Edit::Around:
      break;
    case Edit::Moved:
      return Move(version, segment, random);
    case Edit::Reindented:
      return Reindent(version, segment, random);
    case Edit::BlankLines:
      return ChangeBlankLines(version, segment, random);
    case Edit::Copied:
      return Copy(version, segment, random);
    case Edit::Realigned:
      return Realign(version, segment, random);
    case Edit::Changed:
      return ChangeOneLine(version, segment, random);
    case Edit::Mixed:
      return Apply(kEdits[static_cast<std::size_t>(Below(static_cast<std::int32_t>(Edit::Mixed), random))], version,
                   segment, random);
  }
}

}  // namespace

Version FirstVersion(std::string_view programText) {
  Version version;
  for (const auto line : platform::SplitLines(programText)) {
    version.push_back({std::string(line), static_cast<std::int32_t>(version.size()) + 1});
  }
  return version;
}

std::string TextOf(const Version& version) {
  std::string text;
  for (const auto& line : version) text += line.text + "\n";
  return text;
}

bool IsBlankLine(const std::string& line) {
  return shell::IsBlank(line);
}

std::vector<CutSegment> CutSegments(const Version& first, int count, std::mt19937& random) {
  constexpr std::int32_t shortest = 3;
  constexpr std::int32_t longest = 15;
  std::vector<CutSegment> segments;
  const auto rows = static_cast<std::int32_t>(first.size());
  for (int attempt = 0; rows > longest && attempt < 20 * count && std::ssize(segments) < count; ++attempt) {
    const std::int32_t length = shortest + Below(longest - shortest + 1, random);
    const std::int32_t from = Below(rows - length, random);
    const auto isBlank = [&](std::int32_t at) { return IsBlankLine(first[static_cast<std::size_t>(at)].text); };
    if (!isBlank(from) && !isBlank(from + length - 1)) segments.push_back({from + 1, from + length});
  }
  return segments;
}

std::string_view NameOf(Edit edit) {
  constexpr std::string_view names[] = {"around", "moved",     "reindented", "blank_lines",
                                        "copied", "realigned", "changed",    "mixed"};
  return names[static_cast<std::size_t>(edit)];
}

Version Mutate(Version version, const std::vector<CutSegment>& segments, Edit edit, std::mt19937& random) {
  EditAround(version, segments, random);
  for (const auto& segment : segments) Apply(edit, version, segment, random);
  return version;
}

}  // namespace qmrules::bench
