#pragma once

#include "bars.h"
#include "validation/workload.h"

namespace qmrules::bench {

// The comparing of rules whose segments stand, beside the reading, decoding and splitting of the same files.
void MeasureComparing(Workload& workload, int rounds, Bars& bars);
// The moving of rules whose segments stand elsewhere, without the writes, beside what any index of the same files has
// to do: reading, splitting, and trimming, folding and hashing each line.
void MeasureMoving(Workload& workload, int rounds, Bars& bars);
// The writing of results, beside hand-written statements for the same rows in transactions of the same size. Works on
// copies of the catalogue.
void MeasureWriting(Workload& workload, int rounds, Bars& bars);

}  // namespace qmrules::bench
