#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qmrules::test {

// A reference as the compiler's listing has it.
struct CompilerReference {
  std::string name;
  std::uint32_t row = 0;
  auto operator<=>(const CompilerReference&) const = default;
};

// The cross-reference of the compiler's listing: names of data, files and procedures with the rows where they are
// referred to.
std::vector<CompilerReference> ParseCrossReference(const std::string& listing);

// Runs the compiler's syntax check over the file, in the dialect "ibm" or, when it refuses that, "cobol85", with its
// listing put into the scratch folder. Nothing when it accepts neither.
std::optional<std::vector<CompilerReference>> AskCompiler(const std::string& path, const std::string& scratch);

}  // namespace qmrules::test
