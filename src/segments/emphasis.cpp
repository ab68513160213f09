#include "segments/emphasis.h"

#include <fmt/format.h>

#include "catalogue/gateway.h"
#include "segments/sourceselection.h"

namespace qmrules::segments {

namespace {

// The program's name; "" when the repository does not have it.
std::string NameOfProgram(platform::Repository& repository, const platform::ObjectKey& program) {
  const auto fetch = catalogue::NewQuery(repository);
  fetch->SetRoot(fetch->AddObject(false, program.entity, "Name", fmt::format("ID={}", program.id)));
  return fetch->Execute("") ? std::string() : fetch->Row().Item("Name").Text();
}

}  // namespace

void Emphasis::Toggle() {
  SetOn(!IsOn());
}

void Emphasis::Refresh() {
  SetOn(IsOn());
}

void Emphasis::SetOn(bool on) {
  faces_.SetChecked("Emphasize", on);
  const auto file = services_.QMWS.CurFile();
  if (!file) return;
  services_.QMWS.MethodCall(kSourceViewer, "CheckSegment", "");
  if (on) MarkSegments(file->FileName);
}

void Emphasis::MarkSegments(const std::string& fileName) {
  const platform::BusyCursor busy(services_.pointer);
  const std::string key = services_.QMWS.ObjectID();
  if (key.empty()) return;
  const platform::ObjectKey program = catalogue::SplitKey(key);
  const std::string name = NameOfProgram(services_.Repository(), program);
  if (name.empty()) return;
  const auto fetch = catalogue::NewQuery(services_.Repository());
  fetch->SetRoot(fetch->AddObject(false, catalogue::kRule, "FromRow,ToRow",
                                  fmt::format("(Model={}&Program={}&FileName={})", program.entity,
                                              platform::FilterValue(name), platform::FilterValue(fileName))));
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    const auto& row = fetch->Row();
    services_.QMWS.MethodCall(kSourceViewer, "CheckSegment",
                              fmt::format("{}:{}:{}", key, row.Item("FromRow").Text(), row.Item("ToRow").Text()));
  }
}

}  // namespace qmrules::segments
