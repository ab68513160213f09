#include <fmt/format.h>

#include <CLI/App.hpp>
#include <algorithm>
#include <optional>

#include "catalogue/gateway.h"
#include "catalogue/sequence.h"
#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/objectfinder.h"
#include "cli/output.h"
#include "cli/workspacecommand.h"
#include "platform/error.h"

namespace qmrules::cli {

namespace {

using catalogue::Direction;
using catalogue::MakeKey;
using platform::Error;

constexpr int kNotAvailable = 543;

class MoveCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override {
    return {"move", "Move a rule or a rule set one place up or down in its sequence"};
  }
  std::vector<std::string> Examples() const override { return {"move up RULE#12", "move down \"Billing/Late fees\""}; }
  void Declare(CLI::App& app) override {
    app.add_option("DIRECTION", direction_, "Where to")
        ->check(CLI::IsMember({"up", "down"}))
        ->option_text("up|down REQUIRED")
        ->required();
    app.add_option("KEY", key_, "The rule or rule set, by key or path; a rule set of several functions by its path")
        ->type_name("")
        ->required();
    app.add_flag("--json", json_, kJsonHelp);
  }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    const ObjectFinder finder(host);
    const auto object = finder.Find(key_);
    finder.RequireInProject(object);
    std::int64_t number = 0;
    if (object.entity == catalogue::kRule) {
      Write(host, [&] { number = MoveRule(host, finder, object); });
    } else if (object.entity == catalogue::kRuleSet) {
      Write(host, [&] { number = MoveRuleSet(host, finder, object); });
    } else {
      throw Error(fmt::format("{}: {}", object.Key(), context.texts.Text(kNotAvailable)));
    }
    if (json_) {
      PrintJson(context, {{"key", object.Key()}, {"seqNo", number}});
    } else {
      context.environment.out << fmt::format("{} SeqNo = {}\n", object.Key(), number);
    }
    return kDone;
  }

 private:
  Direction Where() const { return direction_ == "up" ? Direction::Up : Direction::Down; }

  std::int32_t Neighbour(std::optional<std::int32_t> neighbour, const FoundObject& object,
                         const std::string& parentKey) const {
    if (neighbour) return *neighbour;
    throw Error(fmt::format("{} is the {} of {} and cannot be moved {}.", object.Key(),
                            Where() == Direction::Up ? "first" : "last", parentKey, direction_));
  }

  std::int64_t MoveRule(workbench::EmbeddedHost& host, const ObjectFinder& finder, const FoundObject& rule) const {
    auto& repository = host.Repository();
    const std::int32_t ruleSetID = finder.RuleSetOf(rule.id);
    const auto neighbour =
        Neighbour(catalogue::NeighbourRule(repository, host.ProjectObject()->ObjectID(), ruleSetID, rule.id, Where()),
                  rule, MakeKey(catalogue::kRuleSet, ruleSetID));
    return catalogue::SwapRules(repository, rule.id, neighbour).first;
  }

  std::int64_t MoveRuleSet(workbench::EmbeddedHost& host, const ObjectFinder& finder, const FoundObject& set) const {
    auto& repository = host.Repository();
    const std::int32_t functionID = FunctionOf(finder, set);
    const auto neighbour = Neighbour(
        catalogue::NeighbourRuleSet(repository, host.ProjectObject()->ObjectID(), functionID, set.id, Where()), set,
        MakeKey(catalogue::kBusinessFunction, functionID));
    return catalogue::SwapRuleSets(repository, functionID, set.id, neighbour).first;
  }

  static std::int32_t FunctionOf(const ObjectFinder& finder, const FoundObject& set) {
    if (set.functionID != 0) return set.functionID;
    const auto functions = finder.FunctionsOf(set.id);
    if (functions.empty()) {
      throw Error(fmt::format("{} is triggered by no function, so it has no place in a sequence.", set.Key()));
    }
    if (functions.size() == 1) return functions.front();
    std::string keys;
    for (const auto id : functions) keys += (keys.empty() ? "" : ", ") + MakeKey(catalogue::kBusinessFunction, id);
    throw Error(fmt::format("{} is triggered by several functions ({}); name it by its path \"Function/Rule set\".",
                            set.Key(), keys));
  }

  std::string direction_;
  std::string key_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeMoveCommand() {
  return std::make_unique<MoveCommand>();
}

}  // namespace qmrules::cli
