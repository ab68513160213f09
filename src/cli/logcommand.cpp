#include <fmt/format.h>

#include <CLI/App.hpp>

#include "catalogue/activitylog.h"
#include "catalogue/gateway.h"
#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/displaywidth.h"
#include "cli/objectfinder.h"
#include "cli/output.h"
#include "cli/workspacecommand.h"
#include "platform/error.h"

namespace qmrules::cli {

namespace {

constexpr int kActivity = 186;
constexpr int kWho = 187;
constexpr int kWhen = 188;
constexpr int kNoActivity = 501;

class LogCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override { return {"log", "Show the activity log of a rule"}; }
  std::vector<std::string> Examples() const override { return {"log RULE#12"}; }
  void Declare(CLI::App& app) override {
    app.add_option("KEY", key_, "The rule, by key or path")->type_name("")->required();
    app.add_flag("--json", json_, kJsonHelp);
  }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    const auto rule = ObjectFinder(host).Find(key_);
    if (rule.entity != catalogue::kRule) {
      throw platform::Error(fmt::format("{} is no rule; only rules have an activity log.", rule.Key()));
    }
    const auto log = catalogue::ReadRuleLog(host.Repository(), context.texts, rule.id);
    json_ ? PrintAsJson(context, log) : PrintAsText(context, log);
    return kDone;
  }

 private:
  static void PrintAsJson(Context& context, const catalogue::RuleLog& log) {
    Json list = Json::array();
    for (const auto& row : log.rows) {
      list.push_back({{"activity", row.Activity}, {"userName", row.UserName}, {"when", row.When}});
    }
    PrintJson(context, list);
  }

  static void PrintAsText(Context& context, const catalogue::RuleLog& log) {
    const auto& texts = context.texts;
    if (log.rows.empty()) {
      context.environment.out << texts.Text(kNoActivity) << '\n';
      return;
    }
    TextTable table({texts.Text(kActivity), texts.Text(kWho), texts.Text(kWhen)});
    for (const auto& row : log.rows) table.Add({row.Activity, row.UserName, row.When});
    PrintTitle(context, OneLine(log.caption));
    PrintTable(context, table);
  }

  std::string key_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeLogCommand() {
  return std::make_unique<LogCommand>();
}

}  // namespace qmrules::cli
