#pragma once

namespace qmrules::validation {

// How a segment that no longer stands at its rows is looked for in its file. Lines are compared without the blanks at
// their ends; only the space is a blank.
//
//   Simple                    blank lines are lines like any other; case counts; the nearest occurrence
//   IgnoreBlankLines          blank lines are passed over on both sides; case counts; the first occurrence
//   ApproximateLineComparing  the same, and lines may differ by up to kMaxLineDistance characters
//   MultipleMatching          blank lines are passed over, case does not count; the nearest of all occurrences, found
//                             in one index of the file for all its rules (segmentrelocation.h)
enum class ComparisonMethod { Simple, IgnoreBlankLines, ApproximateLineComparing, MultipleMatching };

// The one that validation uses. The others work as well: this is the one place to change.
inline constexpr ComparisonMethod kComparisonMethod = ComparisonMethod::MultipleMatching;

}  // namespace qmrules::validation
