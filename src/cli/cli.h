#pragma once

#include <string>
#include <vector>

#include "cli/environment.h"

namespace qmrules::cli {

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;  // nothing was changed (a scan and a validation keep what they have done)
inline constexpr int kWrongUsage = 2;
inline constexpr int kNotValid = 3;  // done, and what was looked at is not as it should be

// Runs the program with these arguments (without its own name) to its end and gives the exit code. Results go to `out`;
// what went wrong goes to `err` as "qmrules: TEXT". Throws nothing.
int RunCli(const std::vector<std::string>& args, CliEnvironment& environment);

}  // namespace qmrules::cli
