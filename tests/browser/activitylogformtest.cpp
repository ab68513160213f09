#include "browser/activitylogform.h"

#include <gtest/gtest.h>

#include "browser/browsertest.h"
#include "catalogue/activitylog.h"
#include "platform/scripteddialogs.h"
#include "platform/widgets/button.h"
#include "support/errortext.h"

namespace qmrules::browser {
namespace {

using platform::MessageAnswer;
using platform::ScriptedDialogs;
using platform::widgets::Button;
using platform::widgets::Form;
using platform::widgets::Key;
using platform::widgets::ListView;

class ActivityLogFormTest : public BrowserTest {
 protected:
  void Log(std::string_view text) { catalogue::AddActivity(store.FE(), store.Clock(), rule, text); }

  std::int32_t function = store.AddFunction("Billing");
  std::int32_t set = store.AddRuleSet("Fees");
  std::int32_t call = store.AddCall(function, set, 1);
  std::int32_t rule = store.AddRule(set, "Late fee", 1);
  ScriptedDialogs dialogs;
  ActivityLogForm form{dialogs, texts, globals};
};

TEST_F(ActivityLogFormTest, ShowsOneRowForEachRecord) {
  Log("Created");
  Log("Segment changed");
  dialogs.ExpectForm("frmActivityLog", [](Form& shown) {
    EXPECT_EQ(shown.Caption(), "Activity Log for Rule Late fee");
    const auto& lvLog = shown.Get<ListView>("lvLog");
    ASSERT_EQ(lvLog.Columns().size(), 3U);
    EXPECT_EQ(lvLog.Columns()[0].text, "Activity");
    EXPECT_EQ(lvLog.Columns()[1].text, "Who changed");
    EXPECT_EQ(lvLog.Columns()[2].text, "When changed");
    EXPECT_EQ(Rows(lvLog),
              "Created | analyst | 2026-01-31 12:00:00\nSegment changed | analyst | 2026-01-31 12:00:00\n");
    EXPECT_EQ(shown.Get<Button>("cmdOK").Caption(), "OK");
    shown.PressKey(Key::Escape);
  });
  form.ShowRuleLog(repository, rule);
  EXPECT_EQ(dialogs.Remaining(), 0U);
}

TEST_F(ActivityLogFormTest, ARuleWithoutARecordGivesTheMessageAndNoWindow) {
  dialogs.ExpectMessage(MessageAnswer::Ok, "No logged activity for this rule.");
  form.ShowRuleLog(repository, rule);
  ASSERT_EQ(dialogs.History().size(), 1U);
  EXPECT_EQ(dialogs.History()[0].caption, "Business Rules");
  EXPECT_EQ(dialogs.History()[0].style, platform::MessageStyle::Information);
}

TEST_F(ActivityLogFormTest, TheLogOfARuleOfAnotherProjectOpensTheSameWay) {
  rule = store.AddRule(AddElsewhere("RULESET", "Tariffs"), "Duty", 1);
  Log("Imported");
  dialogs.ExpectForm("frmActivityLog", [](Form& shown) {
    EXPECT_EQ(shown.Caption(), "Activity Log for Rule Duty");
    shown.PressKey(Key::Enter);
  });
  form.ShowRuleLog(repository, rule);
}

TEST_F(ActivityLogFormTest, EachShowingBeginsWithAnEmptyList) {
  Log("Created");
  for (int showing = 0; showing < 2; ++showing) {
    dialogs.ExpectForm("frmActivityLog", [](Form& shown) {
      EXPECT_EQ(shown.Get<ListView>("lvLog").Count(), 1U);
      shown.Close();
    });
    form.ShowRuleLog(repository, rule);
  }
}

TEST_F(ActivityLogFormTest, TheCommandOpensTheLogOfARuleOnly) {
  Log("Created");
  objects.LoadTree();
  tvObjects.Expand(Node("Fees"));
  form.ShowLogOf(nullptr, repository);
  form.ShowLogOf(&Node("Billing"), repository);
  form.ShowLogOf(&Node("Fees"), repository);
  EXPECT_TRUE(dialogs.History().empty());
  dialogs.ExpectForm("frmActivityLog", [](Form& shown) { shown.Close(); });
  form.ShowLogOf(&Node("Late fee"), repository);
  EXPECT_EQ(dialogs.History().size(), 1U);
}

TEST_F(ActivityLogFormTest, AFailureOpensNothing) {
  Log("Created");
  watch.Arm(1);
  EXPECT_EQ(test::ErrorText([this] { form.ShowRuleLog(frontEnd.Repository(), rule); }), kReadFault);
  EXPECT_TRUE(dialogs.History().empty());
}

}  // namespace
}  // namespace qmrules::browser
