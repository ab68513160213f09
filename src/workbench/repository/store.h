#pragma once

#include <memory>
#include <string>

#include "platform/clock.h"
#include "platform/repository.h"
#include "workbench/repository/connection.h"

namespace qmrules::workbench::repository {

struct StoreOptions {
  std::string path;           // the database file, or ":memory:"
  std::string extensionPath;  // the schema document of the site's own attributes; "" or a missing file for none
  std::string userName;       // for CreatedBy, ModifiedBy and the journal
  ConnectionFactory connect;  // opens the database; OpenSqliteConnection when empty
};

// Opens the catalogue's store, making it when the file does not exist or is empty, and moving it forward when it is of
// an older form. Two processes may have one store open. `clock` outlives the store. Throws platform::Error, naming the
// file and what to do, with nothing changed: for a file that is no catalogue, is damaged or of a newer version, and for
// an extension document that is not XML or has an unknown type.
std::unique_ptr<platform::Repository> OpenStore(const StoreOptions& options, const platform::Clock& clock);

}  // namespace qmrules::workbench::repository
