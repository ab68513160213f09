#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace qmrules::bench {

// What a generated catalogue holds, made from the numbers of its parts alone, so that every run and both ways of
// writing have the same texts.

struct IOContent {
  std::string name;
  std::string ioName;
  std::string kind;
  std::string businessName;
  std::string description;
  std::string qmid;
};

struct RuleContent {
  std::string name;
  std::string ruleName;
  int seqNo = 0;
  std::string description;
  std::string businessDescription;
  std::string program;
  std::string fileName;
  int fromRow = 0;
  int toRow = 0;
  std::string sourceText;
  std::string valid;
  std::vector<IOContent> io;
};

struct RuleSetContent {
  std::string name;
  std::string description;
  std::string callName;
  int seqNo = 0;
  std::vector<RuleContent> rules;
};

struct FunctionContent {
  std::string name;
  std::string description;
  std::string businessArea;
  std::vector<RuleSetContent> sets;
};

inline constexpr int kSetsPerFunction = 20;
inline constexpr int kRulesPerSet = 50;
inline constexpr int kIOPerRule = 2;
inline constexpr int kRulesPerFunction = kSetsPerFunction * kRulesPerSet;

// The function's call of each rule set counts as an object.
inline constexpr int kObjectsPerFunction = 1 + 2 * kSetsPerFunction + kRulesPerFunction * (1 + kIOPerRule);

inline constexpr const char* kModel = "COBOL";
inline constexpr int kRulesPerProgram = 200;

// A program that rules point into.
struct ProgramContent {
  std::string name;
  std::string fileName;
};

// The program that the rules from number * kRulesPerProgram on point into, from 0.
ProgramContent MakeProgram(int number);

// The content of function `number`, from 0. About one rule name in sixty has the word "Overdraft", and about one data
// element in forty "COLLATERAL".
FunctionContent MakeFunction(int number);

}  // namespace qmrules::bench
