#include "workbench/codemodel/cobol/programs/crossreference.h"

#include <fmt/format.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

namespace qmrules::test {

namespace {

std::vector<std::string> Words(const std::string& line) {
  std::istringstream stream(line);
  return {std::istream_iterator<std::string>(stream), {}};
}

// "123" or, for a reference that changes the item, "*123".
std::optional<std::uint32_t> Row(std::string word) {
  if (!word.empty() && word.front() == '*') word.erase(0, 1);
  if (word.empty() || word.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
  return static_cast<std::uint32_t>(std::stoul(word));
}

class ListingParser {
 public:
  void Take(const std::string& line) {
    const auto words = Words(line);
    if (words.empty()) return;
    if (words.back() == "REFERENCES" && words.size() == 3) {
      table_ = words[0] == "NAME" || words[0] == "LABEL";
      labels_ = words[0] == "LABEL";
      return;
    }
    if (!table_ || words[0] == "PROGRAM" || words[0].ends_with("GnuCOBOL")) return;
    if (line.find("compilation group") != std::string::npos || words[0] == "Error/Warning") {
      table_ = false;
      return;
    }
    std::size_t first = 0;  // of the rows
    if (line.front() != ' ') {
      // [kind] NAME row-of-definition
      first = labels_ ? 1 : 0;
      if (first >= words.size()) return;
      name_ = words[first];
      first += 2;
    }
    for (std::size_t word = first; word < words.size(); ++word) {
      // The compiler's own labels have a "$".
      const auto row = Row(words[word]);
      if (row && name_.find('$') == std::string::npos) references_.push_back({name_, *row});
    }
  }
  std::vector<CompilerReference> References() { return std::move(references_); }

 private:
  bool table_ = false;
  bool labels_ = false;
  std::string name_;
  std::vector<CompilerReference> references_;
};

}  // namespace

std::vector<CompilerReference> ParseCrossReference(const std::string& listing) {
  ListingParser parser;
  std::istringstream lines(listing);
  for (std::string line; std::getline(lines, line);) parser.Take(line);
  return parser.References();
}

std::optional<std::vector<CompilerReference>> AskCompiler(const std::string& path, const std::string& scratch) {
  const std::string listing = scratch + "/listing";
  for (const char* dialect : {"ibm", "cobol85"}) {
    const auto command =
        fmt::format("cobc -fsyntax-only -std={} -Xref -t '{}' '{}' >/dev/null 2>&1", dialect, listing, path);
    if (std::system(command.c_str()) != 0) continue;  // NOLINT(cert-env33-c): the compiler is a program of its own
    std::ifstream stream(listing, std::ios::binary);
    return ParseCrossReference({std::istreambuf_iterator<char>(stream), {}});
  }
  return std::nullopt;
}

}  // namespace qmrules::test
