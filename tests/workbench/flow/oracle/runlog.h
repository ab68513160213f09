#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

namespace qmrules::test {

// What a run of an instrumented program has told (oracleruntime.c). Rows are those of the plain text, from 1.
struct RunEvent {
  enum class Kind : std::uint8_t { Runs, ComesOut, Reads };
  Kind kind = Kind::Runs;
  std::uint32_t row = 0;
  bool sense = false;  // ComesOut
  // Reads: the data item; "PROGRAM/AREA", the item of level 01 or 77 of the program that wrote the bytes, and these
  // bytes of it; the row of the statement that wrote them, 0 for what that program starts with.
  std::string name, area;
  std::uint64_t begin = 0, end = 0;
  std::uint32_t writer = 0;
};

// Throws std::invalid_argument, naming the line, for one that is none of a log.
std::vector<RunEvent> ReadRunLog(std::istream& log);

}  // namespace qmrules::test
