// The command Validate, from the question to the message.

#include <gtest/gtest.h>

#include "catalogue/gateway.h"
#include "shell/controltest.h"
#include "validation/validationrun.h"

namespace qmrules::shell {
namespace {

using catalogue::MakeKey;
using platform::MessageAnswer;
using platform::MessageStyle;
using platform::Value;

class ValidateTest : public ControlTest {
 protected:
  ValidateTest() {
    auto crdOptions = store.FE().ProjectOptions().Document().selectSingleNode("//LIST[@NAME='CRDOptions']");
    platform::XmlDocument part;
    part.loadXML(
        "<CASE NAME='RuleValidation'><LIST NAME='SegmentValidation' VALUE='valid'/>"
        "<BOOL NAME='CollapseSpaces' VALUE='false'/></CASE>");
    crdOptions.appendChild(store.FE().ProjectOptions().Document().importNode(part.documentElement()));
    store.Folder().Write("FEE.cbl", "zero\none\ntwo\n");
    for (const auto rule : {lateFee, lastFee}) {
      store.Put(MakeKey("RULE", rule), "Program", Value("FEE"));
      store.Put(MakeKey("RULE", rule), "Model", Value("COBOL"));
      store.Put(MakeKey("RULE", rule), "FileName", Value("FEE.cbl"));
      store.Put(MakeKey("RULE", rule), "FromRow", Value(1));
      store.Put(MakeKey("RULE", rule), "ToRow", Value(1));
    }
    store.Put(MakeKey("RULE", lateFee), "SourceText", Value("one\n"));
    store.Put(MakeKey("RULE", lastFee), "SourceText", Value("nowhere\n"));
    Open();
    OpenAll();
  }
  test::MemoryOptions& Options() { return dynamic_cast<test::MemoryOptions&>(store.FE().ProjectOptions()); }
  std::string Row(std::int32_t rule) { return store.Get(MakeKey("RULE", rule), "FromRow").Text(); }
};

TEST_F(ValidateTest, TellsWhenNothingIsSelected) {
  ExpectMessage("Nothing to validate.");
  Request("Validate");
  EXPECT_EQ(dialogs.History().back().style, MessageStyle::Exclamation);
  EXPECT_EQ(dialogs.History().back().caption, "Business Rules");
}

TEST_F(ValidateTest, MovesTheSegmentOfASelectedRuleAndShowsItsNewRows) {
  Click("Late fee");
  Request("Emphasize");
  tvObjects.ClickCheckBox(Node("Late fee"));
  dialogs.ExpectMessage(MessageAnswer::Yes, "You are about to validate one rule.\r\nContinue?");
  ExpectMessage("\r\nOne segment was validated.");
  Request("Validate");
  EXPECT_EQ(dialogs.History().front().style, MessageStyle::Question);
  EXPECT_EQ(dialogs.History().back().style, MessageStyle::Information);
  EXPECT_EQ(Row(lateFee), "2");
  EXPECT_EQ(viewer.Row(), 2);
  ASSERT_EQ(viewer.Marks().size(), 2U) << "that of the other rule of the file is painted again too";
  EXPECT_EQ(HostState("Emphasize").find("check") != std::string::npos, true);
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(ValidateTest, WarnsWhenARuleIsNotValidated) {
  tvObjects.ClickCheckBox(Node("Fees"));
  dialogs.ExpectMessage(MessageAnswer::Yes, "You are about to validate 3 rules.\r\nContinue?");
  ExpectMessage(
      "One rule was already correct.\r\nOne of them has no segment.\r\nOne segment was validated.\r\n"
      "One segment was not validated.");
  Request("Validate");
  EXPECT_EQ(dialogs.History().back().style, MessageStyle::Exclamation);
}

TEST_F(ValidateTest, TellsWhoeverListensBeforeTheUser) {
  std::size_t remaining = 0;
  std::shared_ptr<const validation::ValidationReport> heard;
  const auto listening = control.OnValidated.Subscribe([&](const auto& report) {
    heard = report;
    remaining = dialogs.Remaining();
  });
  Options().Document().selectSingleNode("//LIST[@NAME='SegmentValidation']").setAttribute("VALUE", "leave");
  tvObjects.ClickCheckBox(Node("Late fee"));
  dialogs.ExpectMessage(MessageAnswer::Yes);
  ExpectMessage("\r\nOne segment was left invalid.");
  Request("Validate");
  ASSERT_NE(heard, nullptr);
  EXPECT_EQ(remaining, 1U) << "the message is still to come";
  ASSERT_EQ(heard->findings.size(), 1U);
  const auto& finding = heard->findings.front();
  EXPECT_EQ(finding.verdict, validation::Verdict::Moved);
  EXPECT_EQ(finding.ruleName, "Late fee");
  EXPECT_EQ(finding.storedText, "one\n");
  EXPECT_EQ(Row(lateFee), "1");
}

TEST_F(ValidateTest, StopsWhenTheUserSaysNoOrCancelsTheOptions) {
  tvObjects.ClickCheckBox(Node("Late fee"));
  dialogs.ExpectMessage(MessageAnswer::No);
  Request("Validate");
  EXPECT_EQ(Row(lateFee), "1");
  Options().accepts = false;
  dialogs.ExpectMessage(MessageAnswer::Yes);
  Request("Validate");
  EXPECT_EQ(Row(lateFee), "1");
  EXPECT_EQ(dialogs.Remaining(), 0U);
}

TEST_F(ValidateTest, AFailureIsToldAndTheMarksAreThereAgain) {
  Click("Late fee");
  Request("Emphasize");
  const auto marks = viewer.Marks().size();
  tvObjects.ClickCheckBox(Node("Late fee"));
  Options().Document().selectSingleNode("//BOOL[@NAME='CollapseSpaces']").setAttribute("NAME", "Other");
  dialogs.ExpectMessage(MessageAnswer::Yes);
  dialogs.ExpectMessage(MessageAnswer::Ok);
  Request("Validate");
  EXPECT_NE(dialogs.MessageTexts().back().find("CollapseSpaces"), std::string::npos);
  EXPECT_EQ(viewer.Marks().size(), marks);
  EXPECT_FALSE(pointer.IsBusy());
}

}  // namespace
}  // namespace qmrules::shell
