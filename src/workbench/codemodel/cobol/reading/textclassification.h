#pragma once

#include <memory>

#include "workbench/codemodel/cobol/reading/lexer.h"
#include "workbench/codemodel/textclasses.h"

namespace qmrules::workbench::codemodel::cobol {

// The classes of a COBOL text by its tokens, as they stand in the file: COPY and REPLACE are not worked off. Takes any
// text.
//
// A word of the language that may also be a name (see IsReserved) has no class, unless it is a verb that begins its
// row. Within EXEC … END-EXEC the words are Embedded, but for host variables.
ClassedText ClassifyText(std::shared_ptr<const SourceFile> file, const LexerOptions& options);

}  // namespace qmrules::workbench::codemodel::cobol
