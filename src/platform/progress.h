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
  // True once the user has asked to stop. Gives the host the chance to paint and to take the request.
  virtual bool Cancelled() = 0;
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
