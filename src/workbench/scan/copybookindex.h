#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/sources/sourcefolder.h"

namespace qmrules::workbench {

// Where the copybooks of a workspace lie, by what a COPY can call them. Made by one walk through the folders; hidden
// folders, linked ones and links to files outside are passed over.
class CopybookIndex {
 public:
  // The root is a path without links. The folders are relative to it, with "/", in the order of the search; none: every
  // folder that holds a file with a copybook's suffix, in the order of the bytes of its path. Throws platform::Error
  // when there are too many files.
  CopybookIndex(const std::filesystem::path& root, const std::vector<std::string>& copybookFolders,
                const SourceLimits& limits);

  // The file, relative to the root, or nothing. A file in a folder called as the library comes first, then one in the
  // program's own folder, then those in the copybook folders. Names are compared without case, and with their suffix or
  // without it. A file with the suffix of a program is the last choice, unless its folder was named.
  std::optional<std::string> Find(std::string_view name, std::string_view library, std::string_view programFile) const;

 private:
  struct Place {
    std::uint32_t folder = 0;
    std::string file;  // its name in the folder
  };
  struct Folder {
    std::string path;    // relative to the root, with "/"; "" for the root
    std::string folded;  // the same without case, with "/" before and behind it
  };
  // What a COPY asks for, without case.
  struct Wish {
    std::string folder;         // within the folder that is searched: "SUB/", or ""
    std::string base;           // the file's name
    std::string library;        // "/LIB/", or ""
    std::string programFolder;  // as Folder::folded
    std::string_view programFile;
  };

  void Walk(const std::filesystem::path& root, const std::vector<std::string>& copybookFolders,
            const SourceLimits& limits);
  std::vector<std::string> AddFiles(const std::filesystem::path& root, const std::string& folder, std::size_t& files,
                                    const SourceLimits& limits);
  void SearchAllFolders();
  std::optional<std::uint64_t> TurnOf(const Wish& wish, const Place& place, std::size_t suffix) const;
  std::string PathOf(const Place& place) const;

  std::vector<Folder> folders_;
  std::unordered_map<std::string, std::vector<Place>> places_;  // by the file's name without case
  std::unordered_map<std::string, std::uint32_t> turns_;        // of the searched folders, by folded path
  bool areNamed_ = false;                                       // the searched folders were named
};

}  // namespace qmrules::workbench
