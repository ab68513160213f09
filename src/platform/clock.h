#pragma once

#include "platform/timestamp.h"

namespace qmrules::platform {

// The present moment. Handed in wherever a moment is written, so that a test can fix it.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual Timestamp Now() const = 0;
};

// The machine's clock, cut to whole seconds.
class SystemClock final : public Clock {
 public:
  Timestamp Now() const override;
};

// A clock that stands until it is set.
class FixedClock final : public Clock {
 public:
  explicit FixedClock(Timestamp now) : now_(now) {}
  Timestamp Now() const override { return now_; }
  void Set(Timestamp now) { now_ = now; }

 private:
  Timestamp now_;
};

}  // namespace qmrules::platform
