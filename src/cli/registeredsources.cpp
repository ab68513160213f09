#include "cli/registeredsources.h"

#include "catalogue/gateway.h"

namespace qmrules::cli {

namespace {

// The kinds of program sources and of jobs.
constexpr std::int32_t kSourceKinds = 2 | 4;

bool IsSource(const platform::EntityDef& entity) {
  return (entity.KindFlags() & kSourceKinds) != 0 && entity.FindAttr("Source") != nullptr;
}

}  // namespace

std::vector<RegisteredSource> RegisteredSources(workbench::EmbeddedHost& host, const std::string& file) {
  const std::string projectKey = host.ProjectObject()->ObjectID();
  const platform::Filter filter =
      file.empty() ? platform::Filter{} : platform::Filter{"Source=" + platform::FilterValue(file)};
  std::vector<RegisteredSource> sources;
  for (const auto* entity : host.Repository().Schema().Entities()) {
    if (!IsSource(*entity)) continue;
    const auto fetch = catalogue::NewQuery(host.Repository());
    fetch->SetRoot(fetch->AddObject(true, entity->Name(), "ID,>Name,Source,SourceLinesNum,Quillmark", filter));
    for (fetch->Execute(projectKey); !fetch->Eof(); fetch->MoveNext()) {
      const auto& row = fetch->Row();
      sources.push_back({catalogue::MakeKey(entity->Name(), catalogue::IDField(row, "ID")), entity->Name(),
                         row.Item("Name").Text(), row.Item("Source").Text(),
                         row.Item("SourceLinesNum").Value().Integer(), row.Item("Quillmark").Text()});
    }
  }
  return sources;
}

}  // namespace qmrules::cli
