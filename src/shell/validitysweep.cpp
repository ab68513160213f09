#include "shell/validitysweep.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "catalogue/gateway.h"
#include "catalogue/ignorederrors.h"
#include "shell/casefold.h"

namespace qmrules::shell {

using platform::Timestamp;

namespace {

constexpr std::string_view kInvalid = "Invalid";
constexpr std::string_view kPotentiallyInvalid = "Potentially invalid";

// A source file's name and date; no date for a missing file.
using SourceFile = std::pair<const std::string, std::optional<Timestamp>>;

// The source files with their dates, each of which is asked for once.
class SourceFiles {
 public:
  SourceFiles(const platform::FileSystem& fileSystem, std::string_view folder)
      : fileSystem_(fileSystem), folder_(folder) {}

  // Stays where it is. Rules that were made together mostly point into one file.
  const SourceFile& Named(const std::string& fileName) {
    if (last_ != nullptr && last_->first == fileName) return *last_;
    const auto [entry, isNew] = files_.try_emplace(fileName);
    if (isNew) entry->second = LookUp(fileName);
    last_ = &*entry;
    return *last_;
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
  std::unordered_map<std::string, std::optional<Timestamp>> files_;
  const SourceFile* last_ = nullptr;
};

struct Demotion {
  std::int32_t ruleID = 0;
  std::string_view validity;
  const std::string* fileName = nullptr;
};

// By the files, and by the rules' IDs within a file. The rules come in the order of their IDs.
void SortByFile(std::vector<Demotion>& demotions) {
  std::stable_sort(demotions.begin(), demotions.end(), [](const Demotion& left, const Demotion& right) {
    return shell::CompareIgnoringCase(*left.fileName, *right.fileName) < 0;
  });
}

// The validity that the rule falls to; "" when it stays as it is.
std::string_view ValidityOf(const platform::Value& validated, const std::optional<Timestamp>& fileDate) {
  if (!fileDate) return kInvalid;
  // A rule without a date was never validated, which is earlier than any date.
  if (validated.IsAbsent() || validated.Time() < *fileDate) return kPotentiallyInvalid;
  return {};
}

}  // namespace

// Only the IDs of rules to demote are kept: the writes wait for the end of the walk, so that the store is not held
// against other writers while files are looked up. They are sorted here and not by the fetch, since they are few and
// the rules many.
SweepCounts RunValiditySweep(platform::Repository& repository, const platform::FileSystem& fileSystem,
                             std::string_view sourceFolder, platform::Progress& progress) {
  SourceFiles files(fileSystem, sourceFolder);
  std::vector<Demotion> demotions;
  SweepCounts counts;
  platform::PaintPauses pauses(progress);

  const auto fetch = catalogue::NewQuery(repository);
  fetch->SetRoot(fetch->AddObject(false, catalogue::kRule, "ID,FileName,Valid,Validated", "Valid=Valid"));
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    pauses.Turn();
    const std::string fileName = fetch->Row().Item("FileName").Text();
    if (fileName.empty()) continue;
    ++counts.looked;
    const SourceFile& file = files.Named(fileName);
    const std::string_view validity = ValidityOf(fetch->Row().Item("Validated").Value(), file.second);
    if (validity.empty()) continue;
    demotions.push_back({catalogue::IDField(fetch->Row(), "ID"), validity, &file.first});
    ++(validity == kInvalid ? counts.invalid : counts.potentiallyInvalid);
  }
  fetch->Reset();
  if (demotions.empty()) return counts;
  SortByFile(demotions);

  const auto command = repository.BeginCommand("ValiditySweep");
  const auto transaction = repository.BeginTransaction();
  for (const Demotion& demotion : demotions) {
    pauses.Turn();
    const auto rule = repository.object(catalogue::MakeKey(catalogue::kRule, demotion.ruleID));
    rule->Edit();
    rule->Attrs("Valid", demotion.validity);
    rule->Post();
  }
  transaction->Commit();
  return counts;
}

}  // namespace qmrules::shell
