#include "editing/businessfunctions.h"

#include "editing/editingtest.h"
#include "platform/error.h"

namespace qmrules::editing {
namespace {

using catalogue::MakeKey;
using platform::MessageStyle;

class BusinessFunctions : public EditingTest {};

TEST_F(BusinessFunctions, ANewOneStandsInTheProjectWithItsDescription) {
  const auto outcome = CreateBusinessFunction(context, {"Billing", "Bills and fees."});
  const auto& created = std::get<Created>(outcome);
  EXPECT_EQ(created.name, "Billing");
  EXPECT_EQ(Text("BUSINESSFUNC", created.id, "Name"), "Billing");
  EXPECT_EQ(Text("BUSINESSFUNC", created.id, "Description"), "Bills and fees.");
  EXPECT_TRUE(repository.object(MakeKey("BUSINESSFUNC", created.id))->BelongsToProject(store.ProjectKey()));
}

TEST_F(BusinessFunctions, ANewOnePassesSafeTextAndKeepsItsBlanks) {
  const auto outcome = CreateBusinessFunction(context, {" Bill\x01ing ", "a\x0e"});
  const auto& created = std::get<Created>(outcome);
  EXPECT_EQ(created.name, " Bill&#64999;ing ");
  EXPECT_EQ(Text("BUSINESSFUNC", created.id, "Name"), " Bill&#64999;ing ");
  EXPECT_EQ(Text("BUSINESSFUNC", created.id, "Description"), "a}");
}

TEST_F(BusinessFunctions, NothingIsLogged) {
  ASSERT_TRUE(std::holds_alternative<Created>(CreateBusinessFunction(context, {"Billing", ""})));
  EXPECT_EQ(repository.CountObjects("RULELOG", {}), 0);
}

TEST_F(BusinessFunctions, ANameOfBlanksIsRefused) {
  for (const char* name : {"", " ", "   "}) {
    EXPECT_EQ(RefusalOf(CreateBusinessFunction(context, {name, ""})),
              (Notice{"Please, enter business function name.", MessageStyle::Exclamation}));
  }
  EXPECT_EQ(repository.CountObjects("BUSINESSFUNC", {}), 0);
}

TEST_F(BusinessFunctions, ATakenNameIsRefused) {
  const auto taken = store.AddFunction("Billing");
  EXPECT_EQ(RefusalOf(CreateBusinessFunction(context, {"Billing", "Another"})),
            (Notice{"Cannot create business function.\r\nProbably it already exists.", MessageStyle::Exclamation}));
  EXPECT_EQ(Text("BUSINESSFUNC", taken, "Description"), "");
}

TEST_F(BusinessFunctions, ANameThatIsTakenInAnotherProjectIsRefused) {
  AddElsewhere("BUSINESSFUNC", "Billing");
  EXPECT_EQ(RefusalOf(CreateBusinessFunction(context, {"Billing", ""})),
            (Notice{"Cannot create business function.\r\nProbably it already exists.", MessageStyle::Exclamation}));
  EXPECT_EQ(repository.CountObjects("BUSINESSFUNC", {}), 1);
}

TEST_F(BusinessFunctions, TheDefaultOneIsMadeWhereItIsMissing) {
  const auto outcome = CreateBusinessFunction(context, {"Homeless Function", "Any"});
  EXPECT_TRUE(std::holds_alternative<Created>(outcome));
}

TEST_F(BusinessFunctions, TheDefaultOneIsHandedBackWithoutAWriteWhenItsDescriptionIsTheSame) {
  const auto standing = store.AddFunction("Homeless Function");
  store.Put(MakeKey("BUSINESSFUNC", standing), "Description", "Any");
  const std::string modified = Text("BUSINESSFUNC", standing, "Modified");
  store.Clock().Set(platform::Timestamp{store.Clock().Now().seconds + 60});
  const auto outcome = CreateBusinessFunction(context, {"Homeless Function", "Any"});
  const auto& existing = std::get<ExistingFunction>(outcome);
  EXPECT_EQ(existing.id, standing);
  EXPECT_EQ(existing.notice,
            (Notice{"Homeless Function business function already exists.", MessageStyle::Information}));
  EXPECT_EQ(Text("BUSINESSFUNC", standing, "Modified"), modified);
}

TEST_F(BusinessFunctions, TheDefaultOneTakesAnotherDescription) {
  const auto standing = store.AddFunction("Homeless Function");
  const auto outcome = CreateBusinessFunction(context, {"Homeless Function", "Another"});
  EXPECT_EQ(std::get<ExistingFunction>(outcome).id, standing);
  EXPECT_EQ(Text("BUSINESSFUNC", standing, "Description"), "Another");
  EXPECT_EQ(repository.CountObjects("BUSINESSFUNC", {}), 1);
}

TEST_F(BusinessFunctions, TheDefaultOneOfAnotherProjectIsRefused) {
  const auto elsewhere = AddElsewhere("BUSINESSFUNC", "Homeless Function");
  EXPECT_EQ(
      RefusalOf(CreateBusinessFunction(context, {"Homeless Function", "Another"})),
      (Notice{"Homeless Function business function already exists in another project.", MessageStyle::Information}));
  EXPECT_EQ(Text("BUSINESSFUNC", elsewhere, "Description"), "");
}

using ProposedFunctions = BusinessFunctions;

TEST_F(ProposedFunctions, ATypedNameIsKept) {
  const auto proposed = ProposedFunction(context, {"Billing", "Bills."});
  EXPECT_EQ(proposed.name, "Billing");
  EXPECT_EQ(proposed.description, "Bills.");
}

TEST_F(ProposedFunctions, WithNothingTypedTheMissingDefaultOneIsProposed) {
  const auto proposed = ProposedFunction(context, {});
  EXPECT_EQ(proposed.name, "Homeless Function");
  EXPECT_EQ(proposed.description, "Holds rules without a home.");
}

TEST_F(ProposedFunctions, TheDefaultOneOfThisProjectIsProposedWithItsOwnDescription) {
  const auto standing = store.AddFunction("Homeless Function");
  store.Put(MakeKey("BUSINESSFUNC", standing), "Description", "Its own.");
  const auto proposed = ProposedFunction(context, {"Homeless Function", "Typed"});
  EXPECT_EQ(proposed.name, "Homeless Function");
  EXPECT_EQ(proposed.description, "Its own.");
}

TEST_F(ProposedFunctions, NothingIsProposedWhenTheDefaultOneIsInAnotherProjectOnly) {
  AddElsewhere("BUSINESSFUNC", "Homeless Function");
  const auto proposed = ProposedFunction(context, {"", "Typed"});
  EXPECT_EQ(proposed.name, "");
  EXPECT_EQ(proposed.description, "");
}

TEST_F(ProposedFunctions, ADefaultNameWithFilterSignsIsFound) {
  globals.UnassignedBFName = "A&B (none|other), \\~";
  const auto standing = store.AddFunction(globals.UnassignedBFName);
  store.Put(MakeKey("BUSINESSFUNC", standing), "Description", "Its own.");
  EXPECT_EQ(ProposedFunction(context, {}).description, "Its own.");
}

}  // namespace
}  // namespace qmrules::editing
