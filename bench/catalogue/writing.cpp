#include "catalogue/writing.h"

#include <fmt/format.h>

#include <filesystem>
#include <stdexcept>

#include "catalogue/catalogue.h"
#include "catalogue/rawstore.h"
#include "catalogue/walk.h"
#include "platform/objectkey.h"

namespace qmrules::bench {

namespace {

using platform::MakeKey;

constexpr int rounds = 15;
constexpr int functions = 4;
constexpr double limit = 3.0;

void RemoveStore(const std::string& path) {
  for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(path + suffix);
}

// Inserts whole rows with statements that are prepared once.
class RawWriter {
 public:
  RawWriter(RawStore& store, int projectID) : store_(store), projectID_(projectID) {}

  void Write(const FunctionContent& content) {
    BindObject(function_, content.name);
    function_.Bind(4, content.description);
    function_.Bind(5, content.businessArea);
    const int id = Insert(function_);
    Link(functionInProject_, id, projectID_);
    for (const auto& set : content.sets) Write(id, set);
  }

 private:
  void Write(int functionID, const RuleSetContent& content) {
    BindObject(set_, content.name);
    set_.Bind(4, content.description);
    const int id = Insert(set_);
    Link(setInProject_, id, projectID_);
    BindObject(call_, content.callName);
    const std::string functionKey = MakeKey("BUSINESSFUNC", functionID);
    call_.Bind(4, content.seqNo);
    call_.Bind(5, functionKey);
    const int call = Insert(call_);
    Link(refers_, call, id);
    Link(triggers_, functionID, call);
    for (const auto& rule : content.rules) Write(id, rule);
  }

  void Write(int setID, const RuleContent& content) {
    BindObject(rule_, content.name);
    const std::string setKey = MakeKey("RULESET", setID);
    rule_.Bind(4, setKey);
    rule_.Bind(5, content.ruleName);
    rule_.Bind(6, content.seqNo);
    rule_.Bind(7, content.description);
    rule_.Bind(8, content.businessDescription);
    rule_.Bind(9, kModel);
    rule_.Bind(10, content.program);
    rule_.Bind(11, content.fileName);
    rule_.Bind(12, content.fromRow);
    rule_.Bind(13, content.toRow);
    rule_.Bind(14, content.sourceText);
    rule_.Bind(15, content.valid);
    rule_.Bind(16, now_);
    const int id = Insert(rule_);
    Link(setHasRule_, setID, id);
    for (const auto& io : content.io) Write(id, io);
  }

  void Write(int ruleID, const IOContent& content) {
    BindObject(io_, content.name);
    const std::string ruleKey = MakeKey("RULE", ruleID);
    io_.Bind(4, ruleKey);
    io_.Bind(5, content.ioName);
    io_.Bind(6, content.kind);
    io_.Bind(7, content.businessName);
    io_.Bind(8, content.description);
    io_.Bind(9, content.qmid);
    Link(ruleHasIO_, ruleID, Insert(io_));
  }

  // What every object has: its name, the moment and the user, the last two of them twice.
  void BindObject(RawStatement& statement, const std::string& name) {
    statement.Bind(1, name);
    statement.Bind(2, now_);
    statement.Bind(3, kUser);
  }

  int Insert(RawStatement& statement) {
    statement.Run();
    return static_cast<int>(store_.LastID());
  }

  static void Link(RawStatement& statement, int from, int to) {
    statement.Bind(1, from);
    statement.Bind(2, to);
    statement.Run();
  }

  RawStatement PrepareObject(const std::string& entity, const std::string& columns, int first, int last) {
    std::string values;
    for (int parameter = first; parameter <= last; ++parameter) values += fmt::format(", ?{}", parameter);
    return store_.Prepare(fmt::format(
        "INSERT INTO Vek{}Tbl (Name, Created, CreatedBy, Modified, ModifiedBy, {}) VALUES (?1, ?2, ?3, ?2, ?3{})",
        entity, columns, values));
  }

  RawStatement PrepareLink(const std::string& relation) {
    return store_.Prepare(fmt::format("INSERT INTO Vek{}Tbl (FromID, ToID) VALUES (?1, ?2)", relation));
  }

