#pragma once

#include <string>

#include "cli/commandtree.h"

// Completion scripts, written from what the commands declare. They offer commands, options, listed values, and file or
// folder names where a path is wanted.
namespace qmrules::cli {

std::string BashCompletion(const CommandDescription& program);
std::string ZshCompletion(const CommandDescription& program);
std::string FishCompletion(const CommandDescription& program);

}  // namespace qmrules::cli
