#pragma once

#include <string>
#include <vector>

#include "workbench/scan/changecheck.h"

namespace qmrules::workbench {

// One source on its way through a scan.
struct ScanTask {
  enum class State {
    Waiting,     // not reached
    Current,     // its model files are up to date
    Translated,  // they were made anew
    Failed,      // there are none
  };
  std::string source;
  bool namedItself = false;
  std::string modelStem;                // what the names of its model files begin with
  std::vector<std::string> modelFiles;  // that were there before, as names in the folder of the models
  State state = State::Waiting;
  std::vector<KnownModel> models;  // of a current or translated one; without a program, the note that tells so
  std::string problem;             // of a failed one
};

}  // namespace qmrules::workbench
