#include "cli/terminalprogress.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/displaywidth.h"

namespace qmrules::cli {

namespace {

constexpr std::chrono::milliseconds kBetweenLines{50};
constexpr std::size_t kWidestStep = 48;
constexpr std::string_view kWipe = "\r\x1b[K";

}  // namespace

TerminalProgress::TerminalProgress(CliEnvironment& environment) : environment_(environment) {
  if (environment.watchInterrupts) watch_ = environment.watchInterrupts();
}

void TerminalProgress::StartProgress(std::string_view text, int total, bool canCancel) {
  title_ = text;
  step_.clear();
  total_ = total;
  done_ = 0;
  canCancel_ = canCancel;
  Show(true);
}

void TerminalProgress::StartStep(std::string_view text) {
  step_ = LeftColumns(OneLine(text), kWidestStep);
  Show(false);
}

void TerminalProgress::FinishStep(int amount) {
  done_ += amount;
  Show(false);
}

void TerminalProgress::FinishProgress() {
  if (environment_.errIsTerminal) environment_.err << kWipe << std::flush;
}

bool TerminalProgress::Cancelled() {
  return canCancel_ && watch_ && watch_->Interrupted();
}

void TerminalProgress::Show(bool atOnce) {
  const auto now = std::chrono::steady_clock::now();
  if (!environment_.errIsTerminal || (!atOnce && now - shown_ < kBetweenLines)) return;
  shown_ = now;
  const int percent = total_ > 0 ? static_cast<int>(std::int64_t{100} * std::min(done_, total_) / total_) : 100;
  environment_.err << kWipe << fmt::format("{}: {:>3} %  {}", title_, percent, step_) << std::flush;
}

}  // namespace qmrules::cli
