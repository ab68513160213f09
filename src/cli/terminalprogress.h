#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "cli/environment.h"
#include "platform/progress.h"

namespace qmrules::cli {

// Shows long work on one line of the error output, which is wiped at the end; on no terminal, nothing. Work that can be
// cancelled is when the user interrupts the program.
class TerminalProgress final : public platform::Progress {
 public:
  // The environment outlives the display.
  explicit TerminalProgress(CliEnvironment& environment);

  void StartProgress(std::string_view text, int total, bool canCancel) override;
  void StartStep(std::string_view text) override;
  void FinishStep(int amount) override;
  void FinishProgress() override;
  bool Cancelled() override;

 private:
  void Show(bool atOnce);

  CliEnvironment& environment_;
  std::unique_ptr<InterruptWatch> watch_;
  std::string title_;
  std::string step_;
  int total_ = 0;
  int done_ = 0;
  bool canCancel_ = false;
  std::chrono::steady_clock::time_point shown_;
};

}  // namespace qmrules::cli