  RawStore& store_;
  int projectID_;
  std::string now_ = platform::FormatTimestamp(BenchClock().Now());
  RawStatement function_ = PrepareObject("BUSINESSFUNC", "Description, BusinessArea", 4, 5);
  RawStatement set_ = PrepareObject("RULESET", "Description", 4, 4);
  RawStatement call_ = PrepareObject("RULESETCALL", "SeqNo, SID", 4, 5);
  RawStatement rule_ =
      PrepareObject("RULE",
                    "SID, RuleName, SeqNo, Description, BusinessDescription, Model, Program, FileName, "
                    "FromRow, ToRow, SourceText, Valid, Validated",
                    4, 16);
  RawStatement io_ = PrepareObject("RULEIO", "SID, IOName, Kind, BusinessName, Description, QMID", 4, 9);
  RawStatement functionInProject_ = PrepareLink("BusinessFunctionBelongsToProject");
  RawStatement setInProject_ = PrepareLink("RuleSetBelongsToProject");
  RawStatement refers_ = PrepareLink("RuleSetCallRefersRuleSet");
  RawStatement triggers_ = PrepareLink("BusinessFunctionTriggersRuleSet");
  RawStatement setHasRule_ = PrepareLink("RuleSetHasRule");
  RawStatement ruleHasIO_ = PrepareLink("RuleHasRuleIO");
};

double WriteThroughRepository(const std::string& path, const std::vector<FunctionContent>& contents) {
  RemoveStore(path);
  const auto store = OpenRepository(path);
  const std::string projectKey = store->NewObject("PROJECT", "Benchmark")->Key();
  const Stopwatch stopwatch;
  const auto transaction = store->BeginTransaction();
  const auto command = store->BeginCommand("Write");
  for (const auto& content : contents) WriteFunction(*store, projectKey, content);
  transaction->Commit();
  return stopwatch.Seconds();
}

double WriteByHand(const std::string& path, const std::vector<FunctionContent>& contents) {
  RemoveStore(path);
  const std::string projectKey = OpenRepository(path)->NewObject("PROJECT", "Benchmark")->Key();
  RawStore store(path);
  const Stopwatch stopwatch;
  store.Execute("BEGIN IMMEDIATE");
  RawWriter writer(store, platform::SplitKey(projectKey).id);
  for (const auto& content : contents) writer.Write(content);
  store.Execute("COMMIT");
  return stopwatch.Seconds();
}

// Every row of every table but the journal's.
RowSink SumOf(const std::string& path) {
  RowSink sink(RowSink::Mode::Checking);
  RawStore store(path);
  auto tables = store.Prepare(
      "SELECT name, (SELECT COUNT(*) FROM pragma_table_info(name)) FROM sqlite_master "
      "WHERE type = 'table' AND name LIKE 'Vek%' AND name NOT LIKE 'VekJournal%' ORDER BY name");
  while (tables.Step()) {
    auto rows = store.Prepare(fmt::format("SELECT * FROM \"{}\" ORDER BY 1, 2", tables.Text(0)));
    Walk(rows, static_cast<int>(tables.Integer(1)), sink);
  }
  return sink;
}

}  // namespace

void MeasureWriting(const std::string& folder, Report& report) {
  std::vector<FunctionContent> contents;
  for (int number = 0; number < functions; ++number) contents.push_back(MakeFunction(number));
  const std::string ourPath = folder + "/writing-ours.db";
  const std::string rawPath = folder + "/writing-raw.db";
  std::vector<double> ours;
  std::vector<double> raw;
  for (int round = 0; round < rounds; ++round) {
    ours.push_back(WriteThroughRepository(ourPath, contents));
    raw.push_back(WriteByHand(rawPath, contents));
  }
  const auto sum = SumOf(ourPath);
  if (!(sum == SumOf(rawPath))) throw std::runtime_error("write: the two sides have written different rows.");
  RemoveStore(ourPath);
  RemoveStore(rawPath);
  const Comparison comparison{"write", sum.Rows(), rounds, Median(std::move(ours)), Median(std::move(raw))};
  report.Print(comparison);
  const double objects = functions * kObjectsPerFunction;
  fmt::print("{:<22} {:.0f} objects/s through the repository, {:.0f} by hand\n", "", objects / comparison.ours,
             objects / comparison.raw);
  report.AddBar(comparison.name, comparison.Ratio(), limit);
}

}  // namespace qmrules::bench
