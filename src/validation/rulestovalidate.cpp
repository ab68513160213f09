#include "validation/rulestovalidate.h"

#include "catalogue/gateway.h"

namespace qmrules::validation {

std::vector<RuleToValidate> ReadRulesToValidate(platform::Repository& repository,
                                                const platform::KeyedCollection<std::string>& ids, FileGroups& files) {
  auto lists = catalogue::CopyCollection(ids);
  catalogue::PackIDs(lists);
  std::vector<RuleToValidate> rules;
  rules.reserve(ids.Count());
  for (const std::string& list : lists) {
    const auto fetch = catalogue::NewQuery(repository);
    fetch->SetRoot(fetch->AddObject(false, catalogue::kRule, "ID,FileName,FromRow,ToRow", "ID in " + list));
    for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
      const auto& row = fetch->Row();
      const auto number = [&](const char* name) { return static_cast<std::int32_t>(row.Item(name).Value().Integer()); };
      rules.push_back({catalogue::IDField(row, "ID"),
                       files.GroupOf(row.Item("FileName").Text()),
                       {number("FromRow"), number("ToRow")}});
    }
  }
  return rules;
}

std::unordered_map<std::int32_t, RuleTexts> ReadRuleTexts(platform::Repository& repository,
                                                          const std::vector<std::int32_t>& ids) {
  std::unordered_map<std::int32_t, RuleTexts> texts;
  texts.reserve(ids.size());
  const auto read = [&](const catalogue::IDList& list) {
    const auto fetch = catalogue::NewQuery(repository);
    fetch->SetRoot(fetch->AddObject(false, catalogue::kRule, "ID,RuleName,SourceText", "ID in " + list.Text()));
    for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
      const auto& row = fetch->Row();
      texts.emplace(catalogue::IDField(row, "ID"),
                    RuleTexts{row.Item("RuleName").Text(), row.Item("SourceText").Text()});
    }
  };
  catalogue::IDList list;
  for (const std::int32_t id : ids) {
    list.Add(id);
    if (!list.IsFull()) continue;
    read(list);
    list.Clear();
  }
  if (!list.Empty()) read(list);
  return texts;
}

}  // namespace qmrules::validation
