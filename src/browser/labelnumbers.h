#pragma once

// The numbers of the labels that more than one part of the browser shows.
namespace qmrules::browser {

inline constexpr int kNoTrigger = 162;
inline constexpr int kRulesLabel = 182;

}  // namespace qmrules::browser
