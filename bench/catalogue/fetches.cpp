#include "catalogue/fetches.h"

#include <fmt/format.h>

#include "catalogue/walk.h"

namespace qmrules::bench {

namespace {

using platform::Repository;

constexpr int longRounds = 5;
constexpr int mediumRounds = 25;
constexpr int shortRounds = 300;
constexpr std::size_t listCharacters = 4000;

// What every measurement needs.
struct Place {
  Repository& repository;
  RawStore& raw;
  const Catalogue& catalogue;
};

// IDs that lie all over the catalogue, the same ones for both sides.
int SpreadID(int round, int count) {
  return 1 + static_cast<int>((static_cast<std::int64_t>(round) * 7919 + 17) % count);
}

Comparison CompareFunctions(const Place& place) {
  const auto ours = [&](int, RowSink& sink) {
    const auto fetch = place.repository.NewFetch();
    fetch->SetRoot(fetch->AddObject(true, "BUSINESSFUNC", ">Name:FuncName,ID:FuncID"));
    Walk(*fetch, place.catalogue.projectKey, {"FuncName", "FuncID"}, sink);
  };
  const auto raw = [&](int, RowSink& sink) {
    auto statement = place.raw.Prepare(
        "SELECT f.Name, f.ObjectID FROM VekBUSINESSFUNCTbl f "
        "JOIN VekBusinessFunctionBelongsToProjectTbl p ON p.FromID = f.ObjectID AND p.ToID = ? "
        "ORDER BY f.Name COLLATE NOCASE");
    statement.Bind(1, place.catalogue.projectID);
    Walk(statement, 2, sink);
  };
  return Compare("tree_functions", mediumRounds, ours, raw);
}

Comparison CompareRuleSets(const Place& place) {
  const auto ours = [&](int, RowSink& sink) {
    const auto fetch = place.repository.NewFetch();
    const auto count = fetch->AddCount("Has", false, "Children");
    const auto set = fetch->AddObject(true, "RULESET", "Name:SetName,ID:SetID", {}, count);
    const auto refers = fetch->AddRelation("Refers", false, "", set);
    const auto call = fetch->AddObject(false, "RULESETCALL", ">SeqNo", {}, refers);
    const auto triggers = fetch->AddRelation("Triggers", false, "", call);
    fetch->SetRoot(fetch->AddObject(true, "BUSINESSFUNC", ">Name:FuncName,ID:FuncID", {}, triggers));
    Walk(*fetch, place.catalogue.projectKey, {"FuncName", "FuncID", "SeqNo", "SetName", "SetID", "Children"}, sink);
  };
  const auto raw = [&](int, RowSink& sink) {
    auto statement = place.raw.Prepare(
        "SELECT f.Name, f.ObjectID, c.SeqNo, s.Name, s.ObjectID, "
        "(SELECT COUNT(*) FROM VekRuleSetHasRuleTbl h WHERE h.FromID = s.ObjectID) "
        "FROM VekBusinessFunctionBelongsToProjectTbl fp "
        "JOIN VekBUSINESSFUNCTbl f ON f.ObjectID = fp.FromID "
        "JOIN VekBusinessFunctionTriggersRuleSetTbl t ON t.FromID = f.ObjectID "
        "JOIN VekRULESETCALLTbl c ON c.ObjectID = t.ToID "
        "JOIN VekRuleSetCallRefersRuleSetTbl e ON e.FromID = c.ObjectID "
        "JOIN VekRULESETTbl s ON s.ObjectID = e.ToID "
        "JOIN VekRuleSetBelongsToProjectTbl sp ON sp.FromID = s.ObjectID AND sp.ToID = ?1 "
        "WHERE fp.ToID = ?1 ORDER BY f.Name COLLATE NOCASE, c.SeqNo");
    statement.Bind(1, place.catalogue.projectID);
    Walk(statement, 6, sink);
  };
  return Compare("tree_rule_sets", mediumRounds, ours, raw);
}

Comparison CompareRulesOfSet(const Place& place) {
  const auto ours = [&](int round, RowSink& sink) {
    const auto fetch = place.repository.NewFetch();
    const auto rule = fetch->AddObject(false, "RULE", "ID,RuleName,>SeqNo");
    const auto has = fetch->AddRelation("Has", false, "", rule);
    const std::string filter = "ID=" + std::to_string(SpreadID(round, place.catalogue.Sets()));
    fetch->SetRoot(fetch->AddObject(true, "RULESET", "", filter, has));
    Walk(*fetch, place.catalogue.projectKey, {"ID", "RuleName", "SeqNo"}, sink);
  };
  const auto raw = [&](int round, RowSink& sink) {
    auto statement = place.raw.Prepare(
        "SELECT r.ObjectID, r.RuleName, r.SeqNo FROM VekRuleSetBelongsToProjectTbl p "
        "JOIN VekRuleSetHasRuleTbl h ON h.FromID = p.FromID JOIN VekRULETbl r ON r.ObjectID = h.ToID "
        "WHERE p.FromID = ?1 AND p.ToID = ?2 ORDER BY r.SeqNo");
    statement.Bind(1, SpreadID(round, place.catalogue.Sets()));
    statement.Bind(2, place.catalogue.projectID);
    Walk(statement, 3, sink);
  };
  return Compare("rules_of_set", shortRounds, ours, raw);
}

Comparison CompareRuleByID(const Place& place) {
  const auto ours = [&](int round, RowSink& sink) {
    const auto fetch = place.repository.NewFetch();
    const std::string filter = "ID=" + std::to_string(SpreadID(round, place.catalogue.Rules()));
    fetch->SetRoot(fetch->AddObject(
        false, "RULE", "ID,RuleName,Description,BusinessDescription,Program,FileName,FromRow,ToRow,Valid,SourceText",
        filter));
    Walk(*fetch, "",
         {"ID", "RuleName", "Description", "BusinessDescription", "Program", "FileName", "FromRow", "ToRow", "Valid",
          "SourceText"},
         sink);
  };
  const auto raw = [&](int round, RowSink& sink) {
    auto statement = place.raw.Prepare(
        "SELECT ObjectID, RuleName, Description, BusinessDescription, Program, FileName, FromRow, ToRow, Valid, "
        "SourceText "
        "FROM VekRULETbl WHERE ObjectID = ?");
    statement.Bind(1, SpreadID(round, place.catalogue.Rules()));
    Walk(statement, 10, sink);
  };
  return Compare("rule_by_id", shortRounds, ours, raw);
}

// A list as the callers build them, upwards from an ID that depends on the round.
std::string IDListOf(int round, int count) {
  std::string list = "0";
  for (int id = SpreadID(round, count / 2); list.size() <= listCharacters && id <= count; id += 3) {
    list += ',';
    list += std::to_string(id);
  }
  return list;
}

Comparison CompareIDList(const Place& place) {
  const auto ours = [&](int round, RowSink& sink) {
    const auto fetch = place.repository.NewFetch();
    fetch->SetRoot(
        fetch->AddObject(false, "RULE", "ID,RuleName,SeqNo", "ID in " + IDListOf(round, place.catalogue.Rules())));
    Walk(*fetch, "", {"ID", "RuleName", "SeqNo"}, sink);
  };
  const auto raw = [&](int round, RowSink& sink) {
    auto statement = place.raw.Prepare("SELECT ObjectID, RuleName, SeqNo FROM VekRULETbl WHERE ObjectID IN (" +
                                       IDListOf(round, place.catalogue.Rules()) + ") ORDER BY ObjectID");
    Walk(statement, 3, sink);
  };
  return Compare("id_list", shortRounds, ours, raw);
}

// The whole path in reading order, of the functions in the list or of all.
Comparison CompareFullPath(const Place& place, const std::string& name, const std::string& functions, int rounds) {
  const auto ours = [&](int, RowSink& sink) {
    const auto fetch = place.repository.NewFetch();
    const auto rule =
        fetch->AddObject(false, "RULE", "ID:RuleID,RuleName,>SeqNo,Description,Program,FromRow,ToRow,Valid");
    const auto has = fetch->AddRelation("Has", false, "", rule);
    const auto set = fetch->AddObject(true, "RULESET", "Name:SetName,ID:SetID", {}, has);
    const auto refers = fetch->AddRelation("Refers", false, "", set);
    const auto call = fetch->AddObject(false, "RULESETCALL", ">SeqNo:CallSeqNo", {}, refers);
    const auto triggers = fetch->AddRelation("Triggers", false, "", call);
    const platform::Filter filter = functions.empty() ? platform::Filter() : "ID in " + functions;
    fetch->SetRoot(fetch->AddObject(true, "BUSINESSFUNC", ">Name:FuncName,ID:FuncID", filter, triggers));
    Walk(*fetch, place.catalogue.projectKey,
         {"FuncName", "FuncID", "CallSeqNo", "SetName", "SetID", "RuleID", "RuleName", "SeqNo", "Description",
          "Program", "FromRow", "ToRow", "Valid"},
         sink);
  };
  const auto raw = [&](int, RowSink& sink) {
    auto statement = place.raw.Prepare(
        fmt::format("SELECT f.Name, f.ObjectID, c.SeqNo, s.Name, s.ObjectID, r.ObjectID, r.RuleName, r.SeqNo, "
                    "r.Description, r.Program, "
                    "r.FromRow, r.ToRow, r.Valid FROM VekBusinessFunctionBelongsToProjectTbl fp "
                    "JOIN VekBUSINESSFUNCTbl f ON f.ObjectID = fp.FromID "
                    "JOIN VekBusinessFunctionTriggersRuleSetTbl t ON t.FromID = f.ObjectID "
                    "JOIN VekRULESETCALLTbl c ON c.ObjectID = t.ToID "
                    "JOIN VekRuleSetCallRefersRuleSetTbl e ON e.FromID = c.ObjectID "
                    "JOIN VekRULESETTbl s ON s.ObjectID = e.ToID "
                    "JOIN VekRuleSetBelongsToProjectTbl sp ON sp.FromID = s.ObjectID AND sp.ToID = ?1 "
                    "JOIN VekRuleSetHasRuleTbl h ON h.FromID = s.ObjectID JOIN VekRULETbl r ON r.ObjectID = h.ToID "
                    "WHERE fp.ToID = ?1 {} ORDER BY f.Name COLLATE NOCASE, c.SeqNo, r.SeqNo",
                    functions.empty() ? "" : "AND fp.FromID IN (" + functions + ")"));
    statement.Bind(1, place.catalogue.projectID);
    Walk(statement, 13, sink);
  };
  return Compare(name, rounds, ours, raw);
}

}  // namespace

void MeasureFetches(Repository& repository, RawStore& raw, const Catalogue& catalogue, Report& report) {
  const Place place{repository, raw, catalogue};
  report.AddFetch(CompareFunctions(place));
  report.AddFetch(CompareRuleSets(place));
  report.AddFetch(CompareRulesOfSet(place));
  report.AddFetch(CompareRuleByID(place));
  report.AddFetch(CompareIDList(place));
  report.AddFetch(CompareFullPath(place, "path_some", "0,1,2,3,4,5,6,7,8,9,10,11,12", mediumRounds));
  report.AddFetch(CompareFullPath(place, "path_all", "", longRounds));
}

}  // namespace qmrules::bench
