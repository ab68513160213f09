#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/codemodel/cobol/reading/lexer.h"
#include "workbench/codemodel/frontend.h"
#include "workbench/codemodel/symboltable.h"

namespace qmrules::workbench::codemodel::cobol {

// Where a file asks for something else than its own tokens.
struct DirectingPlace {
  enum class Kind : std::uint8_t { Copy, SqlInclude, Replace, Directive };
  Kind kind = Kind::Copy;
  std::uint32_t token = 0;      // Directive: the token before which it stands; else its first one
  std::uint32_t directive = 0;  // Directive: its index
};

// A file as tokens, and where it directs the compiler.
struct ReadFile {
  LexedFile lexed;
  std::uint64_t hash[2] = {};
  std::vector<DirectingPlace> places;  // in the order of the text
};

// Lexes the source and finds its places.
ReadFile LexSource(const SourceProvider::Source& source, const LexerOptions& options, SymbolTable& symbols);

// Copybooks that were read, for the programs that copy them too. Holds the newest ones.
class Copybooks {
 public:
  Copybooks(SourceProvider& provider, SymbolTable& symbols) : provider_(provider), symbols_(symbols) {}

  // The copybook in the format that its own text tells, or else in the program's. Throws platform::Error when it cannot
  // be read.
  std::shared_ptr<const ReadFile> Get(const std::string& file, const LexerOptions& options, SourceFormat programFormat);

 private:
  using Entry = std::shared_ptr<const ReadFile>;
  void Keep(std::string key, Entry entry);

  SourceProvider& provider_;
  SymbolTable& symbols_;
  std::unordered_map<std::string, Entry> entries_;  // by file and what it was lexed with
  std::deque<std::string> keys_;                    // of the entries, the oldest first
  std::size_t tokens_ = 0;                          // of all entries
};

}  // namespace qmrules::workbench::codemodel::cobol
