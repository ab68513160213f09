#pragma once

#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "workbench/codemodel/frontend.h"

namespace qmrules::test {

// Source files that stand in memory. A copybook is found by its name without a suffix or with ".cpy", in any case;
// "name IN library" is the file "library/name".
class MemorySources final : public workbench::codemodel::SourceProvider {
 public:
  MemorySources() = default;
  MemorySources(std::initializer_list<std::pair<const std::string, std::string>> files) : files_(files) {}

  // Adds the file, or gives it another text.
  void Put(std::string name, std::string text) { files_[std::move(name)] = std::move(text); }

  Source Read(std::string_view file) override;
  std::optional<std::string> FindCopybook(std::string_view name, std::string_view library,
                                          std::string_view programFile) override;
  // How often Read was asked.
  int Reads() const { return reads_; }

 private:
  std::map<std::string, std::string, std::less<>> files_;
  int reads_ = 0;
};

}  // namespace qmrules::test
