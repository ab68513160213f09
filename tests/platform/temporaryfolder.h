#pragma once

#include <stdlib.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qmrules::platform {

// A folder of its own for one test, gone with all it holds at the end.
class TemporaryFolder {
 public:
  TemporaryFolder() : path_((std::filesystem::temp_directory_path() / "qmrules-XXXXXX").string()) {
    if (::mkdtemp(path_.data()) == nullptr) throw std::runtime_error("no temporary folder");
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code leftBehind;
    std::filesystem::remove_all(path_, leftBehind);
  }

  const std::string& Path() const { return path_; }
  std::string operator/(std::string_view name) const { return path_ + "/" + std::string(name); }

  // Without the code under test, so that what it does shows in the bytes.
  void Put(std::string_view name, std::string_view bytes) const {
    std::ofstream(*this / name, std::ios::binary) << bytes;
  }
  std::string Bytes(std::string_view name) const {
    std::ifstream file(*this / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::size_t EntryCount() const {
    const std::filesystem::directory_iterator entries(path_);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
  }

 private:
  std::string path_;
};

}  // namespace qmrules::platform
