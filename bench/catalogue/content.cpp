#include "catalogue/content.h"

#include <fmt/format.h>

#include <array>
#include <cstdint>
#include <string_view>

namespace qmrules::bench {

namespace {

constexpr std::array<std::string_view, 60> words = {
    "Account", "Balance",   "Customer", "Payment",  "Interest", "Overdraft", "Limit",     "Branch",  "Ledger",
    "Posting", "Invoice",   "Discount", "Premium",  "Policy",   "Claim",     "Benefit",   "Pension", "Salary",
    "Tax",     "Allowance", "Currency", "Exchange", "Rate",     "Term",      "Maturity",  "Loan",    "Mortgage",
    "Deposit", "Credit",    "Debit",    "Transfer", "Order",    "Delivery",  "Warehouse", "Stock",   "Supplier",
    "Price",   "Quantity",  "Unit",     "Charge",   "Fee",      "Penalty",   "Notice",    "Period",  "Calendar",
    "Holiday", "Batch",     "Header",   "Trailer",  "Record",   "Status",    "Reason",    "Code",    "Check",
    "Compute", "Validate",  "Assign",   "Report",   "Prüfung",  "Größe"};

constexpr std::array<std::string_view, 40> fieldWords = {
    "ACCT",  "BAL",  "CUST",  "PAYM",  "INTR",  "OVRD",  "LIMT",  "BRNCH", "LEDG", "POST",
    "INVC",  "DISC", "PREM",  "POLCY", "CLAIM", "BENF",  "PENS",  "SALRY", "TAX",  "ALLOW",
    "CURR",  "EXCH", "RATE",  "TERM",  "MATUR", "LOAN",  "MORTG", "DEPO",  "CRED", "DEBT",
    "TRANS", "ORDR", "DELIV", "WHSE",  "STOCK", "SUPPL", "PRICE", "QTY",   "UNIT", "COLLATERAL"};

// A sequence of numbers that depends on nothing but its start. Starts are spread by another factor than steps, so that
// no sequence runs into the next one's.
class Numbers {
 public:
  explicit Numbers(std::uint64_t start) : state_(start * 0xD1342543DE82EF95ULL + 1) {}

  // 0 to limit - 1.
  std::size_t Below(std::size_t limit) {
    state_ += 0x9E3779B97F4A7C15ULL;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9ULL;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBULL;
    return static_cast<std::size_t>((mixed ^ (mixed >> 31U)) % limit);
  }

 private:
  std::uint64_t state_;
};

std::string_view Word(Numbers& numbers) {
  return words[numbers.Below(words.size())];
}
std::string_view FieldWord(Numbers& numbers) {
  return fieldWords[numbers.Below(fieldWords.size())];
}

// A text of at least `shortest` and less than about `longest` bytes.
std::string Sentence(Numbers& numbers, std::size_t shortest, std::size_t longest) {
  const std::size_t length = shortest + numbers.Below(longest - shortest);
  std::string text;
  while (text.size() < length) {
    if (!text.empty()) text += ' ';
    text += Word(numbers);
  }
  return text + '.';
}

// COBOL lines of about 300 bytes together.
std::string SourceText(Numbers& numbers) {
  std::string text;
  while (text.size() < 280) {
    text += fmt::format("           MOVE WS-{}-{} TO OUT-{}-{}\n", FieldWord(numbers), FieldWord(numbers),
                        FieldWord(numbers), numbers.Below(1000));
  }
  return text;
}

IOContent MakeIO(Numbers& numbers, const std::string& name, bool isInput) {
  IOContent io;
  io.name = name;
  io.ioName = fmt::format("WS-{}-{:03}", FieldWord(numbers), numbers.Below(1000));
  io.kind = isInput ? "Input" : "Output";
  io.businessName = fmt::format("{} {}", Word(numbers), Word(numbers));
  io.description = Sentence(numbers, 60, 200);
  io.qmid = std::to_string(100000 + numbers.Below(900000));
  return io;
}

RuleContent MakeRule(Numbers& numbers, int number, int seqNo) {
  RuleContent rule;
  rule.name = fmt::format("n45990.51234.{}", number);
  rule.ruleName = fmt::format("{} {} {}", words[50 + numbers.Below(8)], Word(numbers), number % 1000);
  rule.seqNo = seqNo;
  rule.description = Sentence(numbers, 60, 200);
  rule.businessDescription = Sentence(numbers, 60, 200);
  const ProgramContent program = MakeProgram(number / kRulesPerProgram);
  rule.program = program.name;
  rule.fileName = program.fileName;
  rule.fromRow = 100 + static_cast<int>(numbers.Below(9000));
  rule.toRow = rule.fromRow + static_cast<int>(numbers.Below(30));
  rule.sourceText = SourceText(numbers);
  rule.valid = numbers.Below(10) == 0 ? "Invalid" : "Valid";
  for (int place = 0; place < kIOPerRule; ++place) {
    rule.io.push_back(MakeIO(numbers, fmt::format("n45990.51235.{}", number * kIOPerRule + place), place == 0));
  }
  return rule;
}

}  // namespace

ProgramContent MakeProgram(int number) {
  return {fmt::format("PGM{:05}", number), fmt::format("cobol\\PGM{:05}.cbl", number)};
}

FunctionContent MakeFunction(int number) {
  Numbers numbers(static_cast<std::uint64_t>(number));
  FunctionContent function;
  function.name = fmt::format("{} Function {:05}", words[numbers.Below(50)], number);
  function.description = Sentence(numbers, 60, 200);
  function.businessArea = Sentence(numbers, 60, 200);
  for (int place = 0; place < kSetsPerFunction; ++place) {
    const int setNumber = number * kSetsPerFunction + place;
    RuleSetContent set;
    set.name = fmt::format("{} {} Set {:06}", words[numbers.Below(50)], words[numbers.Below(50)], setNumber);
    set.description = Sentence(numbers, 60, 200);
    set.callName = fmt::format("n45990.51233.{}", setNumber);
    set.seqNo = place + 1;
    for (int rule = 0; rule < kRulesPerSet; ++rule) {
      set.rules.push_back(MakeRule(numbers, setNumber * kRulesPerSet + rule, rule + 1));
    }
    function.sets.push_back(std::move(set));
  }
  return function;
}

}  // namespace qmrules::bench
