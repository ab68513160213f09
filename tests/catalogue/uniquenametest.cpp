#include "catalogue/uniquename.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "shell/text.h"

namespace qmrules::catalogue {
namespace {

constexpr int kNamesPerProcess = 10000;

// Forks a process that makes names and writes them, one a line, into a pipe; gives the reading end.
int StartNameMaker() {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) return -1;
  const pid_t child = fork();
  if (child != 0) {
    close(ends[1]);
    return ends[0];
  }
  close(ends[0]);
  bool written = true;
  for (int made = 0; made < kNamesPerProcess && written; ++made) {
    const std::string line = UniqueName() + "\n";
    written = write(ends[1], line.data(), line.size()) == static_cast<ssize_t>(line.size());
  }
  _exit(written ? 0 : 1);
}

void TakeLines(int end, std::multiset<std::string>& names) {
  std::string text;
  std::array<char, 4096> buffer{};
  for (ssize_t count = read(end, buffer.data(), buffer.size()); count > 0;
       count = read(end, buffer.data(), buffer.size())) {
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
  close(end);
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t stop = text.find('\n', begin);
    names.insert(text.substr(begin, stop - begin));
    begin = stop + 1;
  }
}

TEST(UniqueName, TwoCallsInOneTickDifferByTheCounter) {
  const std::string first = UniqueName();
  const std::string second = UniqueName();
  EXPECT_NE(first, second);
  EXPECT_EQ(std::stoull(second.substr(second.rfind('.') + 1)), std::stoull(first.substr(first.rfind('.') + 1)) + 1);
}

TEST(UniqueName, IsTheDaysWithTwelveDecimalsAndTheCounter) {
  const std::string name = UniqueName();
  EXPECT_TRUE(shell::MatchesPattern(name, "n#####.############.#*")) << name;
  EXPECT_EQ(name.substr(name.rfind('.') + 1).find_first_not_of("0123456789"), std::string::npos) << name;
}

TEST(UniqueName, CountsDaysFromTheEndOf1899) {
  const auto daysNow = [] {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return 25569 + std::chrono::floor<std::chrono::days>(now).count();
  };
  const auto before = daysNow();
  const std::string name = UniqueName();
  const auto days = std::stoll(name.substr(1, name.find('.') - 1));
  EXPECT_GE(days, before);
  EXPECT_LE(days, daysNow());
}

TEST(UniqueName, TheFractionIsThatOfTheDay) {
  const auto fractionNow = [] {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto day = std::chrono::floor<std::chrono::days>(now);
    return 25569.0 + static_cast<double>(day.count()) + std::chrono::duration<double>(now - day).count() / 86400.0;
  };
  const double before = fractionNow();
  const std::string name = UniqueName();
  const double days = std::stod(name.substr(1, name.rfind('.') - 1));
  EXPECT_GE(days, before - 1e-8);
  EXPECT_LE(days, fractionNow() + 1e-8);
}

TEST(UniqueName, TheCounterCarriesTheProcess) {
  const std::string name = UniqueName();
  EXPECT_EQ(std::stoull(name.substr(name.rfind('.') + 1)) >> 32U, static_cast<unsigned long long>(getpid()));
}

TEST(UniqueName, TwoProcessesNeverShareAName) {
  const std::string before = UniqueName();
  std::array<int, 2> makers{StartNameMaker(), StartNameMaker()};
  ASSERT_GE(makers[0], 0);
  ASSERT_GE(makers[1], 0);
  std::multiset<std::string> names{before};
  for (int made = 0; made < kNamesPerProcess; ++made) names.insert(UniqueName());
  for (const int maker : makers) TakeLines(maker, names);
  for (std::size_t ended = 0; ended < makers.size(); ++ended) {
    int status = 0;
    ASSERT_GT(wait(&status), 0);
    EXPECT_EQ(status, 0);
  }
  EXPECT_EQ(names.size(), 3U * kNamesPerProcess + 1);
  EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
  std::set<std::string> counters;
  for (const std::string& name : names) counters.insert(name.substr(name.rfind('.') + 1));
  EXPECT_EQ(counters.size(), names.size()) << "a counter value was shared";
}

TEST(UniqueName, TwoThreadsNeverShareAName) {
  std::array<std::vector<std::string>, 2> made;
  {
    std::vector<std::jthread> threads;
    threads.reserve(made.size());
    for (auto& names : made) {
      threads.emplace_back([&names] {
        for (int count = 0; count < kNamesPerProcess; ++count) names.push_back(UniqueName());
      });
    }
  }
  std::set<std::string> all(made[0].begin(), made[0].end());
  all.insert(made[1].begin(), made[1].end());
  EXPECT_EQ(all.size(), 2U * kNamesPerProcess);
}

}  // namespace
}  // namespace qmrules::catalogue
