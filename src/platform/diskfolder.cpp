#include "platform/diskfolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <string>

namespace qmrules::platform {

namespace {

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

DiskEntryKind KindOf(bool isFolder, bool isLink) {
  if (isFolder) return DiskEntryKind::Folder;
  return isLink ? DiskEntryKind::Link : DiskEntryKind::File;
}

// Nothing for an entry that is gone meanwhile. Most file systems tell the kind along with the name.
std::optional<DiskEntryKind> KindOf(DIR* folder, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN) return KindOf(entry.d_type == DT_DIR, entry.d_type == DT_LNK);
  struct stat status {};
  if (::fstatat(::dirfd(folder), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) return std::nullopt;
  return KindOf(S_ISDIR(status.st_mode), S_ISLNK(status.st_mode));
}

}  // namespace

std::error_code VisitDiskFolder(std::string_view path,
                                const std::function<void(std::string_view name, DiskEntryKind kind)>& visit) {
  const std::unique_ptr<DIR, CloseFolder> folder(::opendir(std::string(path).c_str()));
  if (!folder) return {errno, std::generic_category()};
  while (true) {
    errno = 0;  // the one way to tell the end from a failure
    const dirent* const entry = ::readdir(folder.get());
    if (entry == nullptr) return {errno, std::generic_category()};
    const std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    if (const auto kind = KindOf(folder.get(), *entry)) visit(name, *kind);
  }
}

}  // namespace qmrules::platform
