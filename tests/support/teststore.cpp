#include "support/teststore.h"

#include "platform/error.h"
#include "platform/objectkey.h"
#include "workbench/repository/sqliteconnection.h"
#include "workbench/repository/store.h"

namespace qmrules::test {

using platform::MakeKey;
namespace repository = workbench::repository;

class TestStore::TestFrontEnd final : public platform::FrontEnd {
 public:
  explicit TestFrontEnd(TestStore& store) : store_(store) {}
  platform::Repository& Repository() override { return store_.Repository(); }
  std::unique_ptr<platform::Object> ProjectObject() override { return store_.Repository().object(store_.ProjectKey()); }
  platform::Options& ProjectOptions() override { return projectOptions_; }
  platform::Options& GlobalOptions() override { return globalOptions_; }
  std::string UserName() const override { return "analyst"; }
  std::string GetFerrowoodName(int number) const override {
    const std::string root = store_.folder_.Path().string();
    if (number == 2) return root + "/product";
    if (number == 4) return root;
    if (number == 6 || number == 7) return "Demo";
    throw platform::Error("There is no name " + std::to_string(number) + ".");
  }
  std::string HelpFile() const override { return ""; }

 private:
  TestStore& store_;
  MemoryOptions projectOptions_;
  MemoryOptions globalOptions_;
};

TestStore::TestStore(const std::string& extension, repository::ConnectionFactory connect)
    : clock_(*platform::ParseTimestamp("2026-01-31 12:00:00")), connect_(std::move(connect)) {
  if (!connect_) {
    connect_ = [](const std::string& path) {
      return repository::OpenSqliteConnection(path, repository::Durability::Relaxed);
    };
  }
  if (!extension.empty()) folder_.Write("product/User.Repstry.xml", extension);
  Reopen();
  projectKey_ = repository_->NewObject("PROJECT", "Demo")->Key();
  otherProjectKey_ = repository_->NewObject("PROJECT", "Other")->Key();
  frontEnd_ = std::make_unique<TestFrontEnd>(*this);
}

TestStore::~TestStore() = default;

platform::FrontEnd& TestStore::FE() {
  return *frontEnd_;
}

void TestStore::Reopen() {
  repository_.reset();
  repository_ =
      repository::OpenStore({StorePath(), folder_.File("product/User.Repstry.xml"), "analyst", connect_}, clock_);
}

std::int32_t TestStore::Add(const std::string& entity, const std::string& name,
                            const std::map<std::string, platform::Value>& attributes) {
  const auto object = repository_->NewObject(entity, name);
  object->Edit();
  for (const auto& [attribute, value] : attributes) object->Attrs(attribute, value);
  object->Post();
  return platform::SplitKey(object->Key()).id;
}

std::int32_t TestStore::AddFunction(const std::string& name) {
  const auto id = Add("BUSINESSFUNC", name);
  repository_->object(MakeKey("BUSINESSFUNC", id))->Link("BelongsTo", projectKey_);
  return id;
}

std::int32_t TestStore::AddRuleSet(const std::string& name) {
  const auto id = Add("RULESET", name);
  repository_->object(MakeKey("RULESET", id))->Link("BelongsTo", projectKey_);
  return id;
}

std::int32_t TestStore::AddCall(std::int32_t functionID, std::int32_t setID, int seqNo) {
  const std::string function = MakeKey("BUSINESSFUNC", functionID);
  const auto id = Add("RULESETCALL", "call" + std::to_string(++names_), {{"SeqNo", seqNo}, {"SID", function}});
  const auto call = repository_->object(MakeKey("RULESETCALL", id));
  call->Link("Refers", MakeKey("RULESET", setID));
  call->Link("IsTriggeredBy", function);
  return id;
}

std::int32_t TestStore::AddRule(std::int32_t setID, const std::string& ruleName, int seqNo) {
  const std::string set = MakeKey("RULESET", setID);
  const auto id = Add("RULE", "rule" + std::to_string(++names_),
                      {{"RuleName", ruleName}, {"SeqNo", seqNo}, {"SID", set}, {"Valid", "Valid"}});
  repository_->object(set)->Link("Has", MakeKey("RULE", id));
  return id;
}

platform::Value TestStore::Get(const std::string& key, const std::string& attribute) {
  return repository_->object(key)->Attrs(attribute);
}

void TestStore::Put(const std::string& key, const std::string& attribute, const platform::Value& value) {
  const auto object = repository_->object(key);
  object->Edit();
  object->Attrs(attribute, value);
  object->Post();
}

}  // namespace qmrules::test
