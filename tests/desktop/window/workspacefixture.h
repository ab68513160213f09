#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/clock.h"
#include "support/temporaryfolder.h"
#include "workbench/host/embeddedhost.h"

namespace qmrules::test {

// A workspace "Demo" in a temporary folder, with two scanned programs and a small catalogue:
//
//   Billing  BUSINESSFUNC#1
//     Late fees  RULESET#1 with Fee RULE#1 (PAYFEE, rows 6 to 7) and Grace period RULE#2
//   Claims   BUSINESSFUNC#2
class WorkspaceFixture : public testing::Test {
 protected:
  WorkspaceFixture();

  std::string Root() const { return folder_.Path().string(); }
  workbench::HostServices Services() const;

  TemporaryFolder folder_;
  platform::FixedClock clock_;

 private:
  void Scan();
  void FillCatalogue();
};

}  // namespace qmrules::test
