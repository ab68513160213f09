#pragma once

#include <string>

#include "cli/commandtree.h"

// The manual, written from what the commands declare.
namespace qmrules::cli {

// The manual page, section 1, in roff.
std::string ManualPage(const CommandDescription& program);

// The same as Markdown, for docs/cli.md.
std::string ManualMarkdown(const CommandDescription& program);

// The form of a command line: "qmrules rule create NAME --ruleset KEY [--after KEY]".
std::string UsageOf(const CommandDescription& command);

}  // namespace qmrules::cli
