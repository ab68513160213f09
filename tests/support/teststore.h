#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/frontend.h"
#include "platform/repository.h"
#include "support/temporaryfolder.h"
#include "workbench/repository/connection.h"

namespace qmrules::test {

// An options document held in memory; its dialog answers as it is told to.
class MemoryOptions final : public platform::Options {
 public:
  platform::XmlDocument& Document() override { return document_; }
  bool DisplayDialog(std::string_view) override { return accepts; }
  bool accepts = true;

 private:
  platform::XmlDocument document_;
};

// A real store in a temporary folder, with the front end around it that the logic asks for: the user "analyst", the
// project "Demo" (and "Other", which is not the current one), and a clock that stands at 2026-01-31 12:00:00.
class TestStore {
 public:
  // `extension`: the text of the site's schema document, "" for none. `connect`: opens the database, in place of a
  // plain SQLite connection.
  explicit TestStore(const std::string& extension = "", workbench::repository::ConnectionFactory connect = {});
  ~TestStore();

  platform::Repository& Repository() { return *repository_; }
  platform::FrontEnd& FE();
  std::string ProjectKey() const { return projectKey_; }
  std::string OtherProjectKey() const { return otherProjectKey_; }
  platform::FixedClock& Clock() { return clock_; }
  // ROOT holds the sources (number 4); ROOT/product is the product's folder (number 2).
  TemporaryFolder& Folder() { return folder_; }
  std::string StorePath() const { return folder_.File("repository.db"); }

  // Closes the store and opens it anew.
  void Reopen();

  // Objects made the short way. Each returns the new object's ID. Functions and rule sets belong to the project.
  std::int32_t AddFunction(const std::string& name);
  std::int32_t AddRuleSet(const std::string& name);
  std::int32_t AddCall(std::int32_t functionID, std::int32_t setID, int seqNo);
  std::int32_t AddRule(std::int32_t setID, const std::string& ruleName, int seqNo);
  // Any object, with attributes.
  std::int32_t Add(const std::string& entity, const std::string& name,
                   const std::map<std::string, platform::Value>& attributes = {});
  platform::Value Get(const std::string& key, const std::string& attribute);
  void Put(const std::string& key, const std::string& attribute, const platform::Value& value);

 private:
  class TestFrontEnd;

  TemporaryFolder folder_;
  platform::FixedClock clock_;
  workbench::repository::ConnectionFactory connect_;
  std::unique_ptr<platform::Repository> repository_;
  std::string projectKey_;
  std::string otherProjectKey_;
  std::unique_ptr<TestFrontEnd> frontEnd_;
  int names_ = 0;
};

}  // namespace qmrules::test
