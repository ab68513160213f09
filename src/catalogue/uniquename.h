#pragma once

#include <string>

namespace qmrules::catalogue {

// The name of a new object that has no natural one (rules, data elements, conditions, rule set calls, log records):
// "n", the present moment as a number of days with a fraction, ".", and a counter. No two calls give the same name,
// also not in two processes alive at the same time or in a process and its fork, since the counter carries the
// process's number in its upper half. May be called from any thread.
[[nodiscard]] std::string UniqueName();

}  // namespace qmrules::catalogue
