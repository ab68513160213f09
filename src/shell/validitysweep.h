#pragma once

#include <cstdint>
#include <string_view>

#include "platform/filesystem.h"
#include "platform/progress.h"
#include "platform/repository.h"

namespace qmrules::shell {

struct SweepCounts {
  std::int64_t looked = 0;              // rules with a file that counted as valid
  std::int64_t invalid = 0;             // of these: the file is missing
  std::int64_t potentiallyInvalid = 0;  // of these: the file is younger than the last validation
  friend bool operator==(const SweepCounts&, const SweepCounts&) = default;
};

// Demotes, over all projects, the rules that stand as "Valid" and whose source file has vanished ("Invalid") or was
// changed after the rule was last validated ("Potentially invalid"; the same second does not count). A file whose date
// cannot be had, or whose name leads out of `sourceFolder`, counts as missing. Each file is looked up once. Rules
// without a file are left alone. `progress` shows nothing of it, and only lets the host paint. The changes take effect
// together; throws Error when the store refuses one.
SweepCounts RunValiditySweep(platform::Repository& repository, const platform::FileSystem& fileSystem,
                             std::string_view sourceFolder, platform::Progress& progress);

}  // namespace qmrules::shell
