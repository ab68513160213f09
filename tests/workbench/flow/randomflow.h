#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "workbench/flow/flowgraph.h"

namespace qmrules::test {

// How large a graph is to be.
struct RandomFlowSize {
  std::uint32_t labels = 4;
  std::uint32_t pointsOfLabel = 4;
  std::uint32_t ranges = 3;  // besides the program
  std::uint32_t conditions = 3;
};

// A small program: labels with statements, conditions, calls of ranges of labels, in part overlapping, backwards or in
// circles, and jumps anywhere. Conditions have nodes from 1 on, statements and calls nodes of their own from 1001 on.
workbench::flow::FlowGraph RandomFlow(std::mt19937& random, const RandomFlowSize& size);

// The nodes of its conditions, and those of its statements.
std::vector<workbench::flow::NodeId> ConditionsIn(const workbench::flow::FlowGraph& flow);
std::vector<workbench::flow::NodeId> StatementsIn(const workbench::flow::FlowGraph& flow);

}  // namespace qmrules::test
