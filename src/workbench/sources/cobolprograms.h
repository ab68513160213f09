#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qmrules::workbench {

struct CobolProgram {
  std::string programId;            // upper case, without quotes
  std::size_t row = 0;              // of the name, from 1
  std::vector<std::string> nested;  // the programs within it, at any depth, in their order
};

struct CobolPrograms {
  std::vector<CobolProgram> programs;  // one after the other, in their order
  // Rows of PROGRAM-ID paragraphs that name no program.
  std::vector<std::size_t> nameless;
};

// The programs that a COBOL text defines by PROGRAM-ID paragraphs. A program reaches to its END PROGRAM or to the end
// of the text; a PROGRAM-ID within it is a nested program. None for a copybook.
CobolPrograms FindPrograms(std::string_view text);

}  // namespace qmrules::workbench
