#include "desktop/window/workspacefixture.h"

#include "platform/progress.h"
#include "workbench/host/workspacescan.h"
#include "workbench/repository/sqliteconnection.h"

namespace qmrules::test {

namespace {

std::string ProgramText(const std::string& name) {
  return "       IDENTIFICATION DIVISION.\n"
         "       PROGRAM-ID. " +
         name +
         ".\n"
         "       DATA DIVISION.\n"
         "       WORKING-STORAGE SECTION.\n"
         "       01 WS-FEE PIC 9(4).\n"
         "       PROCEDURE DIVISION.\n"
         "           ADD 1 TO WS-FEE.\n"
         "           STOP RUN.\n";
}

}  // namespace

WorkspaceFixture::WorkspaceFixture() : clock_(*platform::ParseTimestamp("2026-01-31 12:00:00")) {
  folder_.Write("cobol/payfee.cbl", ProgramText("PAYFEE"));
  folder_.Write("cobol/payrate.cbl", ProgramText("PAYRATE"));
  workbench::EmbeddedHost::CreateWorkspace({.folder = Root(), .projectName = "Demo", .sourceEncoding = ""}, Services());
  Scan();
  FillCatalogue();
}

workbench::HostServices WorkspaceFixture::Services() const {
  return {.clock = clock_,
          .userName = "analyst",
          .settingsPath = folder_.File("home/settings.json"),
          .registryPath = folder_.File("home/registry.json"),
          .connect = [](const std::string& path) {
            return workbench::repository::OpenSqliteConnection(path, workbench::repository::Durability::Relaxed);
          }};
}

void WorkspaceFixture::Scan() {
  workbench::EmbeddedHost host(Root(), Services());
  platform::SilentProgress progress;
  ScanWorkspace(host, {}, progress);
}

void WorkspaceFixture::FillCatalogue() {
  workbench::EmbeddedHost host(Root(), Services());
  auto& repository = host.Repository();
  const std::string project = host.ProjectObject()->Key();
  const auto make = [&](const char* entity, const char* name,
                        const std::map<std::string, platform::Value>& attributes) {
    const auto object = repository.NewObject(entity, name);
    object->Edit();
    for (const auto& [attribute, value] : attributes) object->Attrs(attribute, value);
    object->Post();
    return object->Key();
  };
  const auto billing = make("BUSINESSFUNC", "Billing", {});
  const auto claims = make("BUSINESSFUNC", "Claims", {});
  const auto fees = make("RULESET", "Late fees", {});
  const auto call = make("RULESETCALL", "call1", {{"SeqNo", 1}});
  const auto fee = make("RULE", "rule1",
                        {{"RuleName", "Fee"},
                         {"SeqNo", 1},
                         {"Model", "COBOL"},
                         {"Program", "PAYFEE"},
                         {"FileName", "cobol/payfee.cbl"},
                         {"FromRow", 6},
                         {"ToRow", 7},
                         {"Valid", "Valid"},
                         {"Validated", *platform::ParseTimestamp("2100-01-01 00:00:00")}});
  const auto grace = make("RULE", "rule2", {{"RuleName", "Grace period"}, {"SeqNo", 2}});
  for (const auto& key : {billing, claims, fees}) repository.object(key)->Link("BelongsTo", project);
  repository.object(billing)->Link("Triggers", call);
  repository.object(call)->Link("Refers", fees);
  for (const auto& key : {fee, grace}) repository.object(fees)->Link("Has", key);
}

}  // namespace qmrules::test
