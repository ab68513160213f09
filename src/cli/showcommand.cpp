#include <fmt/format.h>

#include <CLI/App.hpp>
#include <algorithm>

#include "catalogue/gateway.h"
#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/controlsession.h"
#include "cli/displaywidth.h"
#include "cli/objectdetails.h"
#include "cli/workspacecommand.h"
#include "platform/linereader.h"

namespace qmrules::cli {

namespace {

constexpr int kSegment = 108;
constexpr std::string_view kIndent = "  ";

Json JsonOf(const ShownList& list) {
  Json rows = Json::array();
  for (const auto& row : list.rows) {
    Json json = Json::object();
    for (std::size_t at = 0; at < row.size(); ++at) json[list.columns[at].first] = row[at];
    rows.push_back(std::move(json));
  }
  return rows;
}

Json JsonOf(const ObjectDetails& details) {
  Json json{{"key", details.key}, {"name", details.name}, {"attributes", Json::object()}};
  for (const auto& attribute : details.attributes) {
    json["attributes"][attribute.name] = {
        {"caption", attribute.caption}, {"value", ToJson(attribute.value)}, {"editable", attribute.isEditable}};
  }
  if (details.hasSegment) json["sourceText"] = details.sourceText;
  for (const auto& list : details.lists) json[list.name] = JsonOf(list);
  return json;
}

void PrintAttributes(Context& context, const ObjectDetails& details) {
  std::size_t width = 0;
  for (const auto& attribute : details.attributes) width = std::max(width, DisplayWidth(attribute.caption));
  for (const auto& attribute : details.attributes) {
    const std::string caption = attribute.caption + std::string(width - DisplayWidth(attribute.caption), ' ');
    // Lines behind the first one stand under it.
    std::string text = IndentedLines(attribute.value.Text(), std::string(width + 2 * kIndent.size(), ' '));
    text.erase(0, std::min(text.size(), width + 2 * kIndent.size()));
    if (text.empty()) text = "\n";
    std::string line = fmt::format("{}{}{}{}", kIndent, caption, kIndent, text);
    if (text == "\n") line = fmt::format("{}{}\n", kIndent, attribute.caption);
    context.environment.out << line;
  }
}

void PrintSegment(Context& context, const ObjectDetails& details) {
  if (!details.hasSegment) return;
  context.environment.out << '\n';
  PrintTitle(context, context.texts.Text(kSegment));
  const auto lines = platform::SplitLines(details.sourceText);
  const std::size_t width = fmt::format("{}", details.fromRow + static_cast<std::int64_t>(lines.size())).size();
  std::int64_t row = details.fromRow;
  for (const auto line : lines) {
    context.environment.out << fmt::format("{}{:>{}}  {}\n", kIndent, row++, width, OneLine(line));
  }
}

void PrintLists(Context& context, const ObjectDetails& details) {
  for (const auto& list : details.lists) {
    if (list.rows.empty()) continue;
    std::vector<std::string> titles;
    titles.reserve(list.columns.size());
    for (const auto& column : list.columns) titles.push_back(column.second);
    TextTable table(titles);
    for (const auto& row : list.rows) table.Add(row);
    context.environment.out << '\n';
    PrintTitle(context, list.title);
    PrintTable(context, table, std::string(kIndent));
  }
}

class ShowCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override {
    return {"show", "Show an object with its attributes, its segment and what belongs to it"};
  }
  std::vector<std::string> Examples() const override {
    return {"show RULE#12", "show \"Billing/Late fees/Grace period\" --json"};
  }
  void Declare(CLI::App& app) override {
    app.add_option("KEY", key_, kKeyHelp)->type_name("")->required();
    app.add_flag("--json", json_, kJsonHelp);
  }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    const ControlSession session(context, host);
    const auto details =
        ReadObjectDetails(host, context.texts, ObjectFinder(host).Find(key_), session.Control().EditableAttributes());
    if (json_) {
      PrintJson(context, JsonOf(details));
      return kDone;
    }
    PrintTitle(context, fmt::format("{}  {}", details.key, OneLine(details.name)));
    PrintAttributes(context, details);
    PrintSegment(context, details);
    PrintLists(context, details);
    return kDone;
  }

 private:
  std::string key_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeShowCommand() {
  return std::make_unique<ShowCommand>();
}

}  // namespace qmrules::cli
