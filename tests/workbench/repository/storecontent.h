#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace qmrules::test {

// Looks past the store at the database itself, over a connection of its own.

// Every row of every table, its columns joined by "|", by the table's name.
using StoreContent = std::map<std::string, std::vector<std::string>>;
StoreContent ReadContent(const std::string& path);

// The rows of a statement with that many columns: columns joined by "|", rows by ";".
std::string RunSql(const std::string& path, const std::string& sql, int columns = 0);

// The entries of the change journal behind entry `after`, oldest first: action, object, other (of a link) and changes,
// joined by " ".
std::vector<std::string> JournalEntries(const std::string& path, std::int64_t after = 0);
std::int64_t LastJournalEntry(const std::string& path);

}  // namespace qmrules::test
