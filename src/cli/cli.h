#pragma once

#include <string>
#include <vector>

#include "cli/environment.h"

namespace qmrules::cli {

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;  // refused or failed: nothing was changed (a scan keeps what it has done)
inline constexpr int kWrongUsage = 2;

// Runs the program with these arguments (without its own name) to its end and gives the exit code. Results go to `out`;
// what went wrong goes to `err` as "qmrules: TEXT". Throws nothing.
int RunCli(const std::vector<std::string>& args, CliEnvironment& environment);

}  // namespace qmrules::cli
