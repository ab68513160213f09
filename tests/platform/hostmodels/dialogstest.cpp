#include "platform/dialogs.h"

#include <gtest/gtest.h>

#include <string>

namespace qmrules::platform {
namespace {

std::string AnswersOf(MessageStyle style) {
  std::string answers;
  if (Offers(style, MessageAnswer::Ok)) answers += "ok ";
  if (Offers(style, MessageAnswer::Cancel)) answers += "cancel ";
  if (Offers(style, MessageAnswer::Yes)) answers += "yes ";
  if (Offers(style, MessageAnswer::No)) answers += "no ";
  return answers;
}

TEST(MessageStyle, QuestionsOfferTwoAnswersAndReportsOne) {
  EXPECT_EQ(AnswersOf(MessageStyle::Question), "yes no ");
  EXPECT_EQ(AnswersOf(MessageStyle::QuestionOkCancel), "ok cancel ");
  EXPECT_EQ(AnswersOf(MessageStyle::Information), "ok ");
  EXPECT_EQ(AnswersOf(MessageStyle::Exclamation), "ok ");
}

}  // namespace
}  // namespace qmrules::platform
