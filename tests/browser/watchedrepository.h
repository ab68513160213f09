#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/frontend.h"
#include "platform/repository.h"

namespace qmrules::browser {

// What a watched repository was asked, and where reading from it fails.
struct Watch {
  std::vector<std::string> filters;  // filter texts, in the order in which they were declared
  std::vector<std::string> opened;   // keys of the objects that were opened
  int executed = 0;
  // The step of reading that fails, counted from 1 since the last Arm: an Execute or a MoveNext; 0 for none.
  int failAt = 0;
  int steps = 0;

  void Arm(int step) {
    failAt = step;
    steps = 0;
  }
};

// The text with which reading fails.
inline constexpr const char* kReadFault = "The disk cannot be read.";

// A repository that tells what it is asked and can fail while it is read.
class WatchedRepository final : public platform::Repository {
 public:
  explicit WatchedRepository(platform::Repository& repository) : repository_(repository) {}

  Watch watch;

  std::unique_ptr<platform::Object> object(std::string_view key) override {
    watch.opened.emplace_back(key);
    return repository_.object(key);
  }
  std::unique_ptr<platform::Object> NewObject(std::string_view entity, std::string_view name) override {
    return repository_.NewObject(entity, name);
  }
  std::unique_ptr<platform::Object> FindObject(std::string_view entity, std::string_view name) override {
    return repository_.FindObject(entity, name);
  }
  const platform::Schema& Schema() const override { return repository_.Schema(); }
  platform::Database& Database() override { return repository_.Database(); }
  std::unique_ptr<platform::Fetch> NewFetch() override;
  std::int32_t CountObjects(std::string_view entity, const platform::Filter& filter) override {
    return repository_.CountObjects(entity, filter);
  }
  void PrepareDelete(const platform::KeyedCollection<std::string>& keys) override { repository_.PrepareDelete(keys); }
  std::unique_ptr<platform::CommandScope> BeginCommand(std::string_view name) override {
    return repository_.BeginCommand(name);
  }
  std::unique_ptr<platform::Transaction> BeginTransaction() override { return repository_.BeginTransaction(); }
  platform::ForeignChanges TakeForeignChanges() override { return repository_.TakeForeignChanges(); }
  platform::Subscription OnObjectAdded(ObjectObserver observer) override {
    return repository_.OnObjectAdded(std::move(observer));
  }
  platform::Subscription OnObjectDeleted(ObjectObserver observer) override {
    return repository_.OnObjectDeleted(std::move(observer));
  }
  platform::Subscription OnLinked(RelationObserver observer) override {
    return repository_.OnLinked(std::move(observer));
  }
  platform::Subscription OnUnLinked(RelationObserver observer) override {
    return repository_.OnUnLinked(std::move(observer));
  }

 private:
  platform::Repository& repository_;
};

// A front end over a watched repository, otherwise as the one given.
class WatchedFrontEnd final : public platform::FrontEnd {
 public:
  explicit WatchedFrontEnd(platform::FrontEnd& frontEnd) : repository(frontEnd.Repository()), frontEnd_(frontEnd) {}

  WatchedRepository repository;

  platform::Repository& Repository() override { return repository; }
  std::unique_ptr<platform::Object> ProjectObject() override { return frontEnd_.ProjectObject(); }
  platform::Options& ProjectOptions() override { return frontEnd_.ProjectOptions(); }
  platform::Options& GlobalOptions() override { return frontEnd_.GlobalOptions(); }
  std::string UserName() const override { return frontEnd_.UserName(); }
  std::string GetFerrowoodName(int number) const override { return frontEnd_.GetFerrowoodName(number); }
  std::string HelpFile() const override { return frontEnd_.HelpFile(); }

 private:
  platform::FrontEnd& frontEnd_;
};

}  // namespace qmrules::browser
