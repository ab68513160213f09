#include "platform/diskfile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/filefailure.h"

namespace qmrules::platform {

namespace {

// Small enough for the stack of any thread, large enough that most sources come in one or two pieces.
constexpr std::size_t kPiece = std::size_t{128} * 1024;

// An open file, closed at the end of its life.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  int Number() const { return number_; }
  // The result of closing, which is where a full disk may show first. 0 or a code of errno.
  int Close() { return ::close(std::exchange(number_, -1)) == 0 ? 0 : errno; }

 private:
  int number_;
};

// Without blocking: a pipe would otherwise be waited for before it can be told from a file.
constexpr int kToRead = O_RDONLY | O_CLOEXEC | O_NONBLOCK;

int OpenToRead(std::string_view path) {
  const int opened = ::open(DiskPath(path).c_str(), kToRead);
  if (opened < 0) throw ReadFailure(path, FailureReason(errno));
  return opened;
}

std::size_t SizeOf(const Descriptor& file, std::string_view path) {
  struct stat status {};
  if (::fstat(file.Number(), &status) != 0) throw ReadFailure(path, FailureReason(errno));
  if (S_ISDIR(status.st_mode)) throw ReadFailure(path, isFolder);
  if (!S_ISREG(status.st_mode)) throw ReadFailure(path, "it is not an ordinary file");
  return static_cast<std::size_t>(status.st_size);
}

// How many bytes came; 0 at the end.
std::size_t ReadOnce(const Descriptor& file, std::string_view path, char* bytes, std::size_t most) {
  while (true) {
    const ssize_t got = ::read(file.Number(), bytes, most);
    if (got >= 0) return static_cast<std::size_t>(got);
    if (errno != EINTR) throw ReadFailure(path, FailureReason(errno));
  }
}

void VisitBytes(const Descriptor& file, std::string_view path, std::size_t limit,
                const std::function<void(std::string_view)>& visit) {
  const std::size_t size = SizeOf(file, path);
  if (size > limit) throw ReadFailure(path, TooLarge(size, limit));
  std::array<char, kPiece> piece;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled by reading
  for (std::size_t left = size; left > 0;) {
    const std::size_t got = ReadOnce(file, path, piece.data(), std::min(left, piece.size()));
    if (got == 0) return;
    left -= got;
    visit(std::string_view(piece.data(), got));
  }
}

// The file that the new bytes are gathered in; removed again unless it has taken its place.
class PendingFile {
 public:
  PendingFile(std::string path, int descriptor) : path_(std::move(path)), file_(descriptor) {}
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;
  ~PendingFile() {
    if (!placed_) ::unlink(path_.c_str());
  }

  // Each gives 0 or a code of errno.
  int Fill(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = ::write(file_.Number(), bytes.data(), bytes.size());
      if (written >= 0) {
        bytes.remove_prefix(static_cast<std::size_t>(written));
      } else if (errno != EINTR) {
        return errno;
      }
    }
    return 0;
  }
  int Sync() { return ::fsync(file_.Number()) == 0 ? 0 : errno; }
  int TakePermissions(mode_t mode) { return ::fchmod(file_.Number(), mode & 07777U) == 0 ? 0 : errno; }
  int Place(const std::string& target) {
    if (const int code = file_.Close()) return code;
    if (::rename(path_.c_str(), target.c_str()) != 0) return errno;
    placed_ = true;
    return 0;
  }

 private:
  std::string path_;
  Descriptor file_;
  bool placed_ = false;
};

// Makes a renaming in the folder safe on the disk. 0 or a code of errno.
int SyncFolder(const std::string& folder) {
  const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  // A folder may be open to writing and closed to reading, and some file systems know no syncing of folders: the system
  // then brings the new name to the disk in its own time.
  if (opened.Number() < 0) return errno == EACCES ? 0 : errno;
  if (::fsync(opened.Number()) != 0 && errno != EINVAL) return errno;
  return 0;
}

// Opens a file of a name that is not taken, in the folder. The short name stays within what a folder allows however
// long the target's own is.
std::pair<std::string, int> OpenUnused(const std::string& folder) {
  for (unsigned attempt = 0;; ++attempt) {
    std::string path = fmt::format("{}/.qmrules-{}-{}.tmp", folder, ::getpid(), attempt);
    const int opened = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (opened >= 0 || errno != EEXIST) return {std::move(path), opened};
  }
}

}  // namespace

std::string DiskPath(std::string_view path) {
  std::string result(path);
  std::ranges::replace(result, '\\', '/');
  return result;
}

