#pragma once

#include <string>

namespace qmrules::workbench {

// Makes the glossary's database: the table `Names`, from a program's technical names to business names and
// descriptions, with the unique index `NamesPK` on OriginalName. Technical names compare exactly; they are kept in
// upper case. Throws platform::Error, naming the file, when there is one already or it cannot be made; nothing is left
// then.
void CreateGlossary(const std::string& path);

}  // namespace qmrules::workbench
