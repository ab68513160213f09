// Several processes on one store.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <iostream>

#include "platform/error.h"
#include "platform/objectkey.h"
#include "support/errortext.h"
#include "support/temporaryfolder.h"
#include "workbench/repository/fetchrows.h"
#include "workbench/repository/sqliteconnection.h"
#include "workbench/repository/store.h"
#include "workbench/repository/storecontent.h"

namespace qmrules::test {
namespace {

namespace repository = workbench::repository;

// One byte at a time from one process to another.
class Signal {
 public:
  Signal() {
    if (pipe(ends_) != 0) throw std::runtime_error("no pipe can be made");
  }
  ~Signal() {
    close(ends_[0]);
    close(ends_[1]);
  }
  Signal(const Signal&) = delete;
  Signal& operator=(const Signal&) = delete;
  void Give() {
    const char byte = 1;
    if (write(ends_[1], &byte, 1) != 1) throw std::runtime_error("no signal can be given");
  }
  void Await() {
    char byte = 0;
    if (read(ends_[0], &byte, 1) != 1) throw std::runtime_error("no signal came");
  }

 private:
  int ends_[2] = {};
};

// Another process. It begins with the object; a connection to a database must not be open then, for a connection does
// not survive being shared with a child.
class Process {
 public:
  explicit Process(const std::function<void()>& work) : id_(fork()) {
    if (id_ < 0) throw std::runtime_error("no process can be made");
    if (id_ > 0) return;
    int status = 0;
    try {
      work();
    } catch (const std::exception& failure) {
      std::cerr << "the other process: " << failure.what() << std::endl;
      status = 1;
    }
    // Nothing of the parent's is tidied up here.
    _exit(status);
  }
  ~Process() {
    if (id_ > 0) Kill();
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  // The exit status; -1 when the process ended by a signal.
  int Wait() {
    int status = 0;
    waitpid(id_, &status, 0);
    id_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  void Kill() {
    kill(id_, SIGKILL);
    Wait();
  }

 private:
  pid_t id_;
};

class SharedStore : public ::testing::Test {
 protected:
  std::unique_ptr<platform::Repository> Open(int busyMilliseconds = 20000) {
    const auto connect = [busyMilliseconds](const std::string& file) {
      return repository::OpenSqliteConnection(file, repository::Durability::Relaxed, busyMilliseconds);
    };
    return repository::OpenStore({path, "", "analyst", connect}, clock);
  }
  static void Put(platform::Repository& store, const std::string& key, const std::string& attribute,
                  const platform::Value& value) {
    const auto object = store.object(key);
    object->Edit();
    object->Attrs(attribute, value);
    object->Post();
  }
  TemporaryFolder folder;
  std::string path = folder.File("catalogue.db");
  platform::FixedClock clock{*platform::ParseTimestamp("2026-01-31 12:00:00")};
};

TEST_F(SharedStore, TwoProcessesThatMakeItAtTheSameTimeBothGetIt) {
  for (int round = 0; round < 20; ++round) {
    path = folder.File(std::to_string(round) + ".db");
    const auto work = [&] { Open()->NewObject("RULE", "n"); };
    Process one(work);
    Process other(work);
    EXPECT_EQ(one.Wait(), 0);
    EXPECT_EQ(other.Wait(), 0);
    EXPECT_EQ(IDs(*Open(), "RULE", {}), "1;2");
  }
}

TEST_F(SharedStore, WhatTwoProcessesWriteAtTheSameTimeAllStands) {
  Open();
  const auto write = [&](const std::string& name) {
    const auto store = Open();
    for (int i = 0; i < 500; ++i) store->NewObject("RULE", name);
  };
  Process one([&] { write("one"); });
  Process other([&] { write("other"); });
  EXPECT_EQ(one.Wait(), 0);
  EXPECT_EQ(other.Wait(), 0);
  const auto store = Open();
  EXPECT_EQ(store->CountObjects("RULE", "Name=one"), 500);
  EXPECT_EQ(store->CountObjects("RULE", "Name=other"), 500);
  EXPECT_EQ(RunSql(path, "SELECT count(*) FROM VekJournalTbl WHERE Action = 'ADD'", 1), "1000");
  EXPECT_EQ(RunSql(path, "PRAGMA integrity_check", 1), "ok");
}

TEST_F(SharedStore, ChangesOfDifferentAttributesByTwoProcessesBothStand) {
  Open()->NewObject("RULE", "n");
  const auto change = [&](const std::string& attribute) {
    const auto store = Open();
    for (int i = 1; i <= 100; ++i) Put(*store, "RULE#1", attribute, attribute + std::to_string(i));
  };
  Process one([&] { change("RuleName"); });
  Process other([&] { change("Description"); });
  EXPECT_EQ(one.Wait(), 0);
  EXPECT_EQ(other.Wait(), 0);
  EXPECT_EQ(Select(*Open(), "RULE", "RuleName,Description", {}, {"RuleName", "Description"}),
            "RuleName100|Description100");
}

TEST_F(SharedStore, AHandleWritesOverAnotherProcessOnlyWhatItPut) {
  Open()->NewObject("RULE", "n");
  Signal go;
  Process other([&] {
    go.Await();
    Put(*Open(), "RULE#1", "Description", "by the other");
  });
  const auto store = Open();
  const auto rule = store->object("RULE#1");
  EXPECT_TRUE(rule->Attrs("Description").IsAbsent());
  rule->Edit();
  rule->Attrs("RuleName", "own");
  go.Give();
  EXPECT_EQ(other.Wait(), 0);
  rule->Post();
  EXPECT_EQ(rule->Attrs("Description"), platform::Value("by the other"));
  EXPECT_EQ(Select(*store, "RULE", "RuleName,Description", {}, {"RuleName", "Description"}), "own|by the other");
}

TEST_F(SharedStore, AChangeByAnotherProcessIsSeenAtTheNextFetchAndNotInARunningOne) {
  {
    const auto store = Open();
    for (int i = 0; i < 3; ++i) store->NewObject("RULE", "n");
  }
  Signal go;
  Process other([&] {
    go.Await();
    const auto store = Open();
    Put(*store, "RULE#3", "RuleName", "changed");
    store->object("RULE#2")->Delete();
    store->NewObject("RULE", "new");
  });
  const auto store = Open();
  const auto fetch = store->NewFetch();
  fetch->SetRoot(fetch->AddObject(false, "RULE", "ID,RuleName"));
  fetch->Execute("");
  go.Give();
  EXPECT_EQ(other.Wait(), 0);
  EXPECT_EQ(RestOfRows(*fetch, {"ID", "RuleName"}), "1|;2|;3|");
  EXPECT_EQ(Rows(*fetch, "", {"ID", "RuleName"}), "1|;3|changed;4|");
}

TEST_F(SharedStore, AWalkUnderWayDoesNotKeepFromWritingAfterAnotherProcess) {
  {
    const auto store = Open();
    for (int i = 0; i < 3; ++i) store->NewObject("RULE", "n");
  }
  Signal go;
  Process other([&] {
    go.Await();
    Put(*Open(), "RULE#3", "RuleName", "by the other");
  });
  const auto store = Open();
  const auto fetch = store->NewFetch();
  fetch->SetRoot(fetch->AddObject(false, "RULE", "ID,RuleName"));
  fetch->Execute("");
  go.Give();
  EXPECT_EQ(other.Wait(), 0);
  Put(*store, "RULE#2", "RuleName", "own");
  EXPECT_EQ(RestOfRows(*fetch, {"ID", "RuleName"}), "1|;2|;3|");
  EXPECT_EQ(Rows(*fetch, "", {"ID", "RuleName"}), "1|;2|own;3|by the other");
}

TEST_F(SharedStore, AProcessKilledInATransactionLeavesItsFinishedCallsWholeAndNoOther) {
  Open();
  Signal reached;
  Signal never;
  Process other([&] {
    const auto store = Open();
    for (int i = 0; i < 10; ++i) store->NewObject("RULE", "finished");
    const auto transaction = store->BeginTransaction();
    for (int i = 0; i < 200; ++i) {
      const auto rule = store->NewObject("RULE", "unfinished");
      Put(*store, rule->Key(), "SourceText", std::string(20000, 'x'));
    }
    reached.Give();
    never.Await();
  });
  reached.Await();
  other.Kill();
  EXPECT_EQ(RunSql(path, "PRAGMA integrity_check", 1), "ok");
  const auto store = Open();
  EXPECT_EQ(store->CountObjects("RULE", {}), 10);
  EXPECT_EQ(store->CountObjects("RULE", "Name=finished"), 10);
  EXPECT_EQ(RunSql(path, "SELECT count(*) FROM VekJournalTbl", 1), "10");
  EXPECT_EQ(store->NewObject("RULE", "next")->Key(), "RULE#11");
}

TEST_F(SharedStore, AProcessKilledBetweenCallsLeavesThemAll) {
  Signal reached;
  Signal never;
  Process other([&] {
    const auto store = Open();
    for (int i = 0; i < 10; ++i) store->NewObject("RULE", "finished");
    reached.Give();
    never.Await();
  });
  reached.Await();
  other.Kill();
  EXPECT_EQ(Open()->CountObjects("RULE", {}), 10);
}

TEST_F(SharedStore, WhileAnotherProcessWritesReadingGoesOnAndWritingIsRefused) {
  Open()->NewObject("RULE", "n");
  Signal holds;
  Signal release;
  Process other([&] {
    const auto store = Open();
    const auto transaction = store->BeginTransaction();
    store->NewObject("RULE", "in the making");
    holds.Give();
    release.Await();
    transaction->Commit();
  });
  holds.Await();
  const auto store = Open(20);
  EXPECT_EQ(IDs(*store, "RULE", {}), "1");
  const std::string text =
      "The catalogue \"" + path + "\" is in use by another process; try again when it has finished.";
  EXPECT_EQ(ErrorText([&] { store->NewObject("RULE", "refused"); }), text);
  EXPECT_EQ(ErrorText([&] { static_cast<void>(store->BeginTransaction()); }), text);
  EXPECT_EQ(ErrorText([&] { store->object("RULE#1")->Delete(); }), text);
  release.Give();
  EXPECT_EQ(other.Wait(), 0);
  EXPECT_EQ(store->NewObject("RULE", "later")->Key(), "RULE#3");
  EXPECT_EQ(IDs(*store, "RULE", {}), "1;2;3");
}

}  // namespace
}  // namespace qmrules::test
