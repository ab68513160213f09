#pragma once

#include <string_view>

namespace qmrules::platform {

// The host's display of long work. A piece of work is StartProgress, then StartStep and FinishStep in turn, then
// FinishProgress, which closes the display and is called on every path.
class Progress {
 public:
  virtual ~Progress() = default;
  // `total`: the sum of what the FinishStep calls will add. `canCancel`: the user may stop the work.
  virtual void StartProgress(std::string_view text, int total, bool canCancel) = 0;
  virtual void StartStep(std::string_view text) = 0;
  virtual void FinishStep(int amount) = 0;
  virtual void FinishProgress() = 0;
  // True once the user has asked to stop. Gives the host the chance to paint and to take the request; also outside of a
  // piece of work, where it only paints.
  virtual bool Cancelled() = 0;
};

// One piece of work on display, closed on every path.
class ProgressDisplay {
 public:
  ProgressDisplay(Progress& progress, std::string_view text, int total, bool canCancel) : progress_(progress) {
    progress_.StartProgress(text, total, canCancel);
  }
  ProgressDisplay(const ProgressDisplay&) = delete;
  ProgressDisplay& operator=(const ProgressDisplay&) = delete;
  ~ProgressDisplay() { progress_.FinishProgress(); }

 private:
  Progress& progress_;
};

// Gives the host the chance to paint within a loop of many short turns that shows no steps and is not stopped by the
// user. The host is asked once in many turns, so a turn costs next to nothing.
class PaintPauses {
 public:
  // `progress` outlives this.
  explicit PaintPauses(Progress& progress) : progress_(progress) {}
  void Turn() {
    if (++turns_ % kTurnsBetween == 0) progress_.Cancelled();
  }

 private:
  static constexpr unsigned kTurnsBetween = 64;
  Progress& progress_;
  unsigned turns_ = 0;
};

// Shows nothing and is never cancelled.
class SilentProgress final : public Progress {
 public:
  void StartProgress(std::string_view, int, bool) override {}
  void StartStep(std::string_view) override {}
  void FinishStep(int) override {}
  void FinishProgress() override {}
  bool Cancelled() override { return false; }
};

}  // namespace qmrules::platform
