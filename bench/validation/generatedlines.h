#pragma once

#include <cstddef>
#include <string>

namespace qmrules::bench {

// The text of a file of so many lines, none of them blank. The same each time.
std::string DistinctLines(std::size_t lines);
// Lines drawn at random from so many that about half of them are distinct.
std::string HalfDistinctLines(std::size_t lines);
// Half of them drawn from a small stock, the others each its own.
std::string StockAndUniqueLines(std::size_t lines);
// One line again and again, or two in turn.
std::string RepeatedLine(std::size_t lines);
std::string AlternatingLines(std::size_t lines);

}  // namespace qmrules::bench
