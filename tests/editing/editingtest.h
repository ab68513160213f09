#pragma once

#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

#include "catalogue/activitylog.h"
#include "catalogue/gateway.h"
#include "editing/outcomes.h"
#include "support/teststore.h"

namespace qmrules::editing {

// A store, the English texts, and the names of the objects for rules without a home.
class EditingTest : public testing::Test {
 protected:
  explicit EditingTest(const std::string& extension = "") : store(extension) {
    globals.UnassignedBFName = "Homeless Function";
    globals.UnassignedBFDescr = "Holds rules without a home.";
    globals.UnassignedRSName = "Homeless Rules";
    globals.UnassignedRSDescr = "Rules without a home.";
  }

  std::string Text(std::string_view entity, std::int32_t id, const char* attribute) {
    return store.Get(catalogue::MakeKey(entity, id), attribute).Text();
  }

  // An object of another project.
  std::int32_t AddElsewhere(const std::string& entity, const std::string& name) {
    const auto id = store.Add(entity, name);
    repository.object(catalogue::MakeKey(entity, id))->Link("BelongsTo", store.OtherProjectKey());
    return id;
  }

  // What was logged on the rule, oldest first.
  std::vector<std::string> Activities(std::int32_t rule) {
    std::vector<std::string> activities;
    for (const auto& row : catalogue::ReadRuleLog(repository, texts, rule).rows) activities.push_back(row.Activity);
    return activities;
  }

  test::TestStore store;
  platform::Repository& repository = store.Repository();
  const shell::StringTable& texts = shell::StringTableFor(shell::Language::English);
  platform::TesselGlobals globals;
  EditingContext context{store.FE(), store.Clock(), texts, globals};
};

// The notice of an outcome that must be a refusal.
template <class Outcome>
Notice RefusalOf(const Outcome& outcome) {
  const auto* refused = std::get_if<Refused>(&outcome);
  if (refused == nullptr) return {"not refused", platform::MessageStyle::Question};
  return refused->notice;
}

}  // namespace qmrules::editing
