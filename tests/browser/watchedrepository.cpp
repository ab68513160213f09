#include "browser/watchedrepository.h"

#include <utility>

#include "platform/error.h"

namespace qmrules::browser {

namespace {

class WatchedFetch final : public platform::Fetch {
 public:
  WatchedFetch(std::unique_ptr<platform::Fetch> fetch, Watch& watch) : fetch_(std::move(fetch)), watch_(watch) {}

  platform::ObjectNode AddObject(bool inProject, std::optional<std::string_view> entity, std::string_view fetchList,
                                 const platform::Filter& filter,
                                 std::optional<platform::RelationNode> related) override {
    if (const auto* text = std::get_if<std::string>(&filter)) watch_.filters.push_back(*text);
    return fetch_->AddObject(inProject, entity, fetchList, filter, related);
  }
  platform::RelationNode AddRelation(std::string_view relation, bool inProject, std::string_view fetchList,
                                     platform::ObjectNode target) override {
    return fetch_->AddRelation(relation, inProject, fetchList, target);
  }
  platform::RelationNode AddCount(std::string_view relation, bool inProject, std::string_view alias) override {
    return fetch_->AddCount(relation, inProject, alias);
  }
  void SetRoot(platform::ObjectNode node) override { fetch_->SetRoot(node); }
  bool Execute(std::string_view projectKey) override {
    ++watch_.executed;
    Step();
    return fetch_->Execute(projectKey);
  }
  bool Eof() const override { return fetch_->Eof(); }
  const platform::FetchRow& Row() const override { return fetch_->Row(); }
  void MoveNext() override {
    Step();
    fetch_->MoveNext();
  }
  void Reset() override { fetch_->Reset(); }

 private:
  void Step() {
    if (++watch_.steps == watch_.failAt) throw platform::Error(kReadFault);
  }

  std::unique_ptr<platform::Fetch> fetch_;
  Watch& watch_;
};

}  // namespace

std::unique_ptr<platform::Fetch> WatchedRepository::NewFetch() {
  return std::make_unique<WatchedFetch>(repository_.NewFetch(), watch);
}

}  // namespace qmrules::browser
