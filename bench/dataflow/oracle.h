#pragma once

#include <string>

#include "bars.h"

namespace qmrules::bench {

struct OracleRun {
  std::string script = "tests/workbench/flow/oracle/oracle.py";
  std::string checker = "build/release/bin/flow_chaincheck";
  int programs = 2000;
  int first = 1;  // the seed of the first program
};

// Has so many random programs made, compiled and run, and what they did held against what is told of them; prints what
// the script prints. Bars: oracle_missed, the events that are not among what is told, and oracle_failed, the programs
// that could not be made or run (neither may be). Throws std::runtime_error when the script gives no result.
void RunOracle(const OracleRun& run, Bars& bars);

}  // namespace qmrules::bench
