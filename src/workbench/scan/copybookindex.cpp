#include "workbench/scan/copybookindex.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <set>
#include <system_error>
#include <utility>

#include "platform/diskfolder.h"
#include "platform/error.h"
#include "shell/casefold.h"

namespace qmrules::workbench {

namespace {

namespace fs = std::filesystem;

// Suffixes that a COPY leaves out, in the order of preference; from kFirstOfProgram on those that programs have, too.
constexpr std::array<std::string_view, 9> kSuffixes{"",     ".cpy", ".copy", ".inc",  ".dcl",
                                                    ".cpb", ".cbl", ".cob",  ".cobol"};
constexpr std::size_t kFirstOfProgram = 6;

bool HasCopybookSuffix(std::string_view folded) {
  return std::any_of(kSuffixes.begin() + 1, kSuffixes.begin() + kFirstOfProgram, [&](std::string_view suffix) {
    return folded.size() >= suffix.size() &&
           shell::EqualIgnoringCase(folded.substr(folded.size() - suffix.size()), suffix);
  });
}

// Both without links.
bool IsInside(const fs::path& root, const fs::path& path) {
  const auto [endOfRoot, at] = std::mismatch(root.begin(), root.end(), path.begin(), path.end());
  return endOfRoot == root.end();
}

bool LeadsInside(const fs::path& root, const fs::path& link) {
  std::error_code failed;
  const fs::path target = fs::canonical(link, failed);
  return !failed && IsInside(root, target);
}

// True for a name that is no plain path downwards from the folder that it is looked for in.
bool LeadsOut(std::string_view path) {
  if (path.find('\0') != path.npos || path.find(':') != path.npos) return true;
  for (std::size_t start = 0; start <= path.size();) {
    const std::size_t end = std::min(path.find('/', start), path.size());
    const std::string_view part = path.substr(start, end - start);
    if (part.empty() || part == "." || part == "..") return true;
    start = end + 1;
  }
  return false;
}

// Without case and with "/" only.
std::string Folded(std::string_view path) {
  std::string slashed(path);
  std::ranges::replace(slashed, '\\', '/');
  return shell::FoldCase(slashed);
}

std::string FoldedFolder(std::string_view path) {
  return path.empty() ? "/" : fmt::format("/{}/", Folded(path));
}

std::string_view FolderOf(std::string_view file) {
  const std::size_t slash = file.rfind('/');
  return slash == file.npos ? std::string_view() : file.substr(0, slash);
}

// Relative to the root.
std::string Joined(const std::string& folder, std::string_view name) {
  return folder.empty() ? std::string(name) : fmt::format("{}/{}", folder, name);
}

}  // namespace

CopybookIndex::CopybookIndex(const fs::path& root, const std::vector<std::string>& copybookFolders,
                             const SourceLimits& limits)
    : areNamed_(!copybookFolders.empty()) {
  Walk(root, copybookFolders, limits);
  for (const std::string& folder : copybookFolders) {
    turns_.emplace(FoldedFolder(folder), static_cast<std::uint32_t>(turns_.size()));
  }
  if (!areNamed_) SearchAllFolders();
}

void CopybookIndex::Walk(const fs::path& root, const std::vector<std::string>& copybookFolders,
                         const SourceLimits& limits) {
  std::vector<std::pair<std::string, int>> folders;
  folders.reserve(copybookFolders.size() + 1);
  // A folder that was named is searched even where the walk from the root passes it over.
  for (const std::string& folder : copybookFolders) folders.emplace_back(folder, limits.depth);
  folders.emplace_back("", 1);
  std::set<std::string> walked;
  std::size_t files = 0;
  while (!folders.empty()) {
    const auto [folder, depth] = std::move(folders.back());
    folders.pop_back();
    if (!walked.insert(folder).second) continue;
    for (auto& inner : AddFiles(root, folder, files, limits)) {
      if (depth < limits.depth) folders.emplace_back(std::move(inner), depth + 1);
    }
  }
}

// Gives the folders in this one that may be searched, too.
std::vector<std::string> CopybookIndex::AddFiles(const fs::path& root, const std::string& folder, std::size_t& files,
                                                 const SourceLimits& limits) {
  const auto number = static_cast<std::uint32_t>(folders_.size());
  folders_.push_back({folder, FoldedFolder(folder)});
  const std::string path = (root / folder).string();
  std::vector<std::string> inner;
  const auto take = [&](std::string_view name, platform::DiskEntryKind kind) {
    if (kind == platform::DiskEntryKind::Folder) {
      if (!name.starts_with('.')) inner.push_back(Joined(folder, name));
      return;
    }
    const bool isLink = kind == platform::DiskEntryKind::Link;
    std::error_code failed;  // a link to nothing is no folder
    if (isLink && fs::is_directory(fs::path(path) / name, failed)) return;
    if (++files > limits.files) {
      throw platform::Error(
          fmt::format("There are more than {} files below \"{}\"; move what is no source out of "
                      "the workspace.",
                      limits.files, root.string()));
    }
    if (!isLink || LeadsInside(root, fs::path(path) / name)) {
      places_[shell::FoldCase(name)].push_back({number, std::string(name)});
    }
  };
  // What cannot be listed is not found; what a program misses then, its translation tells.
  [[maybe_unused]] const auto failed = platform::VisitDiskFolder(path, take);
  return inner;
}

// The folders with copybooks, where none were named.
void CopybookIndex::SearchAllFolders() {
  std::vector<bool> searched(folders_.size());
  for (const auto& [folded, places] : places_) {
    if (!HasCopybookSuffix(folded)) continue;
    for (const Place& place : places) searched[place.folder] = true;
  }
  std::vector<const Folder*> found;
  for (std::size_t number = 0; number < folders_.size(); ++number) {
    if (searched[number]) found.push_back(&folders_[number]);
  }
  std::ranges::sort(found, {}, [](const Folder* folder) -> const std::string& { return folder->path; });
  for (const Folder* folder : found) turns_.emplace(folder->folded, static_cast<std::uint32_t>(turns_.size()));
}

std::string CopybookIndex::PathOf(const Place& place) const {
  return Joined(folders_[place.folder].path, place.file);
}

std::optional<std::string> CopybookIndex::Find(std::string_view name, std::string_view library,
                                               std::string_view programFile) const {
  const std::string folded = Folded(name);
  if (LeadsOut(folded)) return std::nullopt;
  Wish wish;
  const std::size_t slash = folded.rfind('/');
  wish.base = slash == folded.npos ? folded : folded.substr(slash + 1);
  wish.folder = slash == folded.npos ? std::string() : folded.substr(0, slash + 1);
  if (!library.empty()) wish.library = FoldedFolder(library);
  wish.programFolder = FoldedFolder(FolderOf(programFile));
  wish.programFile = programFile;

  std::optional<std::pair<std::uint64_t, std::string>> best;
  for (std::size_t suffix = 0; suffix < kSuffixes.size(); ++suffix) {
    const auto places = places_.find(wish.base + shell::FoldCase(kSuffixes[suffix]));
    if (places == places_.end()) continue;
    for (const Place& place : places->second) {
      const auto turn = TurnOf(wish, place, suffix);
      if (!turn || (best && *turn > best->first)) continue;
      std::pair candidate(*turn, PathOf(place));
      if (candidate.second != programFile && (!best || candidate < *best)) best = std::move(candidate);
    }
  }
  if (!best) return std::nullopt;
  return std::move(best->second);
}

// When a file with this suffix is looked at: smaller numbers first, nothing for never.
std::optional<std::uint64_t> CopybookIndex::TurnOf(const Wish& wish, const Place& place, std::size_t suffix) const {
  constexpr std::uint64_t inLibrary = 0, inProgramFolder = 1, inSearched = 2, programs = std::uint64_t{1} << 33;
  std::string folder = folders_[place.folder].folded;
  if (!folder.ends_with("/" + wish.folder)) return std::nullopt;
  folder.resize(folder.size() - wish.folder.size());
  std::optional<std::uint64_t> turn;
  if (const auto searched = turns_.find(folder); searched != turns_.end()) {
    turn = inSearched + searched->second;
  } else if (!wish.folder.empty() && folder == "/") {
    turn = inSearched + turns_.size();  // a path from the root on
  }
  const bool isNamed = areNamed_ && turn;
  if (folder == wish.programFolder) turn = isNamed && suffix >= kFirstOfProgram ? turn : inProgramFolder;
  if (!wish.library.empty() && folder.ends_with(wish.library)) turn = inLibrary;
  if (!turn) return std::nullopt;
  if (suffix >= kFirstOfProgram && !isNamed && *turn != inLibrary) *turn += programs;
  return *turn * kSuffixes.size() + suffix;
}

}  // namespace qmrules::workbench
