#include "workbench/scan/workspacesources.h"

#include <fmt/format.h>
#include <xxhash.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <system_error>
#include <utility>

#include "platform/diskfile.h"
#include "platform/encoding.h"
#include "platform/error.h"

namespace qmrules::workbench {

namespace {

namespace fs = std::filesystem;
using platform::Error;

WorkspaceSources::Digest HashOf(std::string_view bytes) {
  const XXH128_hash_t hash = XXH3_128bits(bytes.data(), bytes.size());
  return {hash.high64, hash.low64};
}

struct FreeHashState {
  void operator()(XXH3_state_t* state) const { XXH3_freeState(state); }
};

// The same without holding a file in memory.
class FileHash {
 public:
  FileHash() : state_(XXH3_createState()) { XXH3_128bits_reset(state_.get()); }
  void operator()(std::string_view piece) { XXH3_128bits_update(state_.get(), piece.data(), piece.size()); }
  WorkspaceSources::Digest Digest() const {
    const XXH128_hash_t hash = XXH3_128bits_digest(state_.get());
    return {hash.high64, hash.low64};
  }

 private:
  std::unique_ptr<XXH3_state_t, FreeHashState> state_;
};

// The folder relative to the root, with "/".
std::string FolderInside(const fs::path& root, const std::string& folder) {
  std::error_code failed;
  const fs::path path = fs::canonical(root / platform::DiskPath(folder), failed);
  if (!failed && !fs::is_directory(path, failed)) failed = std::make_error_code(std::errc::not_a_directory);
  if (failed) throw Error(fmt::format("The copybook folder \"{}\" cannot be read: {}.", folder, failed.message()));
  const auto [endOfRoot, at] = std::mismatch(root.begin(), root.end(), path.begin(), path.end());
  if (endOfRoot != root.end()) {
    throw Error(
        fmt::format("The copybook folder \"{}\" lies outside the workspace {}; copy it into the workspace and "
                    "name it there.",
                    folder, root.string()));
  }
  return path == root ? std::string() : path.lexically_relative(root).generic_string();
}

}  // namespace

WorkspaceSources::WorkspaceSources(WorkspaceSourceSettings settings)
    : settings_(std::move(settings)),
      files_({.sourceEncoding = settings_.encoding, .largestFile = settings_.limits.fileBytes}) {
  std::error_code failed;
  const fs::path root = fs::canonical(platform::DiskPath(settings_.root), failed);
  if (failed) {
    throw Error(fmt::format("The source folder \"{}\" cannot be read: {}.", settings_.root, failed.message()));
  }
  root_ = root.string();
  for (std::string& folder : settings_.copybookFolders) folder = FolderInside(root, folder);
}

WorkspaceSources::Entry& WorkspaceSources::EntryOf(std::string_view file) {
  const std::scoped_lock lock(entriesMutex_);
  return entries_[std::string(file)];
}

// The path as it is written, where links on the way to the file are known not to lead out of the root. The file can
// still be a link itself.
std::optional<std::string> WorkspaceSources::PathInKnownFolder(std::string_view file) {
  std::string path = files_.platform::FileSystem::ResolveInside(root_, file);
  const std::string_view folder = std::string_view(path).substr(0, path.rfind('/'));
  const std::scoped_lock lock(entriesMutex_);
  if (!foldersInside_.contains(folder)) return std::nullopt;
  return path;
}

// The path, once all links on it have been followed up.
std::string WorkspaceSources::FollowUp(std::string_view file) {
  std::string path = files_.ResolveInside(root_, file);
  const std::scoped_lock lock(entriesMutex_);
  foldersInside_.emplace(path.substr(0, path.rfind('/')));
  return path;
}

std::string WorkspaceSources::ReadBytes(std::string_view file) {
  std::error_code failed;
  if (const auto path = PathInKnownFolder(file); path && !fs::is_symlink(*path, failed)) return files_.ReadFile(*path);
  return files_.ReadFile(FollowUp(file));
}

WorkspaceSources::Digest WorkspaceSources::HashBytes(std::string_view file) {
  const std::size_t limit = settings_.limits.fileBytes;
  FileHash hash;
  const auto path = PathInKnownFolder(file);
  if (path && platform::VisitUnlinkedDiskFile(*path, limit, std::ref(hash))) return hash.Digest();
  platform::VisitDiskFile(FollowUp(file), limit, std::ref(hash));
  return hash.Digest();
}

std::string WorkspaceSources::Decode(const std::string& bytes, std::string_view file) const {
  const bool mayBeTold = settings_.encoding.empty() || platform::IsAsciiCompatible(settings_.encoding);
  if (mayBeTold && platform::LooksBinary(bytes)) throw Error(fmt::format("{}: this is no text file", file));
  return platform::DecodeText(bytes, settings_.encoding, file);
}

codemodel::SourceProvider::Source WorkspaceSources::Read(std::string_view file) {
  Entry& entry = EntryOf(file);
  const std::scoped_lock lock(entry.mutex);
  auto text = entry.text.lock();
  if (!text) {
    const std::string bytes = ReadBytes(file);
    entry.hash = HashOf(bytes);
    text = std::make_shared<const codemodel::SourceFile>(std::string(file), Decode(bytes, file));
    entry.text = text;
  }
  return {std::move(text), {(*entry.hash)[0], (*entry.hash)[1]}};
}

WorkspaceSources::Digest WorkspaceSources::Hash(std::string_view file) {
  Entry& entry = EntryOf(file);
  const std::scoped_lock lock(entry.mutex);
  if (!entry.hash) entry.hash = HashBytes(file);
  return *entry.hash;
}

std::optional<std::string> WorkspaceSources::FindCopybook(std::string_view name, std::string_view library,
                                                          std::string_view programFile) {
  {
    const std::scoped_lock lock(indexMutex_);
    if (!index_ && indexFailure_.empty()) {
      try {
        index_.emplace(root_, settings_.copybookFolders, settings_.limits);
      } catch (const Error& failure) {
        indexFailure_ = failure.what();
      }
    }
    if (!index_) throw Error(indexFailure_);
  }
  return index_->Find(name, library, programFile);
}

}  // namespace qmrules::workbench
