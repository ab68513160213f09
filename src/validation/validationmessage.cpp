#include "validation/validationmessage.h"

#include "shell/text.h"
#include "validation/validationoptions.h"

namespace qmrules::validation {

namespace {

constexpr const char* kLineBreak = "\r\n";

enum MessageNumber {
  kOneNotValidated = 587,
  kNotValidated = 588,
  kOneValidated = 589,
  kValidated = 590,
  kOneHasNoSegment = 601,
  kHaveNoSegment = 602,
  kOneCorrect = 626,
  kCorrect = 627,
  kOneLeftInvalid = 628,
  kLeftInvalid = 629,
  kOneDeleted = 630,
  kDeleted = 631,
};

std::string Counted(const shell::StringTable& texts, std::int32_t count, MessageNumber one, MessageNumber many) {
  return count == 1 ? texts.Text(one) : shell::Subst(texts.Text(many), {std::to_string(count)});
}

}  // namespace

std::string ValidationMessage(const ValidationCounts& counts, std::string_view action,
                              const shell::StringTable& texts) {
  std::string message;
  if (counts.correct > 0) {
    message = Counted(texts, counts.correct, kOneCorrect, kCorrect);
    if (counts.noSegment > 0)
      message += kLineBreak + Counted(texts, counts.noSegment, kOneHasNoSegment, kHaveNoSegment);
  }
  const auto add = [&](std::int32_t count, MessageNumber one, MessageNumber many) {
    if (count > 0) message += kLineBreak + Counted(texts, count, one, many);
  };
  const std::int32_t changed = counts.rules - counts.correct;
  if (action == kLeave) add(changed, kOneLeftInvalid, kLeftInvalid);
  if (action == kDelete) add(changed, kOneDeleted, kDeleted);
  if (action == kRepair) {
    add(counts.validated, kOneValidated, kValidated);
    add(counts.notValidated, kOneNotValidated, kNotValidated);
  }
  return message;
}

}  // namespace qmrules::validation
