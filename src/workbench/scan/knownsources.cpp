#include "workbench/scan/knownsources.h"

#include <algorithm>

namespace qmrules::workbench {

std::vector<KnownSource> ReadKnownSources(platform::Repository& repository, std::string_view projectKey) {
  const auto fetch = repository.NewFetch();
  fetch->SetRoot(fetch->AddObject(!projectKey.empty(), "COBOL",
                                  "ID,Name,Source,Quillmark,SourceLinesNum,DataView,DataRelations,DataDepends"));
  std::vector<KnownSource> sources;
  for (fetch->Execute(projectKey); !fetch->Eof(); fetch->MoveNext()) {
    const auto& row = fetch->Row();
    KnownSource source;
    source.key = "COBOL#" + row.Item("ID").Text();
    source.name = row.Item("Name").Text();
    source.file = row.Item("Source").Text();
    source.modelFile = row.Item("Quillmark").Text();
    source.rows = row.Item("SourceLinesNum").Value().Integer();
    const bool flags[] = {row.Item("DataView").Value().Boolean(), row.Item("DataRelations").Value().Boolean(),
                          row.Item("DataDepends").Value().Boolean()};
    source.hasData = std::ranges::all_of(flags, [](bool flag) { return flag; });
    source.lacksData = std::ranges::none_of(flags, [](bool flag) { return flag; });
    sources.push_back(std::move(source));
  }
  return sources;
}

}  // namespace qmrules::workbench
