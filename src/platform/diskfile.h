#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace qmrules::platform {

// Whole files on the disk: the one place of the system that reads and writes their bytes. Paths take "/" and "\" alike.

// The path with "/" only.
std::string DiskPath(std::string_view path);

// The bytes of an ordinary file. Throws Error, naming the path as given, when it cannot be read, is no ordinary file or
// has more than `limit` bytes.
std::string ReadDiskFile(std::string_view path, std::size_t limit);

// The first bytes of an ordinary file, at most so many, and how many it has in all. Throws as ReadDiskFile.
struct DiskFileStart {
  std::string bytes;
  std::size_t size = 0;
};
DiskFileStart ReadDiskFileStart(std::string_view path, std::size_t most);

// Gives the bytes of an ordinary file piece by piece, for work that does not need them all in memory; no more than it
// has at the beginning. Throws as ReadDiskFile; some pieces may have been given then.
void VisitDiskFile(std::string_view path, std::size_t limit, const std::function<void(std::string_view)>& visit);
// The same where the path does not end in a link; false, with nothing given, where it does or its links go in a circle.
bool VisitUnlinkedDiskFile(std::string_view path, std::size_t limit,
                           const std::function<void(std::string_view)>& visit);

// The bytes of an ordinary file where the system keeps them, read as they are asked for. The file must not be cut short
// as long as this lives; one that only WriteDiskFile writes never is, since each writing makes a new file.
class MappedDiskFile {
 public:
  // Throws as ReadDiskFile.
  explicit MappedDiskFile(std::string_view path);
  ~MappedDiskFile();
  MappedDiskFile(const MappedDiskFile&) = delete;
  MappedDiskFile& operator=(const MappedDiskFile&) = delete;

  // At the beginning of a page of memory; empty for an empty file.
  std::string_view Bytes() const { return {static_cast<const char*>(start_), size_}; }

 private:
  void* start_ = nullptr;
  std::size_t size_ = 0;
};

enum class WriteSafety {
  Durable,      // once the call returns, the file outlasts a power failure
  Rebuildable,  // a power failure soon after the call may leave the file empty or torn: for what can be made again and
                // tells that it is whole
};

// Writes the file whole or not at all: the bytes go to a new file in the same folder, which takes the old one's place
// (and its permissions) once it is safe on the disk. A link is followed to the file that it leads to. Throws Error,
// naming the path as given; the old file then stands and no other is left. (Only where the disk fails at the very last,
// on recording the new file's name, does the new file stand, and the error says so.)
void WriteDiskFile(std::string_view path, std::string_view bytes, WriteSafety safety = WriteSafety::Durable);

// Makes a folder and those above it; one that is there is no error. Throws Error, naming the path as given.
void CreateDiskFolder(std::string_view path);

}  // namespace qmrules::platform
