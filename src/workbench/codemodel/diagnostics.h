#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qmrules::workbench::codemodel {

enum class Severity : std::uint8_t {
  Gap,      // a piece of the program is not in the model, or a name in it is tied to nothing
  Warning,  // the model is whole, but the text is not what the language asks for
  Note,     // worth knowing
};

struct Diagnostic {
  Severity severity = Severity::Gap;
  std::string file;          // relative to the source folder
  std::uint32_t row = 0;     // from 1; 0 when the file as a whole is meant
  std::uint32_t column = 0;  // UTF-16 characters, from 1
  std::string text;          // for the reader: what is wrong and, where it is known, what to do; without the place
};

// What was found wrong with one program, in the order in which it was met. Past kMost of one severity they are only
// counted, and one more diagnostic tells how many were left out.
class Diagnostics {
 public:
  static constexpr std::size_t kMost = 1000;

  void Add(Diagnostic diagnostic);
  // Ends the collecting.
  std::vector<Diagnostic> Take();
  std::size_t Count(Severity severity) const { return counts_[static_cast<std::size_t>(severity)]; }

 private:
  std::vector<Diagnostic> diagnostics_;
  std::size_t counts_[3] = {};
};

std::string_view NameOf(Severity severity);  // "gap", "warning", "note"

}  // namespace qmrules::workbench::codemodel
