#pragma once

#include <limits>
#include <string>
#include <vector>

#include "platform/progress.h"

namespace qmrules::platform {

// Keeps what was reported, and plays the user who presses Cancel.
class RecordingProgress final : public Progress {
 public:
  enum class Call { StartProgress, StartStep, FinishStep, FinishProgress };
  struct Entry {
    Call call = Call::StartProgress;
    std::string text;        // of StartProgress and StartStep
    int amount = 0;          // total of StartProgress, amount of FinishStep
    bool canCancel = false;  // of StartProgress
    friend bool operator==(const Entry&, const Entry&) = default;
  };

  // Cancelled() gives true once so many steps have been finished, or once it has given false so many times, counted
  // from now on. Heeded only in work that can be cancelled.
  void CancelAfterSteps(int steps) { stepsLeft_ = steps; }
  void CancelAfterQuestions(int questions) { questionsLeft_ = questions; }

  const std::vector<Entry>& Entries() const { return entries_; }
  // Between StartProgress and FinishProgress.
  bool IsOpen() const { return open_; }
  // Sum of the amounts of FinishStep since the last StartProgress.
  int Done() const { return done_; }
  // How often Cancelled was called, in work that can be cancelled or not, or outside of any.
  int Asked() const { return asked_; }

  void StartProgress(std::string_view text, int total, bool canCancel) override;
  void StartStep(std::string_view text) override;
  void FinishStep(int amount) override;
  void FinishProgress() override;
  bool Cancelled() override;

 private:
  static constexpr int never = std::numeric_limits<int>::max();

  std::vector<Entry> entries_;
  bool open_ = false;
  bool canCancel_ = false;
  int done_ = 0;
  int asked_ = 0;
  int stepsLeft_ = never;
  int questionsLeft_ = never;
};

}  // namespace qmrules::platform
