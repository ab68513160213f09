#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "workbench/databases/sqlitehandles.h"

namespace qmrules::workbench {

// What marks a database file as one of this product's: the kind and the version of its layout stand in its header.
struct DatabaseFormat {
  std::int32_t applicationID = 0;
  std::int32_t version = 1;
};

// Makes a database file of this format by running the statements. Throws platform::Error, naming the file, when there
// is a file of this name or it cannot be made; no new file is left then.
void CreateDatabaseFile(const std::string& path, const DatabaseFormat& format, const char* statements);

// Opens an existing SQLite database for reading and, where its permissions allow it, writing. Takes "/" and "\" alike.
// Throws platform::Error, naming the file as given, when there is none or it is no database.
SqliteConnection OpenDatabaseFile(std::string_view path);

}  // namespace qmrules::workbench
