#pragma once

#include <array>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/codemodel/frontend.h"
#include "workbench/codemodel/modelfile.h"

namespace qmrules::workbench {

// A model file as a scan knows it, with what its head tells.
struct KnownModel {
  std::string fileName;  // in the folder of the models
  std::string program;   // upper case
  std::uint32_t rows = 0;
  std::uint32_t gaps = 0;
  std::uint32_t warnings = 0;
};

// The name that a scan knows a program by: its own or, where it has none, that of its file; in upper case.
std::string NameOfProgram(std::string_view name, std::string_view source);

// Tells which models are out of date. Used by several threads at the same time.
class ChangeCheck {
 public:
  // The provider outlives the check. `options` is what models that were made now would be marked with.
  ChangeCheck(codemodel::SourceProvider& sources, std::string modelFolder, std::string options);

  // The models in these files, when all of them are what scanning the source again would give; otherwise nothing. That
  // is when options and texts are the same as then, and each text that a program asks for is still found in the same
  // file, or still missing.
  std::optional<std::vector<KnownModel>> Check(std::string_view source, std::span<const std::string> fileNames);

 private:
  using Hash = std::array<std::uint64_t, 2>;
  bool IsCurrent(std::string_view source, const codemodel::ModelHead& head);
  bool IsSame(const codemodel::FileEntry& file);

  codemodel::SourceProvider& sources_;
  std::string modelFolder_;
  std::string options_;
  std::mutex mutex_;
  std::unordered_map<std::string, std::optional<Hash>> hashes_;  // of files met; nothing for one that is not there
};

}  // namespace qmrules::workbench
