#include "validation/validationwriter.h"

#include <fmt/format.h>

#include <limits>
#include <utility>

#include "catalogue/activitylog.h"
#include "catalogue/gateway.h"
#include "platform/error.h"
#include "segments/rulesegments.h"

namespace qmrules::validation {

namespace {

constexpr int kSegmentDeleted = 599;
constexpr int kValidatedEntry = 639;

}  // namespace

void ValidationWriter::PutCorrect(std::int32_t ruleID) {
  Add({Kind::Correct, ruleID, 0, 0, {}});
}

void ValidationWriter::PutInvalid(std::int32_t ruleID) {
  Add({Kind::Invalid, ruleID, 0, 0, {}});
}

void ValidationWriter::DeleteSegment(std::int32_t ruleID) {
  Add({Kind::Deleted, ruleID, 0, 0, {}});
}

void ValidationWriter::WriteValidationResult(std::int32_t ruleID, bool found, std::int32_t fromRow, std::int32_t toRow,
                                             std::string text) {
  Add({found ? Kind::Moved : Kind::NotFound, ruleID, fromRow, toRow, std::move(text)});
}

void ValidationWriter::Add(Result result) {
  held_.push_back(std::move(result));
  if (held_.size() >= kRulesTogether) Finish();
}

void ValidationWriter::Finish() {
  try {
    WriteTogether();
  } catch (const platform::Error&) {
    // What failed fails here too, unless it was a passing trouble; its error is the one that is told.
    WriteOneByOne();
  }
  held_.clear();
}

void ValidationWriter::WriteTogether() {
  const auto transaction = services_.FE.Repository().BeginTransaction();
  for (const Result& result : held_) Write(result);
  transaction->Commit();
}

void ValidationWriter::WriteOneByOne() {
  for (const Result& result : std::exchange(held_, {})) {
    if (result.kind == Kind::Deleted) segments::DeleteRuleIO(services_.FE.Repository(), result.ruleID);
    const auto transaction = services_.FE.Repository().BeginTransaction();
    Write(result);
    transaction->Commit();
  }
}

// The change and its log record stand or fall together.
void ValidationWriter::Write(const Result& result) {
  if (result.kind == Kind::Deleted) segments::DeleteRuleIO(services_.FE.Repository(), result.ruleID);
  const auto now = services_.clock.Now();
  const auto rule = services_.FE.Repository().object(catalogue::MakeKey(catalogue::kRule, result.ruleID));
  rule->Edit();
  if (result.kind == Kind::Deleted) {
    segments::PutSegment(*rule, {}, now);
  } else {
    if (result.kind == Kind::Moved) {
      rule->Attrs("FromRow", result.fromRow);
      rule->Attrs("ToRow", result.toRow);
      rule->Attrs("SourceText", result.text);
    }
    const bool isValid = result.kind == Kind::Correct || result.kind == Kind::Moved;
    rule->Attrs("Valid", isValid ? "Valid" : "Invalid");
    rule->Attrs("Validated", now);
  }
  RefuseWideID(result);
  Log(result.ruleID, kValidatedEntry);
  if (result.kind == Kind::Deleted) Log(result.ruleID, kSegmentDeleted);
  rule->Post();
}

void ValidationWriter::RefuseWideID(const Result& result) const {
  const bool isNarrowed = result.kind == Kind::Correct || result.kind == Kind::Invalid || result.kind == Kind::Deleted;
  if (!services_.globals.NarrowLogIds || !isNarrowed) return;
  if (result.ruleID <= std::numeric_limits<std::int16_t>::max()) return;
  throw platform::Error(fmt::format("Overflow: the number of RULE#{} is too large for a log record.", result.ruleID));
}

void ValidationWriter::Log(std::int32_t ruleID, int text) {
  catalogue::AddActivity(services_.FE, services_.clock, ruleID, services_.texts.Text(text));
}

}  // namespace qmrules::validation
