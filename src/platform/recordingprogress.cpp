#include "platform/recordingprogress.h"

namespace qmrules::platform {

void RecordingProgress::StartProgress(std::string_view text, int total, bool canCancel) {
  open_ = true;
  canCancel_ = canCancel;
  done_ = 0;
  entries_.push_back({Call::StartProgress, std::string(text), total, canCancel});
}

void RecordingProgress::StartStep(std::string_view text) {
  entries_.push_back({Call::StartStep, std::string(text), 0, false});
}

void RecordingProgress::FinishStep(int amount) {
  done_ += amount;
  if (stepsLeft_ != never && stepsLeft_ > 0) --stepsLeft_;
  entries_.push_back({Call::FinishStep, {}, amount, false});
}

void RecordingProgress::FinishProgress() {
  open_ = false;
  entries_.push_back({Call::FinishProgress, {}, 0, false});
}

bool RecordingProgress::Cancelled() {
  ++asked_;
  if (!open_ || !canCancel_) return false;
  if (stepsLeft_ == 0 || questionsLeft_ == 0) return true;
  if (questionsLeft_ != never) --questionsLeft_;
  return false;
}

}  // namespace qmrules::platform
