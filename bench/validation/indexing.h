#pragma once

#include "bars.h"

namespace qmrules::bench {

// The index of a file: what a line costs at one million lines and at four, in time and in memory.
void MeasureGrowth(Bars& bars);
// The same of files that repeat themselves, beside a file that does not.
void MeasureRepeats(Bars& bars);
// What a search costs by the length of the segment and by the number of matches.
void MeasureSearches(Bars& bars);

}  // namespace qmrules::bench
