#include "catalogue/search.h"

#include <fmt/format.h>

#include "catalogue/walk.h"
#include "platform/xml.h"

namespace qmrules::bench {

namespace {

constexpr int rounds = 5;
constexpr double limitSeconds = 1.5;

constexpr const char* ruleCondition = R"(<attr name="RuleName" op="like" arg="*overdraft*"/>)";
constexpr const char* ioCondition =
    R"(<related><reltype><rel name="Has"/></reltype><object><objecttype><type name="RULEIO"/></objecttype>)"
    R"(<cond><attr name="IOName" op="like" arg="ws-collat*"/></cond></object></related>)";

constexpr const char* rawRuleCondition = "r.RuleName LIKE '%overdraft%'";
constexpr const char* rawIOCondition =
    "EXISTS (SELECT 1 FROM VekRuleHasRuleIOTbl x JOIN VekRULEIOTbl o ON o.ObjectID = x.ToID "
    "WHERE x.FromID = r.ObjectID AND o.IOName LIKE 'ws-collat%')";

struct Condition {
  std::string name;
  std::string document;  // inside `cond`
  std::string raw;
};

Comparison CompareSearch(platform::Repository& repository, RawStore& rawStore, const Catalogue& catalogue,
                         const Condition& condition) {
  platform::XmlDocument document;
  document.loadXML(
      fmt::format("<object><objecttype><type name=\"RULE\"/></objecttype><fetchid as=\"RuleID\"/>"
                  "<fetchattr name=\"SeqNo\" as=\"RuleSeqNo\" order=\"asc\"/><cond>{}</cond></object>",
                  condition.document));
  const auto ours = [&](int, RowSink& sink) {
    const auto fetch = repository.NewFetch();
    const auto rule = fetch->AddObject(false, "RULE", "", document.documentElement());
    const auto has = fetch->AddRelation("Has", false, "", rule);
    const auto set = fetch->AddObject(true, "RULESET", "ID:SetID", {}, has);
    const auto refers = fetch->AddRelation("Refers", false, "", set);
    const auto call = fetch->AddObject(false, "RULESETCALL", ">SeqNo:CallSeqNo", {}, refers);
    const auto triggers = fetch->AddRelation("Triggers", false, "", call);
    fetch->SetRoot(fetch->AddObject(true, "BUSINESSFUNC", "ID:FuncID,>Name", {}, triggers));
    Walk(*fetch, catalogue.projectKey, {"RuleID", "RuleSeqNo", "SetID", "CallSeqNo", "FuncID", "Name"}, sink);
  };
  const auto raw = [&](int, RowSink& sink) {
    auto statement = rawStore.Prepare(
        fmt::format("SELECT r.ObjectID, r.SeqNo, h.FromID, c.SeqNo, f.ObjectID, f.Name FROM VekRULETbl r "
                    "CROSS JOIN VekRuleSetHasRuleTbl h ON h.ToID = r.ObjectID "
                    "CROSS JOIN VekRuleSetBelongsToProjectTbl sp ON sp.FromID = h.FromID AND sp.ToID = ?1 "
                    "CROSS JOIN VekRuleSetCallRefersRuleSetTbl e ON e.ToID = h.FromID "
                    "CROSS JOIN VekRULESETCALLTbl c ON c.ObjectID = e.FromID "
                    "CROSS JOIN VekBusinessFunctionTriggersRuleSetTbl t ON t.ToID = c.ObjectID "
                    "CROSS JOIN VekBusinessFunctionBelongsToProjectTbl fp ON fp.FromID = t.FromID AND fp.ToID = ?1 "
                    "CROSS JOIN VekBUSINESSFUNCTbl f ON f.ObjectID = t.FromID "
                    "WHERE {} ORDER BY f.Name COLLATE NOCASE, c.SeqNo, r.SeqNo",
                    condition.raw));
    statement.Bind(1, catalogue.projectID);
    Walk(statement, 6, sink);
  };
  return Compare(condition.name, rounds, ours, raw);
}

}  // namespace

void MeasureSearch(platform::Repository& repository, RawStore& raw, const Catalogue& catalogue, Report& report) {
  const std::string both = fmt::format("<and>{}{}</and>", ruleCondition, ioCondition);
  for (const auto& condition :
       {Condition{"search_rule_name", ruleCondition, rawRuleCondition},
        Condition{"search_io_name", ioCondition, rawIOCondition},
        Condition{"search_both", both, fmt::format("{} AND {}", rawRuleCondition, rawIOCondition)}}) {
    const auto comparison = CompareSearch(repository, raw, catalogue, condition);
    report.Print(comparison);
    report.AddBar(condition.name + "_seconds", comparison.ours, limitSeconds);
  }
}

}  // namespace qmrules::bench
