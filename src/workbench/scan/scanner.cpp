#include "workbench/scan/scanner.h"

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <exception>
#include <filesystem>
#include <numeric>
#include <set>
#include <system_error>
#include <utility>

#include "platform/error.h"
#include "workbench/scan/catalogueupdate.h"
#include "workbench/scan/changecheck.h"
#include "workbench/scan/knownsources.h"
#include "workbench/scan/modelfilename.h"
#include "workbench/scan/modelfolder.h"
#include "workbench/scan/paralleltasks.h"
#include "workbench/scan/scantask.h"
#include "workbench/scan/sourcetranslation.h"

namespace qmrules::workbench {

namespace {

namespace fs = std::filesystem;
using State = ScanTask::State;

bool IsWithin(std::string_view scope, std::string_view file) {
  return scope.empty() || file == scope || (file.starts_with(scope) && file.substr(scope.size()).starts_with('/'));
}

std::string WithoutFile(const std::string& text, const std::string& file) {
  const std::string prefix = file + ": ";
  return text.starts_with(prefix) ? text.substr(prefix.size()) : text;
}

void SortAndKeepOne(std::vector<std::string>& names) {
  std::ranges::sort(names);
  names.erase(std::unique(names.begin(), names.end()), names.end());
}

class Scan {
 public:
  Scan(const ScanRequest& request, platform::Repository& repository, std::string_view projectKey,
       platform::Progress& progress)
      : request_(request),
        repository_(repository),
        projectKey_(projectKey),
        progress_(progress),
        known_(ReadKnownSources(repository, projectKey)),
        folder_(request.root) {}

  ScanReport Run() {
    CollectSources();
    FindGone();
    {
      const platform::ProgressDisplay display(progress_, "Scanning sources", static_cast<int>(tasks_.size()), true);
      CheckForChanges();
      TranslateChanged();
    }
    CatalogueUpdate update(repository_, projectKey_, known_, progress_);
    report_.programs = update.Run(tasks_, gone_);
    for (const auto& task : tasks_) NoteMissingProgram(task);
    RemoveObsoleteFiles();
    report_.cancelled = cancelled_;
    return std::move(report_);
  }

 private:
  void CollectSources() {
    auto paths = request_.paths;
    if (paths.empty()) paths.push_back(request_.root);
    std::vector<std::string> files;
    std::set<std::string> named;
    for (const auto& path : paths) {
      auto list = ListSources({.root = request_.root, .path = path, .encoding = {}, .limits = request_.limits});
      if (list.isFile) named.insert(list.files.begin(), list.files.end());
      std::ranges::move(list.files, std::back_inserter(files));
      std::ranges::move(list.problems, std::back_inserter(report_.problems));
      scopes_.push_back(std::move(list.scope));
    }
    SortAndKeepOne(files);
    // A known source may have any suffix.
    const std::size_t listed = files.size();
    for (const auto& source : known_) {
      std::error_code failed;  // what cannot be looked at is not there
      const auto end = files.begin() + static_cast<std::ptrdiff_t>(listed);
      if (std::binary_search(files.begin(), end, source.file) || !IsInScope(source.file)) continue;
      if (fs::is_regular_file(request_.root + "/" + source.file, failed)) files.push_back(source.file);
    }
    SortAndKeepOne(files);
    tasks_.reserve(files.size());
    for (const auto& file : files) {
      ScanTask task;
      task.source = file;
      task.namedItself = named.contains(file);
      task.modelStem = ModelFileStem(file);
      task.modelFiles = folder_.FilesOf(task.modelStem);
      tasks_.push_back(std::move(task));
    }
  }

  bool IsInScope(std::string_view file) const {
    return std::ranges::any_of(scopes_, [&](const auto& scope) { return IsWithin(scope, file); });
  }

  void FindGone() {
    for (const auto& source : known_) {
      if (!IsInScope(source.file)) continue;
      const auto at = std::ranges::lower_bound(tasks_, source.file, {}, &ScanTask::source);
      if (at == tasks_.end() || at->source != source.file) gone_.push_back(&source);
    }
  }

  bool IsCancelled() {
    if (!cancelled_ && progress_.Cancelled()) cancelled_ = true;
    return cancelled_;
  }

  void CheckForChanges() {
    if (request_.force) return;
    ChangeCheck check(request_.sources, folder_.Path(), request_.options);
    RunInParallel({.count = tasks_.size(),
                   .threads = ThreadsFor(request_.jobs),
                   .run =
                       [&](std::size_t at, unsigned) {
                         auto& task = tasks_[at];
                         auto models = check.Check(task.source, task.modelFiles);
                         if (!models) return;
                         task.models = *std::move(models);
                         task.state = State::Current;
                       },
                   .cancelled = [this] { return IsCancelled(); }});
    if (const auto current = std::ranges::count(tasks_, State::Current, &ScanTask::state); current > 0) {
      progress_.StartStep(fmt::format("{} unchanged", current));
      progress_.FinishStep(static_cast<int>(current));
    }
  }

