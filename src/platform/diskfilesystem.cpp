#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>

#include "platform/diskfile.h"
#include "platform/encoding.h"
#include "platform/filefailure.h"
#include "platform/filesystem.h"

namespace qmrules::platform {

namespace {

namespace disk = std::filesystem;

// What the path leads to. Throws Error for a file that is not there and for a folder.
struct stat FileStatus(std::string_view path) {
  struct stat status {};
  if (::stat(DiskPath(path).c_str(), &status) != 0) throw ReadFailure(path, FailureReason(errno));
  if (S_ISDIR(status.st_mode)) throw ReadFailure(path, isFolder);
  return status;
}

bool IsWithin(const disk::path& folder, const disk::path& path) {
  return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
}

// The path with its links followed, as far as it is there; nothing when it meets a link that leads nowhere, of which
// nobody can tell where a file written through it would come to stand.
std::optional<disk::path> FollowLinks(const disk::path& path) {
  disk::path prefix;
  for (const auto& part : path) {
    prefix /= part;
    if (disk::is_symlink(prefix) && !disk::exists(prefix)) return std::nullopt;
  }
  return disk::weakly_canonical(path);
}

}  // namespace

DiskFileSystem::DiskFileSystem(FileSystemOptions options) : options_(std::move(options)) {
  RequireKnownEncoding(options_.sourceEncoding);
}

void DiskFileSystem::SetSourceEncoding(const std::string& encoding) {
  RequireKnownEncoding(encoding);
  options_.sourceEncoding = encoding;
}

bool DiskFileSystem::Exists(std::string_view path) const {
  struct stat status {};
  return ::stat(DiskPath(path).c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

bool DiskFileSystem::IsFolder(std::string_view path) const {
  struct stat status {};
  return ::stat(DiskPath(path).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool DiskFileSystem::IsSameFile(std::string_view left, std::string_view right) const {
  struct stat leftStatus {};
  struct stat rightStatus {};
  return ::stat(DiskPath(left).c_str(), &leftStatus) == 0 && ::stat(DiskPath(right).c_str(), &rightStatus) == 0 &&
         !S_ISDIR(leftStatus.st_mode) && leftStatus.st_dev == rightStatus.st_dev &&
         leftStatus.st_ino == rightStatus.st_ino;
}

std::uint64_t DiskFileSystem::FileSize(std::string_view path) const {
  return static_cast<std::uint64_t>(FileStatus(path).st_size);
}

Timestamp DiskFileSystem::DateLastModified(std::string_view path) const {
  return Timestamp{FileStatus(path).st_mtim.tv_sec};
}

std::string DiskFileSystem::ReadFile(std::string_view path) const {
  return ReadDiskFile(path, options_.largestFile);
}

void DiskFileSystem::WriteFile(std::string_view path, std::string_view bytes) {
  WriteDiskFile(path, bytes);
}

std::vector<FolderEntry> DiskFileSystem::ListFolder(std::string_view path) const {
  std::vector<FolderEntry> entries;
  try {
    for (const auto& entry : disk::directory_iterator(DiskPath(path))) {
      std::error_code unknown;  // of a link that leads nowhere: that is no folder
      entries.push_back({entry.path().filename().string(), entry.is_directory(unknown)});
    }
  } catch (const disk::filesystem_error& failure) {
    const int code = failure.code().value();
    if (code == ENOENT) throw ListFailure(path, noSuchFolder);
    if (code == ENOTDIR) throw ListFailure(path, Exists(path) ? isNoFolder : noSuchFolder);
    throw ListFailure(path, FailureReason(code));
  }
  std::ranges::sort(entries, {}, &FolderEntry::name);
  return entries;
}

void DiskFileSystem::CreateFolder(std::string_view path) {
  CreateDiskFolder(path);
}

std::string DiskFileSystem::ResolveInside(std::string_view root, std::string_view name) const {
  std::string path = FileSystem::ResolveInside(root, name);
  try {
    const disk::path here = disk::current_path();
    const auto target = FollowLinks(here / path);
    if (target && IsWithin(disk::weakly_canonical(here / DiskPath(root)), *target)) return path;
  } catch (const disk::filesystem_error& failure) {
    throw ReadFailure(path, FailureReason(failure.code().value()));
  }
  throw Error(
      fmt::format("The file name \"{}\" leads out of the folder \"{}\" through a link, or nowhere.", name, root));
}

}  // namespace qmrules::platform
