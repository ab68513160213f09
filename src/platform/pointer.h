#pragma once

namespace qmrules::platform {

// The mouse pointer's shape.
class Pointer {
 public:
  virtual ~Pointer() = default;
  virtual bool IsBusy() const = 0;
  virtual void SetBusy(bool busy) = 0;
};

// A pointer without a screen.
class MemoryPointer final : public Pointer {
 public:
  bool IsBusy() const override { return busy_; }
  void SetBusy(bool busy) override { busy_ = busy; }

 private:
  bool busy_ = false;
};

// Gives the pointer one shape to the end of the scope, then the shape that it had before. Scopes nest.
class PointerShape {
 public:
  PointerShape(const PointerShape&) = delete;
  PointerShape& operator=(const PointerShape&) = delete;

 protected:
  PointerShape(Pointer& pointer, bool busy) : pointer_(pointer), before_(pointer.IsBusy()) { pointer_.SetBusy(busy); }
  ~PointerShape() { pointer_.SetBusy(before_); }

 private:
  Pointer& pointer_;
  bool before_;
};

// Busy: stands around work in the repository.
class BusyCursor final : public PointerShape {
 public:
  explicit BusyCursor(Pointer& pointer) : PointerShape(pointer, true) {}
};

// Normal: stands around a dialog that comes up amid such work.
class NormalCursor final : public PointerShape {
 public:
  explicit NormalCursor(Pointer& pointer) : PointerShape(pointer, false) {}
};

}  // namespace qmrules::platform
