#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/progress.h"
#include "platform/repository.h"
#include "workbench/codemodel/frontend.h"
#include "workbench/sources/sourcefolder.h"

namespace qmrules::workbench {

struct ScanRequest {
  std::string root;                // the workspace's source folder
  std::vector<std::string> paths;  // files and folders in it; none for the whole of it and all known sources
  codemodel::SourceProvider& sources;
  // Makes a front end for one thread.
  std::function<std::unique_ptr<codemodel::FrontEnd>(codemodel::SourceProvider&)> makeFrontEnd;
  // What else decides how a model comes out: version and options of the front end. A model that was made with another
  // text here is made anew.
  std::string options;
  int jobs = 0;        // threads; 0 for one for each core
  bool force = false;  // make every model anew
  SourceLimits limits = {};
};

// What became of one program.
struct ScannedModel {
  enum class Outcome {
    Added,      // new to the catalogue
    Updated,    // its model was made anew, or the catalogue brought into line with it
    Unchanged,  // all was in line
    Missing,    // known to the catalogue, but its file is gone or does not hold it any more; its model was removed
    Failed,     // there is no model of it; `problem` tells why
  };
  Outcome outcome = Outcome::Unchanged;
  std::string key;   // of the source's object; "" where there is none
  std::string name;  // of the program; "" for a file that could not be read and is not known
  std::string file;  // relative to the root
  std::uint32_t rows = 0;
  std::uint32_t gaps = 0;
  std::uint32_t warnings = 0;
  std::string problem;  // for the reader, without the file
};

struct ScanReport {
  std::vector<ScannedModel> programs;   // by file, in the order of the bytes of its path, then by place in the file
  std::vector<SourceProblem> problems;  // folders that cannot be read, and files named that hold no program
  bool cancelled = false;               // files that were not reached are not among the programs

  std::size_t Count(ScannedModel::Outcome outcome) const;
};

// Brings the models of the programs, and what the catalogue tells of them, into line with the sources. Only what has
// changed is translated: the source itself, a copybook that it uses, or where a copybook is found. One bad source
// never ends a scan. A cancelled scan keeps the models that it has made; the next one goes on behind them.
//
// Model files are written by several threads, each file whole or not at all. The catalogue is written at the end by the
// calling thread, whole or not at all. Throws platform::Error for a path that is not there or lies outside the root,
// and when the catalogue cannot be written.
ScanReport ScanPrograms(const ScanRequest& request, platform::Repository& repository, std::string_view projectKey,
                        platform::Progress& progress);

}  // namespace qmrules::workbench
