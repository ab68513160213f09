#include "catalogue/rulesetcalls.h"

#include <fmt/format.h>

#include "catalogue/gateway.h"
#include "catalogue/uniquename.h"

namespace qmrules::catalogue {

void RenameCalls(platform::Repository& repository, const ObjectKey& renamed) {
  const auto fetch = NewQuery(repository);
  const auto call = fetch->AddObject(false, kRuleSetCall, "ID");
  const auto relation =
      fetch->AddRelation(renamed.entity == kBusinessFunction ? "Triggers" : "IsRefferedBy", false, "", call);
  fetch->SetRoot(fetch->AddObject(false, renamed.entity, "", fmt::format("ID={}", renamed.id), relation));
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    const auto object = repository.object(MakeKey(kRuleSetCall, IDField(fetch->Row(), "ID")));
    object->Edit();
    object->Attrs("Name", UniqueName());
    object->Post();
  }
}

}  // namespace qmrules::catalogue
