#include "cli/chaincommand.h"

#include <memory>
#include <string>
#include <vector>

#include "cli/commandlist.h"

namespace qmrules::cli {

namespace {

class WhyCommand final : public ChainCommand {
 public:
  WhyCommand() : ChainCommand(ChainTreeBuilder::Direction::Backward) {}
  CommandTitle Title() const override {
    return {"why", "Show where the value of a variable comes from, and under which conditions"};
  }
  std::vector<std::string> Examples() const override {
    return {"why cobol/pbrate01.cbl:598 WS-NET-PREM", "why pbrate01.cbl:598 WS-NET-PREM --depth 2",
            "why pbrate01.cbl:598 WS-NET-PREM --json"};
  }
};

}  // namespace

std::unique_ptr<Command> MakeWhyCommand() {
  return std::make_unique<WhyCommand>();
}

}  // namespace qmrules::cli
