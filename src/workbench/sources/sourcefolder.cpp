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
#include "platform/encoding.h"
#include "platform/error.h"
#include "platform/linereader.h"
#include "shell/casefold.h"
#include "workbench/sources/cobolprograms.h"

namespace qmrules::workbench {

namespace {

using platform::Error;
namespace fs = std::filesystem;

constexpr std::string_view notAText = "this is no text file";

bool HasCobolSuffix(const fs::path& file) {
  constexpr std::array<std::string_view, 4> suffixes{".cbl", ".cob", ".cobol", ".pco"};
  const std::string suffix = file.extension().string();
  return std::ranges::any_of(suffixes, [&](std::string_view known) { return shell::EqualIgnoringCase(known, suffix); });
}

bool IsHidden(const fs::path& path) {
  return path.filename().string().starts_with('.');
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
    list.scope = path_ == root_ ? std::string() : Relative(path_);
    list.files.reserve(files_.size());
    for (const auto& file : files_) list.files.push_back(Relative(file));
    list.problems = std::move(result_.problems);
    return list;
  }

 private:
  std::string Relative(const fs::path& path) const { return path.lexically_relative(root_).generic_string(); }

  void Problem(const fs::path& path, std::string text) {
    result_.problems.push_back({Relative(path), std::move(text)});
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
      files_.push_back(path_);
      return true;
    }
    Collect(path_);
    std::ranges::sort(files_);
    return false;
  }

  // Gathers the COBOL files below the folder.
  void Collect(const fs::path& folder) {
    std::vector<std::pair<fs::path, int>> folders{{folder, 1}};
    while (!folders.empty()) {
      const auto [current, depth] = std::move(folders.back());
      folders.pop_back();
      if (depth > scan_.limits.depth) {
        Problem(current, fmt::format("folders more than {} deep are not searched", scan_.limits.depth));
        continue;
      }
      std::error_code failed;
      for (fs::directory_iterator entry(current, failed); !failed && entry != fs::directory_iterator();
           entry.increment(failed)) {
        if (entry->is_directory() && !entry->is_symlink()) {
          if (!IsHidden(entry->path())) folders.emplace_back(entry->path(), depth + 1);
        } else {
          Count(folder);
          if (!entry->is_directory() && HasCobolSuffix(entry->path())) files_.push_back(entry->path());
        }
      }
      if (failed) Problem(current, fmt::format("the folder cannot be read: {}", failed.message()));
    }
  }

  void Count(const fs::path& folder) {
    if (++met_ <= scan_.limits.files) return;
    throw Error(fmt::format("There are more than {} files below \"{}\"; name a folder further down.",
                            scan_.limits.files, folder.string()));
  }

  // The file's text, or nothing, the problem being told.
  std::optional<std::string> ReadText(const fs::path& file) {
    std::error_code failed;
    const fs::path target = fs::canonical(file, failed);
    if (failed) {
      Problem(file, fmt::format("the file cannot be read: {}", failed.message()));
      return std::nullopt;
    }
    if (!IsInside(root_, target)) {
      Problem(file, "the link leads out of the workspace; put a copy of the file in its place");
      return std::nullopt;
    }
    try {
      const std::string bytes = platform::ReadDiskFile(file.string(), scan_.limits.fileBytes);
      const bool mayBeTold = scan_.encoding.empty() || platform::IsAsciiCompatible(scan_.encoding);
      if (!mayBeTold || !platform::LooksBinary(bytes)) {
        return platform::DecodeText(bytes, scan_.encoding, Relative(file));
      }
      Problem(file, std::string(notAText));
    } catch (const Error& failure) {
      std::string text = failure.what();
      const std::string prefix = Relative(file) + ": ";
      if (text.starts_with(prefix)) text.erase(0, prefix.size());
      Problem(file, std::move(text));
    }
    return std::nullopt;
  }

  void ReadFile(const fs::path& file, bool namedItself) {
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

  void AddPrograms(const fs::path& file, std::string_view text, std::vector<CobolProgram>& programs) {
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
      program.file = Relative(file);
      program.lines = lines;
      program.nested = std::move(at->nested);
      program.onlyOneOfFile = programs.size() == 1;
      result_.programs.push_back(std::move(program));
    }
  }

  const SourceScan& scan_;
  fs::path root_;
  fs::path path_;
  std::vector<fs::path> files_;
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