std::string ReadDiskFile(std::string_view path, std::size_t limit) {
  const Descriptor file(OpenToRead(path));
  const std::size_t size = SizeOf(file, path);
  if (size > limit) throw ReadFailure(path, TooLarge(size, limit));

  // One byte more than the size, so that the end shows at the first reading and a file that grows meanwhile is seen.
  std::string bytes(size + 1, '\0');
  std::size_t filled = 0;
  while (const std::size_t got = ReadOnce(file, path, bytes.data() + filled, bytes.size() - filled)) {
    filled += got;
    if (filled > limit) throw ReadFailure(path, TooLarge(filled, limit));
    if (filled == bytes.size()) bytes.resize(bytes.size() * 2);
  }
  bytes.resize(filled);
  return bytes;
}

DiskFileStart ReadDiskFileStart(std::string_view path, std::size_t most) {
  const Descriptor file(OpenToRead(path));
  DiskFileStart start{{}, SizeOf(file, path)};
  start.bytes.resize(std::min(start.size, most));
  std::size_t filled = 0;
  while (filled < start.bytes.size()) {
    const std::size_t got = ReadOnce(file, path, start.bytes.data() + filled, start.bytes.size() - filled);
    if (got == 0) break;
    filled += got;
  }
  start.bytes.resize(filled);
  return start;
}

void VisitDiskFile(std::string_view path, std::size_t limit, const std::function<void(std::string_view)>& visit) {
  VisitBytes(Descriptor(OpenToRead(path)), path, limit, visit);
}

bool VisitUnlinkedDiskFile(std::string_view path, std::size_t limit,
                           const std::function<void(std::string_view)>& visit) {
  const Descriptor file(::open(DiskPath(path).c_str(), kToRead | O_NOFOLLOW));
  if (file.Number() < 0) {
    if (errno == ELOOP) return false;
    throw ReadFailure(path, FailureReason(errno));
  }
  VisitBytes(file, path, limit, visit);
  return true;
}

MappedDiskFile::MappedDiskFile(std::string_view path) {
  const Descriptor file(OpenToRead(path));
  size_ = SizeOf(file, path);
  if (size_ == 0) return;
  void* const start = ::mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, file.Number(), 0);
  if (start == MAP_FAILED) throw ReadFailure(path, FailureReason(errno));
  start_ = start;
}

MappedDiskFile::~MappedDiskFile() {
  if (start_ != nullptr) ::munmap(start_, size_);
}

void WriteDiskFile(std::string_view path, std::string_view bytes, WriteSafety safety) {
  std::error_code failed;
  std::filesystem::path target(DiskPath(path));
  if (std::filesystem::is_symlink(target, failed)) target = std::filesystem::weakly_canonical(target, failed);
  if (failed && failed != std::errc::no_such_file_or_directory && failed != std::errc::not_a_directory) {
    throw WriteFailure(path, FailureReason(failed.value()));
  }
  struct stat old {};
  const bool replaces = ::stat(target.c_str(), &old) == 0;
  if (replaces && S_ISDIR(old.st_mode)) throw WriteFailure(path, isFolder);
  if (!target.has_filename()) throw WriteFailure(path, namesNoFile);

  const std::string folder = target.has_parent_path() ? target.parent_path().string() : ".";
  auto [pendingPath, descriptor] = OpenUnused(folder);
  if (descriptor < 0) {
    const bool folderMissing = errno == ENOENT || errno == ENOTDIR;
    throw WriteFailure(path, folderMissing ? std::string(noSuchFolder) : FailureReason(errno));
  }
  PendingFile pending(std::move(pendingPath), descriptor);
  const bool durable = safety == WriteSafety::Durable;
  int code = pending.Fill(bytes);
  if (code == 0 && durable) code = pending.Sync();
  if (code == 0 && replaces) code = pending.TakePermissions(old.st_mode);
  if (code == 0) code = pending.Place(target.string());
  if (code != 0) throw WriteFailure(path, FailureReason(code));
  if (const int unsafe = durable ? SyncFolder(folder) : 0) {
    throw Error(fmt::format("The file \"{}\" is written, but may not outlast a power failure: {}.", path,
                            FailureReason(unsafe)));
  }
}

void CreateDiskFolder(std::string_view path) {
  std::filesystem::path folder(DiskPath(path));
  if (folder.empty()) throw CreateFolderFailure(path, noSuchFolder);
  // Without the separator at the end, behind which the library would look for one more folder, of no name.
  if (!folder.has_filename()) folder = folder.parent_path();
  std::error_code failed;
  if (std::filesystem::is_directory(folder, failed)) return;
  std::filesystem::create_directories(folder, failed);
  if (failed == std::errc::not_a_directory || failed == std::errc::file_exists) {
    throw CreateFolderFailure(path, fileInTheWay);
  }
  if (failed) throw CreateFolderFailure(path, FailureReason(failed.value()));
}

}  // namespace qmrules::platform
