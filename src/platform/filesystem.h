#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/textstream.h"
#include "platform/timestamp.h"

namespace qmrules::platform {

struct FolderEntry {
  std::string name;
  bool isFolder = false;
  friend bool operator==(const FolderEntry&, const FolderEntry&) = default;
};

struct FileSystemOptions {
  std::string sourceEncoding;                                // of text files, see encoding.h; "" for the default
  std::size_t largestFile = std::size_t{256} * 1024 * 1024;  // bytes; a larger file is not read
};

// Files and folders. Paths take "/" and "\" alike; names keep their case and are told apart by it. Errors name the path
// as it was given.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  // True for a file that is there; a folder is none.
  virtual bool Exists(std::string_view path) const = 0;
  virtual bool IsFolder(std::string_view path) const = 0;

  // True when both paths lead to one file, whatever their spelling. Where the file system cannot tell, paths that
  // differ only in separators, "." and ".." do. False for a file that is not there.
  virtual bool IsSameFile(std::string_view left, std::string_view right) const;

  // Bytes of a file. Throws Error when it is not there.
  virtual std::uint64_t FileSize(std::string_view path) const = 0;
  // The moment of a file's last change, cut to whole seconds. Throws Error when it is not there.
  virtual Timestamp DateLastModified(std::string_view path) const = 0;

  // The file's bytes. Throws Error, with the reason, when it cannot be read or is larger than the system takes.
  virtual std::string ReadFile(std::string_view path) const = 0;
  // Makes or replaces a file, whole or not at all. Throws Error, with the reason; an old file then stands.
  virtual void WriteFile(std::string_view path, std::string_view bytes) = 0;

  // What a folder holds, by name in the order of the bytes. Throws Error when there is no such folder.
  virtual std::vector<FolderEntry> ListFolder(std::string_view path) const = 0;
  // Makes a folder and those above it; one that is there is no error. Throws Error when that cannot be.
  virtual void CreateFolder(std::string_view path) = 0;

  // The path of the file that `name`, which a stored or imported text supplied, means in the folder `root`: the
  // root, "/", and the name with "/" only and without "." and "..". An empty name means the root. Throws Error for a
  // name that is absolute, begins with a drive letter, holds a NUL or leads out of the root by ".." or by a link. The
  // file need not be there.
  virtual std::string ResolveInside(std::string_view root, std::string_view name) const;

  // The encoding that text files are read by.
  virtual const std::string& SourceEncoding() const = 0;

  // The file's text as UTF-8. Throws Error as ReadFile does, and, naming the file and the byte, when its bytes are no
  // text in the encoding.
  std::string ReadTextFile(std::string_view path) const;
  // The same for reading line by line.
  std::unique_ptr<TextStream> OpenTextFile(std::string_view path) const;
};

// The disk. A path that does not begin with "/" starts at the process's folder.
class DiskFileSystem final : public FileSystem {
 public:
  // Throws Error for an encoding that is not known.
  explicit DiskFileSystem(FileSystemOptions options = {});

  bool Exists(std::string_view path) const override;
  bool IsFolder(std::string_view path) const override;
  bool IsSameFile(std::string_view left, std::string_view right) const override;
  std::uint64_t FileSize(std::string_view path) const override;
  Timestamp DateLastModified(std::string_view path) const override;
  std::string ReadFile(std::string_view path) const override;
  void WriteFile(std::string_view path, std::string_view bytes) override;
  std::vector<FolderEntry> ListFolder(std::string_view path) const override;
  void CreateFolder(std::string_view path) override;
  std::string ResolveInside(std::string_view root, std::string_view name) const override;
  const std::string& SourceEncoding() const override { return options_.sourceEncoding; }
  // Throws Error for an encoding that is not known, with the old one in force.
  void SetSourceEncoding(const std::string& encoding);

 private:
  FileSystemOptions options_;
};

}  // namespace qmrules::platform
