#include "catalogue/registeredsources.h"

#include "catalogue/gateway.h"

namespace qmrules::catalogue {

namespace {

// The kinds of program sources and of jobs.
constexpr std::int32_t kSourceKinds = 2 | 4;

bool IsSource(const platform::EntityDef& entity) {
  return (entity.KindFlags() & kSourceKinds) != 0 && entity.FindAttr("Source") != nullptr;
}

}  // namespace

std::vector<RegisteredSource> RegisteredSources(platform::FrontEnd& FE, const std::string& file) {
  const std::string projectKey = FE.ProjectObject()->ObjectID();
  const platform::Filter filter =
      file.empty() ? platform::Filter{} : platform::Filter{"Source=" + platform::FilterValue(file)};
  std::vector<RegisteredSource> sources;
  for (const auto* entity : FE.Repository().Schema().Entities()) {
    if (!IsSource(*entity)) continue;
    const auto fetch = NewQuery(FE.Repository());
    fetch->SetRoot(fetch->AddObject(true, entity->Name(), "ID,>Name,Source,SourceLinesNum,Quillmark", filter));
    for (fetch->Execute(projectKey); !fetch->Eof(); fetch->MoveNext()) {
      const auto& row = fetch->Row();
      sources.push_back({MakeKey(entity->Name(), IDField(row, "ID")), entity->Name(), row.Item("Name").Text(),
                         row.Item("Source").Text(), row.Item("SourceLinesNum").Value().Integer(),
                         row.Item("Quillmark").Text()});
    }
  }
  return sources;
}

}  // namespace qmrules::catalogue
