#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/timestamp.h"
#include "validation/validationservices.h"

namespace qmrules::validation {

// Writes the results of a validation to the rules, each with its record in the activity log, in the order in which they
// come in. Rules are written many in one transaction. When one of them fails, the transaction is undone and its rules
// are written again one by one, so that those before the failing one stand, and it and those behind it are as they
// were.
class ValidationWriter {
 public:
  // Results in one transaction.
  static constexpr std::size_t kRulesTogether = 200;

  explicit ValidationWriter(const ValidationServices& services) : services_(services) {}
  ValidationWriter(const ValidationWriter&) = delete;
  ValidationWriter& operator=(const ValidationWriter&) = delete;

  // Each throws Error when the store refuses this rule or one before it, and, with NarrowLogIds set, at a rule whose
  // number does not fit; a rule of DeleteSegment has lost its data elements then.
  void PutCorrect(std::int32_t ruleID);
  void PutInvalid(std::int32_t ruleID);
  void DeleteSegment(std::int32_t ruleID);
  // Takes any number. The action that led here makes no difference.
  void WriteValidationResult(std::int32_t ruleID, bool found, std::int32_t fromRow, std::int32_t toRow,
                             std::string text);

  // Writes what is held back. To be called at the end; without it that is lost. Throws as above.
  void Finish();

 private:
  enum class Kind { Correct, Invalid, Deleted, Moved, NotFound };
  struct Result {
    Kind kind = Kind::Correct;
    std::int32_t ruleID = 0;
    std::int32_t fromRow = 0;
    std::int32_t toRow = 0;
    std::string text;
  };

  void Add(Result result);
  void WriteTogether();
  void WriteOneByOne();
  void Write(const Result& result);
  void RefuseWideID(const Result& result) const;
  void Log(std::int32_t ruleID, int text);

  ValidationServices services_;
  std::vector<Result> held_;
};

}  // namespace qmrules::validation
