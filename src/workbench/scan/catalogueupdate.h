#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/progress.h"
#include "platform/repository.h"
#include "workbench/scan/knownsources.h"
#include "workbench/scan/scanner.h"
#include "workbench/scan/scantask.h"

namespace qmrules::workbench {

// Brings the catalogue into line with what a scan has found, and tells what became of each program.
class CatalogueUpdate {
 public:
  // `known`: the sources of the project. They, the repository and the progress display outlive the object.
  CatalogueUpdate(platform::Repository& repository, std::string_view projectKey, std::span<const KnownSource> known,
                  platform::Progress& progress);

  // The outcome of each program of the tasks that were reached, and of the known sources that are gone. What is in line
  // costs no write, and when all is, nothing is written. Throws platform::Error when the catalogue cannot be written;
  // it is then as before. What is written is shown as work of its own, which cannot be cancelled.
  std::vector<ScannedModel> Run(std::span<const ScanTask> tasks, std::span<const KnownSource* const> gone);

 private:
  using Rows = std::vector<const KnownSource*>;

  Rows RowsOf(std::string_view file) const;
  bool IsInLine(const ScanTask& task) const;
  void TellUnchanged(const ScanTask& task);
  void WriteAll(std::span<const ScanTask* const> tasks, std::span<const KnownSource* const> gone);
  void Write(const ScanTask& task);
  void WriteFailed(const ScanTask& task);
  std::string WriteProgram(const ScanTask& task, const KnownModel& model);
  void Withdraw(const KnownSource& source);

  platform::Repository& repository_;
  std::string projectKey_;
  platform::Progress& progress_;
  std::map<std::string, Rows, std::less<>> known_;  // by file
  std::vector<ScannedModel> outcomes_;
};

}  // namespace qmrules::workbench
