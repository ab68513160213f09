#include "workbench/scan/catalogueupdate.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <utility>

#include "platform/error.h"
#include "workbench/scan/modelfilename.h"
#include "workbench/sources/sourceregistration.h"

namespace qmrules::workbench {

namespace {

using Outcome = ScannedModel::Outcome;

// As Quillmark holds it.
std::string StoredName(const KnownModel& model) {
  return fmt::format("{}/{}", kModelFolder, model.fileName);
}

bool HoldsNoProgram(const ScanTask& task) {
  return task.models.size() == 1 && NotesNoProgram(task.models.front().fileName);
}

bool IsStoredAs(const KnownModel& model, std::string_view modelFile) {
  return modelFile.size() == kModelFolder.size() + 1 + model.fileName.size() && modelFile.ends_with(model.fileName) &&
         modelFile.starts_with(kModelFolder) && modelFile[kModelFolder.size()] == '/';
}

bool Fits(const KnownSource& row, const KnownModel& model) {
  return row.hasData && row.rows == model.rows && IsStoredAs(model, row.modelFile);
}

ScannedModel OutcomeOf(const KnownSource& row, Outcome outcome) {
  ScannedModel told;
  told.outcome = outcome;
  told.key = row.key;
  told.name = row.name;
  told.file = row.file;
  return told;
}

void TakeCounts(ScannedModel& told, const KnownModel& model) {
  told.rows = model.rows;
  told.gaps = model.gaps;
  told.warnings = model.warnings;
}

}  // namespace

CatalogueUpdate::CatalogueUpdate(platform::Repository& repository, std::string_view projectKey,
                                 std::span<const KnownSource> known, platform::Progress& progress)
    : repository_(repository), projectKey_(projectKey), progress_(progress) {
  for (const auto& source : known) known_[source.file].push_back(&source);
}

CatalogueUpdate::Rows CatalogueUpdate::RowsOf(std::string_view file) const {
  const auto found = known_.find(file);
  return found == known_.end() ? Rows() : found->second;
}

bool CatalogueUpdate::IsInLine(const ScanTask& task) const {
  if (task.state != ScanTask::State::Current) return false;
  std::size_t withModel = 0;
  for (const auto* row : RowsOf(task.source)) {
    if (row->IsWithdrawn()) continue;
    if (std::ranges::none_of(task.models, [&](const auto& model) { return Fits(*row, model); })) return false;
    ++withModel;
  }
  return withModel == (HoldsNoProgram(task) ? 0 : task.models.size());
}

void CatalogueUpdate::TellUnchanged(const ScanTask& task) {
  for (const auto* row : RowsOf(task.source)) {
    auto told = OutcomeOf(*row, row->IsWithdrawn() ? Outcome::Missing : Outcome::Unchanged);
    for (const auto& model : task.models) {
      if (Fits(*row, model)) TakeCounts(told, model);
    }
    outcomes_.push_back(std::move(told));
  }
}

void CatalogueUpdate::Withdraw(const KnownSource& source) {
  if (!source.IsWithdrawn()) WithdrawModel(repository_, source.key);
}

// Gives the key of the object; "" where the program cannot be made known.
std::string CatalogueUpdate::WriteProgram(const ScanTask& task, const KnownModel& model) {
  ScannedModel told;
  told.name = model.program;
  told.file = task.source;
  TakeCounts(told, model);
  ScannedProgram source;
  source.programId = model.program;
  source.file = task.source;
  source.lines = model.rows;
  source.onlyOneOfFile = task.models.size() == 1;
  source.modelFile = StoredName(model);
  try {
    const auto done = RegisterSource(repository_, projectKey_, source);
    told.key = done.key;
    told.name = done.name;
    told.outcome = done.outcome == Registration::Outcome::Added ? Outcome::Added : Outcome::Updated;
    if (done.outcome == Registration::Outcome::Unchanged && task.state == ScanTask::State::Current) {
      told.outcome = Outcome::Unchanged;
    }
  } catch (const RegistrationRefused& refusal) {
    told.outcome = Outcome::Failed;
    told.problem = refusal.what();
  }
  outcomes_.push_back(told);
  return told.key;
}

void CatalogueUpdate::WriteFailed(const ScanTask& task) {
  auto rows = RowsOf(task.source);
  for (const auto* row : rows) {
    Withdraw(*row);
    auto told = OutcomeOf(*row, Outcome::Failed);
    told.problem = task.problem;
    outcomes_.push_back(std::move(told));
  }
  if (!rows.empty()) return;
  ScannedModel told;
  told.outcome = Outcome::Failed;
  told.file = task.source;
  told.problem = task.problem;
  outcomes_.push_back(std::move(told));
}

void CatalogueUpdate::Write(const ScanTask& task) {
  if (task.state == ScanTask::State::Failed) {
    WriteFailed(task);
    return;
  }
  std::set<std::string> taken;
  if (!HoldsNoProgram(task)) {
    for (const auto& model : task.models) taken.insert(WriteProgram(task, model));
  }
  for (const auto* row : RowsOf(task.source)) {
    if (taken.contains(row->key)) continue;
    Withdraw(*row);
    outcomes_.push_back(OutcomeOf(*row, Outcome::Missing));
  }
}

void CatalogueUpdate::WriteAll(std::span<const ScanTask* const> tasks, std::span<const KnownSource* const> gone) {
  const platform::ProgressDisplay display(progress_, "Updating the catalogue",
                                          static_cast<int>(tasks.size() + gone.size()), false);
  const auto command = repository_.BeginCommand("scan");
  const auto transaction = repository_.BeginTransaction();
  for (const auto* task : tasks) {
    progress_.StartStep(task->source);
    Write(*task);
    progress_.FinishStep(1);
  }
  for (const auto* source : gone) {
    progress_.StartStep(source->file);
    Withdraw(*source);
    progress_.FinishStep(1);
  }
  transaction->Commit();
}

std::vector<ScannedModel> CatalogueUpdate::Run(std::span<const ScanTask> tasks,
                                               std::span<const KnownSource* const> gone) {
  std::vector<const ScanTask*> toWrite;
  for (const auto& task : tasks) {
    if (task.state == ScanTask::State::Waiting) continue;
    if (IsInLine(task)) {
      TellUnchanged(task);
    } else {
      toWrite.push_back(&task);
    }
  }
  const bool withdraws = !std::ranges::all_of(gone, &KnownSource::IsWithdrawn);
  if (!toWrite.empty() || withdraws) WriteAll(toWrite, gone);
  for (const auto* source : gone) outcomes_.push_back(OutcomeOf(*source, Outcome::Missing));
  std::ranges::stable_sort(outcomes_, {}, &ScannedModel::file);
  return std::move(outcomes_);
}

}  // namespace qmrules::workbench
