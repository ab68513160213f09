#include "workbench/dataflow/dataflowdatabase.h"

#include "workbench/databases/databasefile.h"

namespace qmrules::workbench {

namespace {

constexpr DatabaseFormat dataflowFormat{.applicationID = 0x514D4446, .version = 1};  // "QMDF"

constexpr const char* dataflowTables = R"(
CREATE TABLE Report (
  ID INTEGER PRIMARY KEY,
  PrevID INTEGER NOT NULL,
  Sid TEXT NOT NULL,
  ObjName TEXT NOT NULL,
  QMID INTEGER NOT NULL,
  Context TEXT NOT NULL DEFAULT '',
  "Offset" INTEGER NOT NULL DEFAULT 0,
  Size INTEGER NOT NULL DEFAULT 0,
  RelType TEXT NOT NULL DEFAULT '',
  PortFlag TEXT NOT NULL DEFAULT 'n' CHECK (PortFlag IN ('n', 'i', 'o')),
  Duplicate TEXT NOT NULL DEFAULT ''
);
CREATE TABLE ExternalRelationships (
  VarQMID TEXT NOT NULL,
  Dir TEXT NOT NULL CHECK (Dir IN ('IN', 'OUT', 'INOUT'))
);
CREATE INDEX ExternalRelationshipsVarQMID ON ExternalRelationships (VarQMID)
)";

}  // namespace

void CreateDataflowDatabase(const std::string& path) {
  CreateDatabaseFile(path, dataflowFormat, dataflowTables);
}

}  // namespace qmrules::workbench
