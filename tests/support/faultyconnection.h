#pragma once

#include <memory>
#include <string>

#include "workbench/repository/connection.h"

namespace qmrules::test {

// Where a faulty connection fails, shared by the test and the connection.
struct Fault {
  // The writing statement that fails, counted from 1 since the last Arm; 0 for none.
  int at = 0;
  // Writing statements that have been run or tried since then.
  int seen = 0;
  void Arm(int statement) {
    at = statement;
    seen = 0;
  }
};

// The text with which the statement fails.
inline constexpr const char* kFaultText = "There is no room left on the disk.";

// A connection on which one writing statement fails before it does anything: a step of an INSERT, UPDATE or DELETE, of
// a BEGIN, COMMIT, SAVEPOINT or RELEASE, and whatever else goes through Execute. A ROLLBACK never fails.
std::unique_ptr<workbench::repository::Connection> MakeFaulty(
    std::unique_ptr<workbench::repository::Connection> connection, std::shared_ptr<Fault> fault);

}  // namespace qmrules::test
