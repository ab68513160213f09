#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qmrules::bench {

// A repository of git in a folder of its own, removed at the end: the first versions of all programs in one commit,
// then one commit for each program that changes.
class History {
 public:
  // Throws std::runtime_error when git does not do what it is asked to, as all of these do.
  explicit History(std::string folder);
  ~History();
  History(const History&) = delete;
  History& operator=(const History&) = delete;

  void Put(const std::string& name, const std::string& text) const;
  void Commit() const;
  // For each line of the file, from the first, the row that `git blame -M -C` gives it in the first commit; 0 for one
  // that it gives to a later one. `ignoreSpaces`: with -w besides. The seconds that git took are added to `seconds`.
  std::vector<std::int32_t> Blame(const std::string& name, bool ignoreSpaces, double& seconds) const;

 private:
  std::string Git(const std::vector<std::string>& words, double& seconds) const;
  std::string Git(const std::vector<std::string>& words) const;

  std::string folder_;
  mutable std::string firstCommit_;
};

}  // namespace qmrules::bench
