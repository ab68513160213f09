#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace qmrules::platform {

// Keeps one observer registered: destroying it (or assigning another over it) ends delivery. It may outlive the event
// that it was made by, and may be destroyed from within the observer itself. It can be moved, but not copied: a copy
// that is forgotten somewhere would keep the delivery going.
class Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::shared_ptr<void> registration) : registration_(std::move(registration)) {}
  Subscription(Subscription&&) noexcept = default;
  Subscription& operator=(Subscription&&) noexcept = default;
  Subscription(const Subscription&) = delete;
  Subscription& operator=(const Subscription&) = delete;
  ~Subscription() = default;

 private:
  std::shared_ptr<void> registration_;
};

// A typed event. Observers run on the raising thread in the order in which they subscribed. An observer may raise the
// event again, subscribe or unsubscribe while it runs; one that is added during a delivery is first told of the next.
template <class... Arguments>
class Event {
 public:
  using Observer = std::function<void(Arguments...)>;

  [[nodiscard]] Subscription Subscribe(Observer observer) {
    auto held = std::make_shared<Observer>(std::move(observer));
    observers_.push_back(held);
    return Subscription(std::move(held));
  }

  bool HasObservers() const {
    return std::any_of(observers_.begin(), observers_.end(), [](const auto& weak) { return !weak.expired(); });
  }

  void Raise(const Arguments&... arguments) {
    const auto told = observers_;
    for (const auto& weak : told) {
      if (const auto observer = weak.lock()) (*observer)(arguments...);
    }
    std::erase_if(observers_, [](const auto& weak) { return weak.expired(); });
  }

 private:
  std::vector<std::weak_ptr<Observer>> observers_;
};

}  // namespace qmrules::platform
