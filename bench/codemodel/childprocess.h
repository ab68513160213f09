#pragma once

#include <string>
#include <vector>

namespace qmrules::bench {

// Runs a program to its end and gives the seconds that it took; what it writes goes to a file. Throws
// std::runtime_error when it cannot be started or fails.
double RunChild(const std::vector<std::string>& words, const std::string& output);

}  // namespace qmrules::bench
