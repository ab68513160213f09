#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "catalogue/content.h"
#include "platform/clock.h"
#include "platform/repository.h"

namespace qmrules::bench {

// The user and the moment of everything that is written here.
inline constexpr const char* kUser = "bench";
inline constexpr const char* kProject = "Benchmark";
platform::FixedClock& BenchClock();

// A generated catalogue: one project with functions, each with its rule sets, rules and data elements, and with the
// programs that the rules point into.
struct Catalogue {
  std::string path;
  int functions = 0;
  std::string projectKey;
  int projectID = 0;
  // IDs run from 1, in the order of making.
  int Sets() const { return functions * kSetsPerFunction; }
  int Rules() const { return functions * kRulesPerFunction; }
  int Programs() const { return Rules() / kRulesPerProgram; }
};

// The catalogue of this many functions in the folder, which exists, made through the repository when there is none yet
// or when its tables are not those of today's store. Prints what it does and how long it takes.
Catalogue OpenOrGenerate(const std::string& folder, int functions);

// The store of that file, opened as the product opens it.
std::unique_ptr<platform::Repository> OpenRepository(const std::string& path);

// Writes the function and all below it through the repository.
void WriteFunction(platform::Repository& repository, std::string_view projectKey, const FunctionContent& function);

}  // namespace qmrules::bench
