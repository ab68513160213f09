#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace qmrules::test {

// A folder of its own for one test, empty at first and removed with all that is in it at the end.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  // The path of a file in the folder.
  std::string File(std::string_view name) const { return (path_ / name).string(); }
  // Writes a file, with the folders on the way to it, and returns its path.
  std::string Write(std::string_view name, std::string_view content) const;
  // The content of a file as bytes.
  std::string Read(std::string_view name) const;
  // Files and folders that lie directly in this one.
  std::size_t EntryCount() const;

 private:
  std::filesystem::path path_;
};

// The content of a file as bytes.
std::string ReadBytes(const std::string& path);

}  // namespace qmrules::test
