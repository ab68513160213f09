#include "catalogue/catalogue.h"

#include <fmt/format.h>

#include <cstdio>
#include <filesystem>

#include "catalogue/rawstore.h"
#include "platform/objectkey.h"
#include "stopwatch.h"
#include "workbench/repository/sqliteconnection.h"
#include "workbench/repository/store.h"

namespace qmrules::bench {

namespace {

namespace repository = workbench::repository;
using platform::Object;
using platform::Repository;

// Changes with the content, so that a file of an older content is not taken.
constexpr int contentVersion = 2;

void RemoveStore(const std::string& path) {
  for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(path + suffix);
}

std::string TablesOf(const std::string& path) {
  RawStore store(path);
  std::string tables;
  auto statement = store.Prepare("SELECT sql FROM sqlite_master WHERE sql IS NOT NULL ORDER BY name");
  while (statement.Step()) tables += statement.Text(0) + ";\n";
  return tables;
}

// True when the file holds the whole catalogue in the form that a store made today has.
bool IsUsable(const std::string& path, const std::string& folder) {
  if (!std::filesystem::exists(path)) return false;
  const std::string fresh = folder + "/empty.db";
  RemoveStore(fresh);
  OpenRepository(fresh).reset();
  const bool isSame = TablesOf(fresh) == TablesOf(path);
  RemoveStore(fresh);
  if (!isSame) fmt::print("{} has other tables than today's store; it is made anew.\n", path);
  return isSame;
}

// Nothing is lost that a second run would not make again, so the generator does not wait for the disk.
std::unique_ptr<Repository> OpenForGeneration(const std::string& path) {
  const auto connect = [](const std::string& name) {
    return repository::OpenSqliteConnection(name, repository::Durability::Relaxed);
  };
  return repository::OpenStore({path, "", kUser, connect}, BenchClock());
}

void WritePrograms(Repository& store, std::string_view projectKey, int programs) {
  const auto transaction = store.BeginTransaction();
  const auto command = store.BeginCommand("Generate");
  for (int number = 0; number < programs; ++number) {
    const ProgramContent content = MakeProgram(number);
    const auto program = store.NewObject(kModel, content.name);
    program->Edit();
    program->Attrs("Source", content.fileName);
    program->Post();
    program->Link("BelongsTo", projectKey);
  }
  transaction->Commit();
}

void Generate(const Catalogue& catalogue) {
  const std::string& path = catalogue.path;
  const int functions = catalogue.functions;
  const std::string unfinished = path + ".part";
  RemoveStore(unfinished);
  const Stopwatch stopwatch;
  {
    const auto store = OpenForGeneration(unfinished);
    const std::string projectKey = store->NewObject("PROJECT", kProject)->Key();
    WritePrograms(*store, projectKey, catalogue.Programs());
    for (int number = 0; number < functions; ++number) {
      const auto transaction = store->BeginTransaction();
      const auto command = store->BeginCommand("Generate");
      WriteFunction(*store, projectKey, MakeFunction(number));
      transaction->Commit();
    }
  }
  std::filesystem::rename(unfinished, path);
  const double seconds = stopwatch.Seconds();
  const double objects = static_cast<double>(functions) * kObjectsPerFunction + catalogue.Programs();
  fmt::print("Generated {} rules ({:.0f} objects) in {:.1f} s, {:.0f} objects/s, {:.1f} GiB.\n",
             functions * kRulesPerFunction, objects, seconds, objects / seconds,
             static_cast<double>(std::filesystem::file_size(path)) / (1024.0 * 1024.0 * 1024.0));
}

void WriteIO(Repository& store, Object& rule, const IOContent& content) {
  const auto io = store.NewObject("RULEIO", content.name);
  io->Edit();
  io->Attrs("SID", rule.Key());
  io->Attrs("IOName", content.ioName);
  io->Attrs("Kind", content.kind);
  io->Attrs("BusinessName", content.businessName);
  io->Attrs("Description", content.description);
  io->Attrs("QMID", content.qmid);
  io->Post();
  rule.Link("Has", io->Key());
}

void WriteRule(Repository& store, Object& set, const RuleContent& content) {
  const auto rule = store.NewObject("RULE", content.name);
  rule->Edit();
  rule->Attrs("SID", set.Key());
  rule->Attrs("RuleName", content.ruleName);
  rule->Attrs("SeqNo", content.seqNo);
  rule->Attrs("Description", content.description);
  rule->Attrs("BusinessDescription", content.businessDescription);
  rule->Attrs("Model", kModel);
  rule->Attrs("Program", content.program);
  rule->Attrs("FileName", content.fileName);
  rule->Attrs("FromRow", content.fromRow);
  rule->Attrs("ToRow", content.toRow);
  rule->Attrs("SourceText", content.sourceText);
  rule->Attrs("Valid", content.valid);
  rule->Attrs("Validated", BenchClock().Now());
  rule->Post();
  set.Link("Has", rule->Key());
  for (const auto& io : content.io) WriteIO(store, *rule, io);
}

void WriteSet(Repository& store, std::string_view projectKey, Object& function, const RuleSetContent& content) {
  const auto set = store.NewObject("RULESET", content.name);
  set->Edit();
  set->Attrs("Description", content.description);
  set->Post();
  set->Link("BelongsTo", projectKey);
  const auto call = store.NewObject("RULESETCALL", content.callName);
  call->Edit();
  call->Attrs("SeqNo", content.seqNo);
  call->Attrs("SID", function.Key());
  call->Post();
  call->Link("Refers", set->Key());
  function.Link("Triggers", call->Key());
  for (const auto& rule : content.rules) WriteRule(store, *set, rule);
}

}  // namespace

platform::FixedClock& BenchClock() {
  static platform::FixedClock clock(*platform::ParseTimestamp("2026-01-31 12:00:00"));
  return clock;
}

std::unique_ptr<Repository> OpenRepository(const std::string& path) {
  return repository::OpenStore({path, "", kUser, {}}, BenchClock());
}

void WriteFunction(Repository& store, std::string_view projectKey, const FunctionContent& content) {
  const auto function = store.NewObject("BUSINESSFUNC", content.name);
  function->Edit();
  function->Attrs("Description", content.description);
  function->Attrs("BusinessArea", content.businessArea);
  function->Post();
  function->Link("BelongsTo", projectKey);
  for (const auto& set : content.sets) WriteSet(store, projectKey, *function, set);
}

Catalogue OpenOrGenerate(const std::string& folder, int functions) {
  Catalogue catalogue;
  catalogue.functions = functions;
  catalogue.path = fmt::format("{}/catalogue-{}-v{}.db", folder, catalogue.Rules(), contentVersion);
  if (IsUsable(catalogue.path, folder)) {
    fmt::print("Using {}.\n", catalogue.path);
  } else {
    RemoveStore(catalogue.path);
    fmt::print("Generating {} rules.\n", catalogue.Rules());
    std::fflush(stdout);
    Generate(catalogue);
  }
  const auto store = OpenRepository(catalogue.path);
  catalogue.projectKey = store->FindObject("PROJECT", kProject)->Key();
  catalogue.projectID = platform::SplitKey(catalogue.projectKey).id;
  return catalogue;
}

}  // namespace qmrules::bench
