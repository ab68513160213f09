#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/sourcefile.h"
#include "workbench/codemodel/token.h"

namespace qmrules::workbench::codemodel {

// One reading of a file within a program: the program's own, or a copybook by one COPY.
struct Inclusion {
  std::uint32_t file = 0;    // index in ExpandedText::files
  std::uint32_t parent = 0;  // the inclusion that holds the COPY; the first one is its own parent
  std::uint32_t depth = 0;   // 0 for the program's own file
  // The COPY statement in the parent's file, its full stop included.
  std::uint32_t offset = 0;
  std::uint32_t end = 0;
  std::uint32_t row = 0;
  std::uint32_t endRow = 0;
};

// A text that a program asked for, found or not: when what it leads to changes, the model is out of date.
struct Dependency {
  std::string name;     // as the program writes it, "PBPOLMS"
  std::string library;  // behind IN or OF; "" for none
  std::string file;     // relative to the source folder; "" when it was not found
};

// The text of a program as the compiler sees it, as tokens that know their physical places.
struct ExpandedText {
  std::vector<std::shared_ptr<const SourceFile>> files;  // the program's own first, each file once
  std::vector<std::array<std::uint64_t, 2>> hashes;      // of each file's bytes, as SourceProvider gives them
  std::vector<Inclusion> inclusions;                     // the program's own first
  std::vector<Token> tokens;                             // ended by a token End
  std::vector<std::string> composed;                     // texts of tokens that are not written so at their place
  std::vector<Dependency> dependencies;                  // each once
  // For each file, the rows that are comment lines as a whole, ascending.
  std::vector<std::shared_ptr<const std::vector<std::uint32_t>>> commentRows;
  bool decimalComma = false;  // DECIMAL-POINT IS COMMA
  bool isFreeForm = false;    // the program's own file has no areas: kAreaA tells the beginning of a row only

  const SourceFile& File(const Token& token) const { return *files[inclusions[token.inclusion].file]; }
  // The token's text: as the compiler reads it for a continued or replaced one, as it stands in the file otherwise.
  // A literal is given with its quotes. Valid as long as this object.
  std::string_view Text(const Token& token) const {
    if (token.Has(kComposed)) return composed[token.text];
    return File(token).Text().substr(token.offset, token.length);
  }
};

}  // namespace qmrules::workbench::codemodel
