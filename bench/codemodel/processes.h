#pragma once

#include "bars.h"
#include "codemodel/programs.h"

namespace qmrules::bench {

// Whole processes, each on the program of a file: reads it, models it and ends.
//
// Our own beside the syntax check of a compiler, on the first set: bar beside_compiler, the ratio of the times.
void MeasureBesideCompiler(const std::string& self, const ProgramSet& set, const std::string& folder, Bars& bars);
// The peak of resident memory over the source's bytes: bar memory_NAME.
void MeasureMemory(const std::string& self, const ProgramSet& set, const std::string& folder, Bars& bars);

// What such a process of our own does. Writes the bytes of its peak of resident memory at the end.
void TranslateFile(const std::string& path);

}  // namespace qmrules::bench
