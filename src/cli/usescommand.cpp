#include "cli/chaincommand.h"

#include <memory>
#include <string>
#include <vector>

#include "cli/commandlist.h"

namespace qmrules::cli {

namespace {

class UsesCommand final : public ChainCommand {
 public:
  UsesCommand() : ChainCommand(ChainTreeBuilder::Direction::Forward) {}
  CommandTitle Title() const override {
    return {"uses", "Show where the value that a statement gives a variable is used, and what comes of it"};
  }
  std::vector<std::string> Examples() const override {
    return {"uses cobol/pbrate01.cbl:577 WS-NET-PREM", "uses pbrate01.cbl:577 WS-NET-PREM --depth 1 --json"};
  }
};

}  // namespace

std::unique_ptr<Command> MakeUsesCommand() {
  return std::make_unique<UsesCommand>();
}

}  // namespace qmrules::cli
