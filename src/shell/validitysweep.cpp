#include "shell/validitysweep.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "catalogue/gateway.h"
#include "catalogue/ignorederrors.h"

namespace qmrules::shell {

using platform::Timestamp;

namespace {

constexpr std::string_view kInvalid = "Invalid";
constexpr std::string_view kPotentiallyInvalid = "Potentially invalid";

// The dates of the source files, each asked for once. Nothing stands for a missing file.
class FileDates {
 public:
  FileDates(const platform::FileSystem& fileSystem, std::string_view folder)
      : fileSystem_(fileSystem), folder_(folder) {}

  const std::optional<Timestamp>& Of(const std::string& fileName) {
    const auto [entry, isNew] = dates_.try_emplace(fileName);
    if (isNew) entry->second = LookUp(fileName);
    return entry->second;
  }

 private:
  std::optional<Timestamp> LookUp(const std::string& fileName) const {
    std::optional<Timestamp> date;
    catalogue::WithErrorsIgnored([&] {
      const std::string path = fileSystem_.ResolveInside(folder_, fileName);
      if (fileSystem_.Exists(path)) date = fileSystem_.DateLastModified(path);
    });
    return date;
  }

  const platform::FileSystem& fileSystem_;
  std::string folder_;
  std::unordered_map<std::string, std::optional<Timestamp>> dates_;
};

struct Demotion {
  std::int32_t ruleID = 0;
  std::string_view validity;
};

// The validity that the rule falls to; "" when it stays as it is.
std::string_view ValidityOf(const platform::Value& validated, const std::optional<Timestamp>& fileDate) {
  if (!fileDate) return kInvalid;
  // A rule without a date was never validated, which is earlier than any date.
  if (validated.IsAbsent() || validated.Time() < *fileDate) return kPotentiallyInvalid;
  return {};
}

}  // namespace

// Only the IDs of rules to demote are kept: the writes wait for the end of the walk, so that the store is not held
// against other writers while files are looked up.
SweepCounts RunValiditySweep(platform::Repository& repository, const platform::FileSystem& fileSystem,
                             std::string_view sourceFolder) {
  FileDates dates(fileSystem, sourceFolder);
  std::vector<Demotion> demotions;
  SweepCounts counts;

  const auto fetch = catalogue::NewQuery(repository);
  fetch->SetRoot(fetch->AddObject(false, catalogue::kRule, "ID,>FileName,Valid,Validated", "Valid=Valid"));
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    const std::string fileName = fetch->Row().Item("FileName").Text();
    if (fileName.empty()) continue;
    ++counts.looked;
    const std::string_view validity = ValidityOf(fetch->Row().Item("Validated").Value(), dates.Of(fileName));
    if (validity.empty()) continue;
    demotions.push_back({catalogue::IDField(fetch->Row(), "ID"), validity});
    ++(validity == kInvalid ? counts.invalid : counts.potentiallyInvalid);
  }
  fetch->Reset();
  if (demotions.empty()) return counts;

  const auto command = repository.BeginCommand("ValiditySweep");
  const auto transaction = repository.BeginTransaction();
  for (const Demotion& demotion : demotions) {
    const auto rule = repository.object(catalogue::MakeKey(catalogue::kRule, demotion.ruleID));
    rule->Edit();
    rule->Attrs("Valid", demotion.validity);
    rule->Post();
  }
  transaction->Commit();
  return counts;
}

}  // namespace qmrules::shell
