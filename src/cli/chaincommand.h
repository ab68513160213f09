#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/registeredsources.h"
#include "cli/chaintree.h"
#include "cli/workspacecommand.h"
#include "workbench/codemodel/modelfile.h"

namespace qmrules::cli {

// What "why" and "uses" have in common: chains from the occurrences of a name at a line.
class ChainCommand : public WorkspaceCommand {
 public:
  void Declare(CLI::App& app) override;

 protected:
  explicit ChainCommand(ChainTreeBuilder::Direction direction) : direction_(direction) {}
  int RunIn(Context& context, workbench::EmbeddedHost& host) override;

 private:
  struct Found {
    catalogue::RegisteredSource source;
    std::shared_ptr<const workbench::codemodel::ModelImage> model;
    std::vector<workbench::codemodel::NodeId> occurrences;
  };
  Found Find(workbench::EmbeddedHost& host) const;
  std::vector<catalogue::RegisteredSource> Candidates(workbench::EmbeddedHost& host, const std::string& file) const;

  ChainTreeBuilder::Direction direction_;
  std::string place_;
  std::string name_;
  std::string program_;
  std::size_t depth_ = ChainTreeBuilder::kDeepest;
  bool json_ = false;
};

}  // namespace qmrules::cli
