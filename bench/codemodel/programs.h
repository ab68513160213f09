#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "workbench/codemodel/frontend.h"

namespace qmrules::bench {

struct ProgramText {
  std::string name;
  std::string text;
};

// Programs that are read together.
struct ProgramSet {
  std::string name;  // "nist"
  std::vector<ProgramText> programs;
  std::size_t Lines() const;
  std::size_t Bytes() const;
};

// The files of a folder with this suffix, by name. Throws std::runtime_error when there are none.
ProgramSet ReadPrograms(const std::string& name, const std::string& folder, const std::string& suffix);
ProgramSet Generated(const std::string& name, std::uint32_t lines);

// Gives the texts of a set. A file is made anew each time that it is asked for, so that a reading costs what it costs
// at the first time.
class SetProvider final : public workbench::codemodel::SourceProvider {
 public:
  explicit SetProvider(const ProgramSet& set) : set_(set) {}
  Source Read(std::string_view file) override;
  std::optional<std::string> FindCopybook(std::string_view, std::string_view, std::string_view) override {
    return std::nullopt;
  }

 private:
  const ProgramSet& set_;
};

}  // namespace qmrules::bench
