#include <fmt/format.h>

#include <CLI/App.hpp>

#include "catalogue/gateway.h"
#include "cli/cataloguetree.h"
#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/output.h"
#include "cli/workspacecommand.h"

namespace qmrules::cli {

namespace {

using catalogue::kBusinessFunction;
using catalogue::kRule;
using catalogue::kRuleSet;
using catalogue::MakeKey;

constexpr int kNone = 162;

Json JsonOfSet(const CatalogueTree& tree, const ListedRuleSet& set) {
  Json rules = Json::array();
  for (const auto& rule : tree.RulesOf(set.id)) {
    rules.push_back({{"key", MakeKey(kRule, rule.id)}, {"name", rule.name}, {"seqNo", rule.seqNo}});
  }
  Json json{{"key", MakeKey(kRuleSet, set.id)}, {"name", set.name}};
  if (set.seqNo != 0) json["seqNo"] = set.seqNo;
  json["rules"] = std::move(rules);
  return json;
}

Json JsonOfSets(const CatalogueTree& tree, const std::vector<ListedRuleSet>& sets) {
  Json list = Json::array();
  for (const auto& set : sets) list.push_back(JsonOfSet(tree, set));
  return list;
}

void AddSets(const CatalogueTree& tree, const std::vector<ListedRuleSet>& sets, TextTable& table) {
  for (const auto& set : sets) {
    const std::string number = set.seqNo == 0 ? "" : fmt::format("{}. ", set.seqNo);
    table.Add({fmt::format("  {}{}", number, set.name), MakeKey(kRuleSet, set.id)});
    for (const auto& rule : tree.RulesOf(set.id)) {
      table.Add({fmt::format("    {}. {}", rule.seqNo, rule.name), MakeKey(kRule, rule.id)});
    }
  }
}

class ListCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override {
    return {"list", "List functions, rule sets and rules of the project in sequence"};
  }
  std::vector<std::string> Examples() const override { return {"list", "list --json"}; }
  void Declare(CLI::App& app) override { app.add_flag("--json", json_, kJsonHelp); }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    const auto tree = ReadCatalogueTree(host);
    json_ ? PrintAsJson(context, tree) : PrintAsText(context, tree);
    return kDone;
  }

 private:
  static void PrintAsJson(Context& context, const CatalogueTree& tree) {
    Json functions = Json::array();
    for (const auto& function : tree.functions) {
      functions.push_back({{"key", MakeKey(kBusinessFunction, function.id)},
                           {"name", function.name},
                           {"ruleSets", JsonOfSets(tree, function.ruleSets)}});
    }
    PrintJson(context, {{"functions", std::move(functions)},
                        {"ruleSetsWithoutFunction", JsonOfSets(tree, tree.withoutFunction)}});
  }

  static void PrintAsText(Context& context, const CatalogueTree& tree) {
    TextTable table;
    for (const auto& function : tree.functions) {
      table.Add({function.name, MakeKey(kBusinessFunction, function.id)});
      AddSets(tree, function.ruleSets, table);
    }
    if (!tree.withoutFunction.empty()) {
      table.Add({context.texts.Text(kNone)});
      AddSets(tree, tree.withoutFunction, table);
    }
    PrintTable(context, table);
  }

  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeListCommand() {
  return std::make_unique<ListCommand>();
}

}  // namespace qmrules::cli