  // The largest first, so that no thread is left with a large one at the end.
  std::vector<std::size_t> Changed() const {
    std::vector<std::pair<std::uintmax_t, std::size_t>> bySize;
    for (std::size_t at = 0; at < tasks_.size(); ++at) {
      if (tasks_[at].state != State::Waiting) continue;
      std::error_code failed;
      const auto size = fs::file_size(request_.root + "/" + tasks_[at].source, failed);
      bySize.emplace_back(failed ? 0 : size, at);
    }
    std::ranges::stable_sort(bySize, std::greater(), &std::pair<std::uintmax_t, std::size_t>::first);
    std::vector<std::size_t> changed;
    changed.reserve(bySize.size());
    for (const auto& [size, at] : bySize) changed.push_back(at);
    return changed;
  }

  void TranslateChanged() {
    const auto changed = Changed();
    if (changed.empty() || IsCancelled()) return;
    folder_.Create();
    const unsigned threads = ThreadsFor(request_.jobs);
    std::vector<std::unique_ptr<codemodel::FrontEnd>> frontEnds(threads);
    RunInParallel({.count = changed.size(),
                   .threads = threads,
                   .run = [&](std::size_t at, unsigned thread) { Translate(tasks_[changed[at]], frontEnds[thread]); },
                   .done =
                       [&](std::size_t at) {
                         progress_.StartStep(tasks_[changed[at]].source);
                         progress_.FinishStep(1);
                       },
                   .cancelled = [this] { return IsCancelled(); }});
  }

  // On one of the threads.
  void Translate(ScanTask& task, std::unique_ptr<codemodel::FrontEnd>& frontEnd) {
    try {
      if (!frontEnd) frontEnd = request_.makeFrontEnd(request_.sources);
      task.models = TranslateSource(task.source, *frontEnd, request_.sources,
                                    {.modelFolder = folder_.Path(), .options = request_.options},
                                    [this] { return cancelled_.load(); });
      task.state = State::Translated;
    } catch (const std::exception& failure) {
      // Nobody knows what a front end holds that has thrown.
      frontEnd.reset();
      if (cancelled_) return;
      task.problem = WithoutFile(failure.what(), task.source);
      task.state = State::Failed;
    }
  }

  void NoteMissingProgram(const ScanTask& task) {
    if (!task.namedItself || !ExpectedFiles(task).contains(NoProgramFileName(task.source))) return;
    report_.problems.push_back(
        {task.source, "the file holds no program; a copybook is read with the programs that copy it"});
  }

  static std::set<std::string> ExpectedFiles(const ScanTask& task) {
    std::set<std::string> names;
    for (const auto& model : task.models) names.insert(model.fileName);
    return names;
  }

  void RemoveObsoleteFiles() {
    std::vector<std::string_view> stems;
    stems.reserve(tasks_.size());
    for (const auto& task : tasks_) {
      const bool mayHaveOld = task.state == State::Translated || task.state == State::Failed;
      if (mayHaveOld) folder_.Remove(task.modelStem, ExpectedFiles(task));
      stems.emplace_back(task.modelStem);
    }
    for (const auto* source : gone_) folder_.Remove(ModelFileStem(source->file), {});
    if (!request_.paths.empty() || cancelled_) return;
    std::ranges::sort(stems);
    std::vector<std::string_view> orphans;
    std::ranges::set_difference(folder_.Stems(), stems, std::back_inserter(orphans));
    if (orphans.empty()) return;
    // What other projects know stays, even where this scan does not look.
    for (const auto& source : ReadKnownSources(repository_, "")) {
      if (!source.IsWithdrawn()) std::erase(orphans, ModelFileStem(source.file));
    }
    for (const auto& stem : orphans) folder_.Remove(stem, {});
  }

  const ScanRequest& request_;
  platform::Repository& repository_;
  std::string projectKey_;
  platform::Progress& progress_;
  std::vector<KnownSource> known_;
  ModelFolder folder_;
  std::vector<std::string> scopes_;  // relative to the root; "" for all
  std::vector<ScanTask> tasks_;      // by source
  std::vector<const KnownSource*> gone_;
  std::atomic<bool> cancelled_ = false;
  ScanReport report_;
};

}  // namespace

std::size_t ScanReport::Count(ScannedModel::Outcome outcome) const {
  return static_cast<std::size_t>(std::ranges::count(programs, outcome, &ScannedModel::outcome));
}

ScanReport ScanPrograms(const ScanRequest& request, platform::Repository& repository, std::string_view projectKey,
                        platform::Progress& progress) {
  return Scan(request, repository, projectKey, progress).Run();
}

}  // namespace qmrules::workbench
