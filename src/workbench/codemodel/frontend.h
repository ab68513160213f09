#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/records.h"
#include "workbench/codemodel/sourcefile.h"

// To add a language: a folder below codemodel/ with a FrontEnd, the verbs of its statements, an entry in
// frontends.cpp, the suffixes of its files in workbench/sources, its entity in repstry.xml. The kinds of objects are
// the same for all languages; a new kind goes into vocabulary.h.
namespace qmrules::workbench::codemodel {

// Gives the texts that a program is made of. Implementations keep what they have read, and may be asked by several
// front ends at the same time.
class SourceProvider {
 public:
  virtual ~SourceProvider() = default;
  struct Source {
    std::shared_ptr<const SourceFile> file;
    std::uint64_t hash[2] = {};  // of the bytes before decoding
  };
  // The file by its name relative to the source folder. Throws platform::Error when it cannot be read.
  virtual Source Read(std::string_view file) = 0;
  // The hash that Read gives. Where the text is not wanted, this need not decode it. Throws as Read does.
  virtual std::array<std::uint64_t, 2> Hash(std::string_view file) {
    const Source source = Read(file);
    return {source.hash[0], source.hash[1]};
  }
  // The file that a COPY of the name (in the library, where that is not empty) means, for the program of this file; or
  // nothing.
  virtual std::optional<std::string> FindCopybook(std::string_view name, std::string_view library,
                                                  std::string_view programFile) = 0;
};

// Translates the programs of one language into models. One object works for one thread; it keeps what programs share.
class FrontEnd {
 public:
  virtual ~FrontEnd() = default;
  struct Program {
    std::string name;  // upper case; "" when the file does not tell
    ModelData model;
  };
  // The models of the programs of a file, one for each outermost program, in their order; none for a file without a
  // program (a copybook). Any bytes are taken: what is wrong is told in the diagnostics. `cancelled` is asked now and
  // then; when it answers true, platform::Error is thrown. Throws the same when the file cannot be read.
  virtual std::vector<Program> Translate(std::string_view file, const std::function<bool()>& cancelled) = 0;
};

}  // namespace qmrules::workbench::codemodel
