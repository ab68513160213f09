#include "workbench/glossary/glossary.h"

#include "workbench/databases/databasefile.h"

namespace qmrules::workbench {

namespace {

constexpr DatabaseFormat glossaryFormat{.applicationID = 0x514D474C, .version = 1};  // "QMGL"

constexpr const char* glossaryTables = R"(
CREATE TABLE Names (
  OriginalName TEXT NOT NULL,
  BusinessName TEXT NOT NULL DEFAULT '',
  Description TEXT NOT NULL DEFAULT '',
  SourceOfBusinessName TEXT NOT NULL DEFAULT ''
);
CREATE UNIQUE INDEX NamesPK ON Names (OriginalName)
)";

}  // namespace

void CreateGlossary(const std::string& path) {
  CreateDatabaseFile(path, glossaryFormat, glossaryTables);
}

}  // namespace qmrules::workbench
