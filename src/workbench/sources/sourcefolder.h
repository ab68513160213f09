#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace qmrules::workbench {

// What a search for sources may cost.
struct SourceLimits {
  int depth = 64;                                         // folders within folders, the one searched being the first
  std::size_t files = 200'000;                            // files of any kind that are met
  std::size_t fileBytes = std::size_t{64} * 1024 * 1024;  // of one source
};

struct SourceScan {
  std::string root;      // the workspace's source folder
  std::string path;      // a file or folder in it; "/" and "\" alike; a relative one starts at the process's folder
  std::string encoding;  // of the sources, see platform/encoding.h
  SourceLimits limits;
};

// A program that stands in a source file.
struct ScannedProgram {
  std::string programId;            // upper case
  std::string file;                 // relative to the root, with "/"
  std::size_t lines = 0;            // of the file
  std::string language = "COBOL";   // entity of the source's object
  std::vector<std::string> nested;  // programs within it; they count as parts of it
  bool onlyOneOfFile = true;        // false when the file has several programs one after the other
  // Its model file, relative to the root; nothing where only the program is looked for, and not its model.
  std::optional<std::string> modelFile = {};
};

struct SourceProblem {
  std::string file;  // or folder, relative to the root
  std::string text;  // for the reader, without the file
};

struct SourceScanResult {
  std::vector<ScannedProgram> programs;  // by file, in the order of the bytes of its path, then by place in the file
  std::vector<SourceProblem> problems;   // what could not be taken, with the reason; the others are taken all the same
  std::size_t withoutProgram = 0;        // COBOL files of a folder that hold no PROGRAM-ID: copybooks
};

// Source files by their names, without a look into them.
struct SourceList {
  std::string scope;                    // the path that was searched, relative to the root; "" for the root itself
  bool isFile = false;                  // the path named a file
  std::vector<std::string> files;       // relative to the root, in the order of the bytes
  std::vector<SourceProblem> problems;  // folders that cannot be read
};

// The files that ScanSources would read. Throws as it does.
SourceList ListSources(const SourceScan& scan);

// Finds the COBOL programs in a file or, recursively, in a folder. In a folder files count by their suffix (".cbl",
// ".cob", ".cobol", ".pco", in any case); a file that is named itself may have any. Folders whose name begins with "."
// and linked folders are passed over. Throws platform::Error for a path that is not there or lies outside the root, and
// for a folder with too many files.
SourceScanResult ScanSources(const SourceScan& scan);

}  // namespace qmrules::workbench
