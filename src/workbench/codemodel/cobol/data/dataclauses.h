#pragma once

#include "workbench/codemodel/cobol/data/headcontext.h"
#include "workbench/codemodel/cobol/data/itemstack.h"

// The clauses of data description entries. Each routine consumes nothing and gives false when no clause of its kind
// begins at the cursor.
namespace qmrules::workbench::codemodel::cobol {

// The clauses that all sections have.
bool ParseDataClause(HeadContext& context, ItemStack& items, ItemDescription& item);
// Those of reports and of screens alone.
bool ParseReportClause(HeadContext& context, ItemDescription& item);
bool ParseScreenClause(HeadContext& context, ItemDescription& item);
// True for a word that begins one of the first, of the second, and of the third.
bool BeginsDataClause(Word word);
bool BeginsReportClause(Word word);
bool BeginsScreenClause(const HeadContext& context);

// VALUE in all its forms, the word itself consumed.
void ParseValues(HeadContext& context, ItemDescription& item);

}  // namespace qmrules::workbench::codemodel::cobol
