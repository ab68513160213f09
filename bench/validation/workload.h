#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "workbench/host/embeddedhost.h"

namespace qmrules::bench {

// A workspace with generated sources of 10,000 lines each, and for each source 100 rules whose segments stand at their
// rows and 100 whose segments stand some rows below theirs. Segments have 3 to 12 lines.
class Workload {
 public:
  static constexpr int kLinesPerFile = 10'000;
  static constexpr int kRulesPerFile = 100;

  // Takes what the folder holds, and makes what is missing there.
  Workload(const std::string& folder, int files);

  workbench::EmbeddedHost& Host() { return *host_; }
  // The database file.
  const std::string& StorePath() const { return storePath_; }
  // The sources' names, relative to the workspace.
  const std::vector<std::string>& Files() const { return files_; }
  // IDs of rules.
  const std::vector<std::int32_t>& Standing() const { return standing_; }
  const std::vector<std::int32_t>& Astray() const { return astray_; }

 private:
  void MakeSources();
  void MakeRules();
  void ReadRules();

  std::string folder_;
  std::string storePath_;
  std::vector<std::string> files_;
  std::unique_ptr<workbench::EmbeddedHost> host_;
  std::vector<std::int32_t> standing_;
  std::vector<std::int32_t> astray_;
};

}  // namespace qmrules::bench
