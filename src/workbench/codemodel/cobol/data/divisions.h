#pragma once

#include "workbench/codemodel/cobol/data/datadivision.h"
#include "workbench/codemodel/cobol/data/headcontext.h"
#include "workbench/codemodel/cobol/data/itemstack.h"

// The divisions before the procedure division, and the parts of them that have a form of their own. Each routine begins
// behind the header of its part and ends at the next header.
namespace qmrules::workbench::codemodel::cobol {

// From the division's header on, when there is one.
void ParseIdentification(HeadContext& context, ProgramHead& head);

void ParseEnvironment(HeadContext& context);
void ParseSpecialNames(HeadContext& context);
void ParseFileControl(HeadContext& context);
void ParseIOControl(HeadContext& context);

void ParseDataDivision(HeadContext& context);
// One entry FD, SD, RD or CD with its full stop, the node open: what it describes.
void ParseFileDescription(HeadContext& context, NodeId file);
void ParseReportDescription(HeadContext& context, NodeId report);
void ParseCommunicationDescription(HeadContext& context, NodeId description);

}  // namespace qmrules::workbench::codemodel::cobol
