#include "workbench/sources/sourcefolder.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/diskfile.h"
#include "platform/diskfolder.h"
#include "platform/encoding.h"
#include "platform/error.h"
#include "platform/linereader.h"
#include "shell/casefold.h"
#include "workbench/sources/cobolprograms.h"

namespace qmrules::workbench {

namespace {

using platform::DiskEntryKind;
using platform::Error;
namespace fs = std::filesystem;

constexpr std::string_view notAText = "this is no text file";

bool HasCobolSuffix(std::string_view name) {
  constexpr std::array<std::string_view, 4> suffixes{".cbl", ".cob", ".cobol", ".pco"};
  const std::size_t dot = name.rfind('.');
  if (dot == 0 || dot == name.npos) return false;
  const std::string_view suffix = name.substr(dot);
  return std::ranges::any_of(suffixes, [&](std::string_view known) { return shell::EqualIgnoringCase(known, suffix); });
}

// Both without links. The root itself is inside.
bool IsInside(const fs::path& root, const fs::path& path) {
  const auto [endOfRoot, at] = std::mismatch(root.begin(), root.end(), path.begin(), path.end());
  return endOfRoot == root.end();
}

class SourceFinder {
 public:
  explicit SourceFinder(const SourceScan& scan) : scan_(scan) {}

  SourceScanResult Scan() {
    const bool namedItself = Find();
    for (const auto& file : files_) ReadFile(file, namedItself);
    return std::move(result_);
  }

  SourceList List() {
    SourceList list;
    list.isFile = Find();
    list.scope = Relative(path_);
    list.files = std::move(files_);
    list.problems = std::move(result_.problems);
    return list;
  }

 private:
  // A folder that is still to be searched.
  struct Folder {
    std::string path;  // relative to the root; "" for the root itself
    int depth = 1;
  };

  // "" for the root itself.
  std::string Relative(const fs::path& path) const {
    return path == root_ ? std::string() : path.lexically_relative(root_).generic_string();
  }
  std::string FullPath(const std::string& relative) const { return (root_ / relative).string(); }

  void Problem(const std::string& file, std::string text) {
    result_.problems.push_back({file.empty() ? "." : file, std::move(text)});
  }

  // Gathers the files that the path means. True when it is a file itself.
  bool Find() {
    std::error_code failed;
    root_ = fs::canonical(platform::DiskPath(scan_.root), failed);
    if (failed) throw Error(fmt::format("The source folder \"{}\" cannot be read: {}.", scan_.root, failed.message()));
    path_ = fs::canonical(platform::DiskPath(scan_.path), failed);
    if (failed) throw Error(fmt::format("The source \"{}\" cannot be read: {}.", scan_.path, failed.message()));
    if (!IsInside(root_, path_)) {
      throw Error(fmt::format("\"{}\" lies outside the workspace {}; copy it into the workspace and name it there.",
                              scan_.path, root_.string()));
    }
    if (!fs::is_directory(path_)) {
      files_.push_back(Relative(path_));
      return true;
    }
    Collect();
    std::ranges::sort(files_);
    return false;
  }

  // Gathers the COBOL files below the path.
  void Collect() {
    std::vector<Folder> folders{{Relative(path_), 1}};
    while (!folders.empty()) {
      const Folder folder = std::move(folders.back());
      folders.pop_back();
      if (folder.depth > scan_.limits.depth) {
        Problem(folder.path, fmt::format("folders more than {} deep are not searched", scan_.limits.depth));
        continue;
      }
      const auto failed = platform::VisitDiskFolder(
          FullPath(folder.path), [&](std::string_view name, DiskEntryKind kind) { Take(name, kind, folder, folders); });
      if (failed) Problem(folder.path, fmt::format("the folder cannot be read: {}", failed.message()));
    }
  }

