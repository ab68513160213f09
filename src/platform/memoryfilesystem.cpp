#include "platform/memoryfilesystem.h"

#include <filesystem>

#include "platform/diskfile.h"
#include "platform/encoding.h"
#include "platform/filefailure.h"

namespace qmrules::platform {

namespace {

// One spelling for each path: "/" between names, no "." and "..", nothing at the end.
std::string Spelled(std::string_view path) {
  std::string result = std::filesystem::path(DiskPath(path)).lexically_normal().generic_string();
  if (result.size() > 1 && result.ends_with('/')) result.pop_back();
  return result == "." ? "" : result;
}

bool EndsWithSeparator(std::string_view path) {
  return path.ends_with('/') || path.ends_with('\\');
}

std::string FolderOf(const std::string& spelled) {
  const std::size_t separator = spelled.rfind('/');
  if (separator == std::string::npos) return "";
  return separator == 0 ? "/" : spelled.substr(0, separator);
}

}  // namespace

MemoryFileSystem::MemoryFileSystem(const Clock& clock, FileSystemOptions options)
    : clock_(clock), options_(std::move(options)) {
  RequireKnownEncoding(options_.sourceEncoding);
  entries_[""].isFolder = true;
  entries_["/"].isFolder = true;
}

const MemoryFileSystem::Entry* MemoryFileSystem::Find(std::string_view path) const {
  // An empty path leads nowhere, on a disk as well; where relative paths start is ".".
  if (path.empty()) return nullptr;
  const auto found = entries_.find(Spelled(path));
  if (found == entries_.end()) return nullptr;
  // A separator at the end asks for a folder.
  if (!found->second.isFolder && EndsWithSeparator(path)) return nullptr;
  return &found->second;
}

const MemoryFileSystem::Entry& MemoryFileSystem::FileAt(std::string_view path) const {
  const Entry* entry = Find(path);
  if (entry == nullptr) throw ReadFailure(path, noSuchFile);
  if (entry->isFolder) throw ReadFailure(path, isFolder);
  return *entry;
}

MemoryFileSystem::Entry& MemoryFileSystem::FileAt(std::string_view path) {
  return const_cast<Entry&>(static_cast<const MemoryFileSystem*>(this)->FileAt(path));
}

bool MemoryFileSystem::Exists(std::string_view path) const {
  const Entry* entry = Find(path);
  return entry != nullptr && !entry->isFolder;
}

bool MemoryFileSystem::IsFolder(std::string_view path) const {
  const Entry* entry = Find(path);
  return entry != nullptr && entry->isFolder;
}

std::uint64_t MemoryFileSystem::FileSize(std::string_view path) const {
  return FileAt(path).bytes.size();
}

Timestamp MemoryFileSystem::DateLastModified(std::string_view path) const {
  return FileAt(path).modified;
}

std::string MemoryFileSystem::ReadFile(std::string_view path) const {
  const Entry& file = FileAt(path);
  if (!file.readable) throw ReadFailure(path, accessDenied);
  if (file.bytes.size() > options_.largestFile) {
    throw ReadFailure(path, TooLarge(file.bytes.size(), options_.largestFile));
  }
  return file.bytes;
}

void MemoryFileSystem::WriteFile(std::string_view path, std::string_view bytes) {
  if (IsFolder(path)) throw WriteFailure(path, isFolder);
  const std::string spelled = Spelled(path);
  if (spelled.empty() || EndsWithSeparator(path)) throw WriteFailure(path, namesNoFile);
  const auto folder = entries_.find(FolderOf(spelled));
  if (folder == entries_.end() || !folder->second.isFolder) throw WriteFailure(path, noSuchFolder);
  Entry& file = entries_[spelled];
  file.bytes = std::string(bytes);
  file.modified = clock_.Now();
}

std::vector<FolderEntry> MemoryFileSystem::ListFolder(std::string_view path) const {
  const Entry* folder = Find(path);
  if (folder == nullptr) throw ListFailure(path, noSuchFolder);
  if (!folder->isFolder) throw ListFailure(path, isNoFolder);
  const std::string spelled = Spelled(path);
  std::vector<FolderEntry> result;
  for (const auto& [name, entry] : entries_) {
    if (name.empty() || name == "/" || FolderOf(name) != spelled) continue;
    result.push_back({name.substr(name.rfind('/') + 1), entry.isFolder});
  }
  return result;
}

void MemoryFileSystem::CreateFolder(std::string_view path) {
  if (path.empty()) throw CreateFolderFailure(path, noSuchFolder);
  std::vector<std::string> missing;
  for (std::string folder = Spelled(path);; folder = FolderOf(folder)) {
    const auto found = entries_.find(folder);
    if (found != entries_.end()) {
      if (!found->second.isFolder) throw CreateFolderFailure(path, fileInTheWay);
      break;
    }
    missing.push_back(folder);
  }
  for (const std::string& folder : missing) entries_[folder].isFolder = true;
}

void MemoryFileSystem::SetDateLastModified(std::string_view path, Timestamp moment) {
  FileAt(path).modified = moment;
}

void MemoryFileSystem::SetReadable(std::string_view path, bool readable) {
  FileAt(path).readable = readable;
}

}  // namespace qmrules::platform
