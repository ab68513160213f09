#pragma once

#include <atomic>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/frontend.h"

namespace qmrules::test {

// The files of a folder; copybooks are found by their name with ".cpy" in the folders given, in this order.
class PlainSources final : public workbench::codemodel::SourceProvider {
 public:
  explicit PlainSources(std::string root, std::vector<std::string> copybookFolders = {"first", "second"})
      : root_(std::move(root)), copybookFolders_(std::move(copybookFolders)) {}

  Source Read(std::string_view file) override;
  std::array<std::uint64_t, 2> Hash(std::string_view file) override;
  std::optional<std::string> FindCopybook(std::string_view name, std::string_view library,
                                          std::string_view programFile) override;
  // How often each file was hashed.
  std::map<std::string, int> Hashes() const { return hashes_; }

 private:
  std::string root_;
  std::vector<std::string> copybookFolders_;
  std::mutex mutex_;
  std::map<std::string, int> hashes_;
};

// What the front ends of one scan have done, and what they are to do.
struct PlainLog {
  std::mutex mutex;
  std::vector<std::string> translated;  // files, in the order in which they were begun
  std::atomic<int> frontEnds = 0;
  std::string waitsAt;  // the translation of this file waits until it is cancelled
};

// A front end for a small language, so that scanning can be tested on its own. A line is one of
//   PROGRAM name   a program begins, which reaches to the next one
//   COPY name      reads a copybook
//   GAP, WARNING   there is one at this line
//   THROW          the front end fails in a way that nobody foresees
class PlainFrontEnd final : public workbench::codemodel::FrontEnd {
 public:
  PlainFrontEnd(workbench::codemodel::SourceProvider& sources, PlainLog& log) : sources_(sources), log_(log) {
    ++log.frontEnds;
  }
  std::vector<Program> Translate(std::string_view file, const std::function<bool()>& cancelled) override;

 private:
  void Take(std::string_view line, std::uint32_t row, const workbench::codemodel::FileEntry& own,
            std::vector<Program>& programs);

  workbench::codemodel::SourceProvider& sources_;
  PlainLog& log_;
};

}  // namespace qmrules::test
