#pragma once

// The numbers of the messages that more than one routine here may answer.
namespace qmrules::editing {

inline constexpr int kProbablyExists = 603;
inline constexpr int kCurrentProjectOnly = 625;

}  // namespace qmrules::editing
