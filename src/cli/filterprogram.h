#pragma once

#include <string>
#include <vector>

namespace qmrules::cli {

// Runs a program, found by its name on the search path, on a text and gives what it writes; what it has to say of
// faults goes where this program's own goes. Throws platform::Error when it cannot be started, fails, or writes
// nothing.
std::string RunFilter(const std::string& program, const std::vector<std::string>& arguments, const std::string& input);

}  // namespace qmrules::cli
