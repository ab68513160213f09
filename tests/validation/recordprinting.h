#pragma once

#include <gtest/gtest.h>

#include <ostream>

#include "validation/segmentcomparison.h"
#include "validation/segmentrelocation.h"

// How the records of validation look in the message of a failed test.
namespace qmrules::validation {

inline void PrintTo(const RowRange& rows, std::ostream* out) {
  *out << rows.FromRow << "-" << rows.ToRow;
}

inline void PrintTo(const SegmentPlace& place, std::ostream* out) {
  *out << place.FromRow << "-" << place.ToRow << " " << testing::PrintToString(place.SegText);
}

inline void PrintTo(const MatchRecord& match, std::ostream* out) {
  *out << match.FromRow << "-" << match.ToRow << " " << testing::PrintToString(match.SegText);
}

inline void PrintTo(const RuleRecord& record, std::ostream* out) {
  *out << record.RuleID << " " << record.FromRow << "-" << record.ToRow << (record.Valid ? " valid " : " invalid ")
       << testing::PrintToString(record.SegText);
}

}  // namespace qmrules::validation
