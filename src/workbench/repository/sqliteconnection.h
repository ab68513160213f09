#pragma once

#include <memory>
#include <string>

#include "workbench/repository/connection.h"

namespace qmrules::workbench::repository {

enum class Durability {
  Full,     // a finished call survives a loss of power
  Relaxed,  // it survives the end of the process only; for scratch stores
};

// Opens a SQLite database, making the file when there is none; ":memory:" is a database without a file. Brings the
// functions that the store's statements use: qmlike(pattern, text) and the collation QMCASE, which ignores case.
// Waits up to `busyMilliseconds` for another process that writes. Throws platform::Error, naming the file.
std::unique_ptr<Connection> OpenSqliteConnection(const std::string& path, Durability durability,
                                                 int busyMilliseconds = 10000);

}  // namespace qmrules::workbench::repository
