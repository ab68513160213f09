#pragma once

#include <cstdint>

#include "platform/repository.h"

namespace qmrules::workbench::repository {

class StoreSession;

// Reads from the change journal what other processes have written, for Repository::TakeForeignChanges.
class ForeignChangeReader {
 public:
  // What is in the store now counts as known. Throws platform::Error when it cannot be read.
  explicit ForeignChangeReader(StoreSession& session);

  platform::ForeignChanges Take();

 private:
  struct Entries;
  Entries ReadEntries();

  StoreSession& session_;
  std::int64_t version_ = 0;    // of the last look at the store
  std::int64_t lastEntry_ = 0;  // the last one that was read
};

}  // namespace qmrules::workbench::repository
