#include <fmt/format.h>

#include <CLI/App.hpp>
#include <algorithm>
#include <optional>

#include "catalogue/gateway.h"
#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/displaywidth.h"
#include "cli/output.h"
#include "cli/workspacecommand.h"
#include "shell/casefold.h"
#include "workbench/repository/fetchlist.h"

namespace qmrules::cli {

namespace {

struct NodeText {
  std::string entity;  // "" for any entity
  std::string fetchList;
  std::string filter;
};

// "ENTITY;FETCHLIST;FILTER"; the filter may hold further semicolons.
NodeText ParseNode(const std::string& text) {
  NodeText node;
  const std::size_t first = text.find(';');
  node.entity = text.substr(0, first);
  if (first == std::string::npos) return node;
  const std::size_t second = text.find(';', first + 1);
  node.fetchList = text.substr(first + 1, second == std::string::npos ? second : second - first - 1);
  if (second != std::string::npos) node.filter = text.substr(second + 1);
  return node;
}

class FetchCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override {
    return {"fetch", "Query the catalogue along a path of entities and relations"};
  }
  std::vector<std::string> Examples() const override {
    return {
        "fetch --project --node \"BUSINESSFUNC;>Name:Function\" --relation Triggers --node \"RULESETCALL;>SeqNo\" "
        "--relation Refers --node \"RULESET;Name,ID\"",
        "fetch --node \"RULE;ID,RuleName,FileName;Valid=Invalid\" --json",
        "fetch --node \"RULESET;ID,>Name\" --count Has:Rules"};
  }
  void Declare(CLI::App& app) override {
    app.add_option(
           "--node", nodes_,
           "A node of the path, the root first: an entity, what is delivered of it (\"Name\", \">Name\" sorted, "
           "\"Name:Alias\") and which objects count (\"ID=5\", \"Name=A|Name=B\"); the last two may be left out")
        ->type_name("ENTITY;FETCHLIST;FILTER")
        ->required()
        ->allow_extra_args(false);
    app.add_option("--relation", relations_, "The relation from the node before it to the node behind it")
        ->type_name("NAME")
        ->allow_extra_args(false);
    app.add_option("--count", count_,
                   "Deliver, under an alias, how many objects a relation from the last node leads to")
        ->type_name("RELATION:ALIAS");
    app.add_flag("--project", project_, "Only objects of the current project");
    app.add_flag("--json", json_, kJsonHelp);
  }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    if (relations_.size() + 1 != nodes_.size()) {
      throw UsageError(fmt::format("{} --node need {} --relation between them, not {}.", nodes_.size(),
                                   nodes_.size() - 1, relations_.size()));
    }
    const auto fetch = catalogue::NewQuery(host.Repository());
    const auto columns = Fill(*fetch);
    fetch->Execute(project_ ? host.ProjectObject()->ObjectID() : std::string());
    json_ ? PrintAsJson(context, *fetch, columns) : PrintAsText(context, *fetch, columns);
    return kDone;
  }

 private:
  // Declares the path and gives the names that it delivers, from the root on.
  std::vector<std::string> Fill(platform::Fetch& fetch) const {
    std::vector<std::vector<std::string>> names(nodes_.size() + 1);
    std::optional<platform::RelationNode> related = Count(fetch, names.back());
    for (std::size_t at = nodes_.size(); at-- > 0;) {
      const auto node = ParseNode(nodes_[at]);
      for (const auto& item : workbench::repository::ParseFetchList(node.fetchList)) names[at].push_back(item.alias);
      const bool hasEntity = !node.entity.empty();
      const auto declared = fetch.AddObject(project_ && hasEntity,
                                            hasEntity ? std::optional<std::string_view>(node.entity) : std::nullopt,
                                            node.fetchList, node.filter, related);
      if (at == 0) {
        fetch.SetRoot(declared);
      } else {
        related = fetch.AddRelation(relations_[at - 1], false, "", declared);
      }
    }
    std::vector<std::string> columns;
    for (const auto& ofNode : names) {
      for (const auto& name : ofNode) AddColumn(columns, name);
    }
    return columns;
  }

  std::optional<platform::RelationNode> Count(platform::Fetch& fetch, std::vector<std::string>& names) const {
    if (count_.empty()) return std::nullopt;
    const std::size_t colon = count_.rfind(':');
    if (colon == std::string::npos || colon == 0 || colon + 1 == count_.size()) {
      throw UsageError(fmt::format("\"{}\" counts nothing: write RELATION:ALIAS, as \"Has:Rules\".", count_));
    }
    names.push_back(count_.substr(colon + 1));
    return fetch.AddCount(count_.substr(0, colon), project_, names.back());
  }

  static void AddColumn(std::vector<std::string>& columns, const std::string& name) {
    const bool isThere =
        std::ranges::any_of(columns, [&](const auto& column) { return shell::EqualIgnoringCase(column, name); });
    if (!isThere) columns.push_back(name);
  }

  // Row by row, since a fetch may deliver the whole catalogue.
  static void PrintAsJson(Context& context, platform::Fetch& fetch, const std::vector<std::string>& columns) {
    auto& out = context.environment.out;
    bool isFirst = true;
    for (; !fetch.Eof(); fetch.MoveNext()) {
      Json row = Json::object();
      for (const auto& column : columns) row[column] = ToJson(fetch.Row().Item(column).Value());
      out << (isFirst ? "[\n" : ",\n") << Indented(JsonText(row));
      isFirst = false;
    }
    out << (isFirst ? "[]\n" : "\n]\n");
  }

  static std::string Indented(const std::string& text) {
    std::string indented = "  ";
    for (const char character : text) {
      indented += character;
      if (character == '\n') indented += "  ";
    }
    return indented;
  }

  static void PrintAsText(Context& context, platform::Fetch& fetch, const std::vector<std::string>& columns) {
    TextTable table(columns);
    for (; !fetch.Eof(); fetch.MoveNext()) {
      std::vector<std::string> cells;
      cells.reserve(columns.size());
      for (const auto& column : columns) cells.push_back(fetch.Row().Item(column).Text());
      table.Add(std::move(cells));
    }
    PrintTable(context, table);
  }

  std::vector<std::string> nodes_;
  std::vector<std::string> relations_;
  std::string count_;
  bool project_ = false;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeFetchCommand() {
  return std::make_unique<FetchCommand>();
}

}  // namespace qmrules::cli