  // Takes one entry of the folder.
  void Take(std::string_view name, DiskEntryKind kind, const Folder& folder, std::vector<Folder>& folders) {
    std::string path = folder.path;
    if (!path.empty()) path += '/';
    path += name;
    if (kind == DiskEntryKind::Folder) {
      if (!name.starts_with('.')) folders.push_back({std::move(path), folder.depth + 1});
      return;
    }
    Count();
    if (!HasCobolSuffix(name)) return;
    std::error_code failed;  // of a link that leads nowhere: reading it tells the user
    if (kind == DiskEntryKind::Link && fs::is_directory(FullPath(path), failed)) return;
    files_.push_back(std::move(path));
  }

  void Count() {
    if (++met_ <= scan_.limits.files) return;
    throw Error(fmt::format("There are more than {} files below \"{}\"; name a folder further down.",
                            scan_.limits.files, path_.string()));
  }

  // The file's text, or nothing, the problem being told.
  std::optional<std::string> ReadText(const std::string& file) {
    std::error_code failed;
    const std::string path = FullPath(file);
    const fs::path target = fs::canonical(path, failed);
    if (failed) {
      Problem(file, fmt::format("the file cannot be read: {}", failed.message()));
      return std::nullopt;
    }
    if (!IsInside(root_, target)) {
      Problem(file, "the link leads out of the workspace; put a copy of the file in its place");
      return std::nullopt;
    }
    try {
      const std::string bytes = platform::ReadDiskFile(path, scan_.limits.fileBytes);
      const bool mayBeTold = scan_.encoding.empty() || platform::IsAsciiCompatible(scan_.encoding);
      if (!mayBeTold || !platform::LooksBinary(bytes)) {
        return platform::DecodeText(bytes, scan_.encoding, file);
      }
      Problem(file, std::string(notAText));
    } catch (const Error& failure) {
      std::string text = failure.what();
      const std::string prefix = file + ": ";
      if (text.starts_with(prefix)) text.erase(0, prefix.size());
      Problem(file, std::move(text));
    }
    return std::nullopt;
  }

  void ReadFile(const std::string& file, bool namedItself) {
    const auto text = ReadText(file);
    if (!text) return;
    auto found = FindPrograms(*text);
    for (const auto row : found.nameless) Problem(file, fmt::format("line {}: PROGRAM-ID names no program", row));
    if (found.programs.empty()) {
      if (!found.nameless.empty()) return;
      if (namedItself) {
        Problem(file, "the file holds no PROGRAM-ID; a copybook is read with the programs that copy it");
      } else {
        ++result_.withoutProgram;
      }
      return;
    }
    AddPrograms(file, *text, found.programs);
  }

  void AddPrograms(const std::string& file, std::string_view text, std::vector<CobolProgram>& programs) {
    std::size_t lines = 0;
    for (platform::LineReader reader(text); reader.SkipLine();) ++lines;
    for (auto at = programs.begin(); at != programs.end(); ++at) {
      const bool isRepeated =
          std::any_of(programs.begin(), at, [&](const auto& earlier) { return earlier.programId == at->programId; });
      if (isRepeated) {
        Problem(file, fmt::format("line {}: the file has an earlier program {}", at->row, at->programId));
        continue;
      }
      ScannedProgram program;
      program.programId = at->programId;
      program.file = file;
      program.lines = lines;
      program.nested = std::move(at->nested);
      program.onlyOneOfFile = programs.size() == 1;
      result_.programs.push_back(std::move(program));
    }
  }

  const SourceScan& scan_;
  fs::path root_;
  fs::path path_;
  std::vector<std::string> files_;  // relative to the root
  std::size_t met_ = 0;
  SourceScanResult result_;
};

}  // namespace

SourceList ListSources(const SourceScan& scan) {
  return SourceFinder(scan).List();
}

SourceScanResult ScanSources(const SourceScan& scan) {
  return SourceFinder(scan).Scan();
}

}  // namespace qmrules::workbench
