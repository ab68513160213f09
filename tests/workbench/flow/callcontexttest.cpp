#include "workbench/flow/callcontext.h"

#include <gtest/gtest.h>

#include <vector>

#include "workbench/flow/programnetwork.h"

namespace qmrules::test {
namespace {

using workbench::flow::CallContext;
using workbench::flow::CallPassed;
using workbench::flow::Covers;
using workbench::flow::Entered;
using workbench::flow::kMostOpenCalls;
using workbench::flow::Left;
using workbench::flow::NetworkProgram;

TEST(CallContexts, CallsAreLeftInTheOppositeOrder) {
  NetworkProgram first;
  NetworkProgram second;
  const CallContext context = Entered(Entered({}, {&first, 7}), {&second, 9});
  EXPECT_EQ(context, (CallContext{{&first, 7}, {&second, 9}}));
  EXPECT_EQ(Left(context), (CallContext{{&first, 7}}));
  EXPECT_EQ(Left(Left(Left(context))), CallContext());
}

TEST(CallContexts, OneThatKnowsFewerOuterCallsCoversTheOther) {
  NetworkProgram first;
  NetworkProgram second;
  const CallPassed outer{&first, 7};
  const CallPassed inner{&second, 9};
  EXPECT_TRUE(Covers({}, {outer, inner}));
  EXPECT_TRUE(Covers({inner}, {outer, inner}));
  EXPECT_TRUE(Covers({outer, inner}, {outer, inner}));
  EXPECT_FALSE(Covers({outer}, {outer, inner}));
  EXPECT_FALSE(Covers({outer, inner}, {inner}));
  EXPECT_FALSE(Covers({{&first, 8}, inner}, {outer, inner}));
}

TEST(CallContexts, AProgramThatCallsAgainForgetsWhatWasAroundItsFirstCall) {
  NetworkProgram outer;
  NetworkProgram ping;
  NetworkProgram pong;
  const CallContext context = Entered(Entered(Entered({}, {&outer, 1}), {&ping, 2}), {&pong, 3});
  EXPECT_EQ(Entered(context, {&ping, 2}), (CallContext{{&pong, 3}, {&ping, 2}}));
  EXPECT_EQ(Entered({{&ping, 2}}, {&ping, 4}), (CallContext{{&ping, 4}}));
}

TEST(CallContexts, TheOutermostCallsAreForgottenWhereThereAreTooMany) {
  std::vector<NetworkProgram> programs(kMostOpenCalls + 2);
  CallContext context;
  for (NetworkProgram& program : programs) context = Entered(context, {&program, 1});
  ASSERT_EQ(context.size(), kMostOpenCalls);
  EXPECT_EQ(context.front().program, &programs[2]);
  EXPECT_EQ(context.back().program, &programs.back());
}

}  // namespace
}  // namespace qmrules::test
