#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.h"
#include "platform/filesystem.h"

namespace qmrules::platform {

// A file system in memory. The folders "/" and "" (where relative paths start) are there from the first.
class MemoryFileSystem final : public FileSystem {
 public:
  // `clock` dates the files that are written and must outlive the file system. Throws Error for an encoding that is not
  // known.
  explicit MemoryFileSystem(const Clock& clock, FileSystemOptions options = {});

  bool Exists(std::string_view path) const override;
  bool IsFolder(std::string_view path) const override;
  std::uint64_t FileSize(std::string_view path) const override;
  Timestamp DateLastModified(std::string_view path) const override;
  std::string ReadFile(std::string_view path) const override;
  void WriteFile(std::string_view path, std::string_view bytes) override;
  std::vector<FolderEntry> ListFolder(std::string_view path) const override;
  void CreateFolder(std::string_view path) override;
  const std::string& SourceEncoding() const override { return options_.sourceEncoding; }

  // Dates a file. Throws Error when it is not there.
  void SetDateLastModified(std::string_view path, Timestamp moment);
  // Takes away or gives back the right to read a file. Throws Error when it is not there.
  void SetReadable(std::string_view path, bool readable);

 private:
  struct Entry {
    bool isFolder = false;
    std::string bytes;
    Timestamp modified;
    bool readable = true;
  };
  const Entry* Find(std::string_view path) const;
  const Entry& FileAt(std::string_view path) const;
  Entry& FileAt(std::string_view path);

  const Clock& clock_;
  FileSystemOptions options_;
  std::map<std::string, Entry> entries_;
};

}  // namespace qmrules::platform
