#include "platform/tracelog.h"

#include <gtest/gtest.h>

namespace qmrules::platform {
namespace {

TEST(TraceLog, SectionsHoldEntriesAndEndWithTheirScope) {
  MemoryTraceLog log;
  {
    const TraceSection section(log, "AutoDetect", "TMI|.AutoDetect");
    log.Entry("RunRipple");
    const TraceSection inner(log, "CreateRules", "TMI|.CreateRules");
    log.Entry("done");
  }
  EXPECT_EQ(log.Lines(), (std::vector<std::string>{"> AutoDetect [TMI|.AutoDetect]", "  RunRipple",
                                                   "  > CreateRules [TMI|.CreateRules]", "    done", "  < CreateRules",
                                                   "< AutoDetect"}));
}

}  // namespace
}  // namespace qmrules::platform
