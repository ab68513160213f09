#include "platform/event.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace qmrules::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

static_assert(!std::is_copy_constructible_v<Subscription> && !std::is_copy_assignable_v<Subscription>);

TEST(Event, ObserversRunInTheOrderOfSubscribing) {
  Event<int> event;
  std::vector<std::string> told;
  const auto first = event.Subscribe([&](int n) { told.push_back("first " + std::to_string(n)); });
  const auto second = event.Subscribe([&](int n) { told.push_back("second " + std::to_string(n)); });
  event.Raise(7);
  EXPECT_THAT(told, ElementsAre("first 7", "second 7"));
}

TEST(Event, DestroyedSubscriptionEndsDelivery) {
  Event<> event;
  int told = 0;
  {
    const auto subscription = event.Subscribe([&] { ++told; });
    EXPECT_TRUE(event.HasObservers());
    event.Raise();
  }
  EXPECT_FALSE(event.HasObservers());
  event.Raise();
  EXPECT_EQ(told, 1);
}

TEST(Event, AssigningOverASubscriptionEndsIt) {
  Event<> event;
  std::vector<int> told;
  auto subscription = event.Subscribe([&] { told.push_back(1); });
  subscription = event.Subscribe([&] { told.push_back(2); });
  event.Raise();
  EXPECT_THAT(told, ElementsAre(2));
  subscription = Subscription();
  event.Raise();
  EXPECT_THAT(told, ElementsAre(2));
}

TEST(Event, MovedSubscriptionGoesOn) {
  Event<> event;
  int told = 0;
  auto subscription = event.Subscribe([&] { ++told; });
  const Subscription moved = std::move(subscription);
  event.Raise();
  EXPECT_EQ(told, 1);
}

TEST(Event, SubscriptionMayOutliveItsEvent) {
  auto held = std::make_shared<int>(1);
  const std::weak_ptr<int> watched = held;
  Subscription subscription;
  {
    Event<> event;
    subscription = event.Subscribe([held = std::move(held)] {});
  }
  EXPECT_FALSE(watched.expired());
  subscription = Subscription();
  EXPECT_TRUE(watched.expired());
}

TEST(Event, ObserverMayEndItself) {
  Event<> event;
  int told = 0;
  std::optional<Subscription> subscription;
  subscription = event.Subscribe([&] {
    ++told;
    subscription.reset();
    ++told;
  });
  event.Raise();
  event.Raise();
  EXPECT_EQ(told, 2);
}

TEST(Event, ObserverEndedByAnEarlierOneIsNotToldAnyMore) {
  Event<> event;
  std::vector<int> told;
  std::optional<Subscription> second;
  const auto first = event.Subscribe([&] {
    told.push_back(1);
    second.reset();
  });
  second = event.Subscribe([&] { told.push_back(2); });
  event.Raise();
  EXPECT_THAT(told, ElementsAre(1));
}

TEST(Event, ObserverAddedDuringADeliveryIsToldOfTheNext) {
  Event<> event;
  std::vector<int> told;
  std::vector<Subscription> added;
  const auto first = event.Subscribe([&] {
    told.push_back(1);
    if (added.empty()) added.push_back(event.Subscribe([&] { told.push_back(2); }));
  });
  event.Raise();
  EXPECT_THAT(told, ElementsAre(1));
  event.Raise();
  EXPECT_THAT(told, ElementsAre(1, 1, 2));
}

TEST(Event, ObserverMayRaiseTheEventAgain) {
  Event<int> event;
  std::vector<int> told;
  const auto subscription = event.Subscribe([&](int depth) {
    told.push_back(depth);
    if (depth < 3) event.Raise(depth + 1);
  });
  event.Raise(1);
  EXPECT_THAT(told, ElementsAre(1, 2, 3));
}

TEST(Event, ReferenceArgumentReachesTheCaller) {
  Event<int&> event;
  const auto subscription = event.Subscribe([](int& answer) { answer = 42; });
  int answer = 0;
  event.Raise(answer);
  EXPECT_EQ(answer, 42);
}

TEST(Event, FailureOfAnObserverReachesTheCallerAndLeavesTheEventWhole) {
  Event<> event;
  std::vector<int> told;
  auto failing = event.Subscribe([] { throw std::string("failure"); });
  const auto second = event.Subscribe([&] { told.push_back(2); });
  EXPECT_THROW(event.Raise(), std::string);
  EXPECT_THAT(told, IsEmpty());
  failing = Subscription();
  event.Raise();
  EXPECT_THAT(told, ElementsAre(2));
}

}  // namespace
}  // namespace qmrules::platform
