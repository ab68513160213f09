#pragma once

#include <string>
#include <vector>

namespace qmrules::bench {

// The bars of one program: ratios or counts of this run, each with the most that it should be.
class Bars {
 public:
  void Add(const std::string& name, double value, double limit) { bars_.push_back({name, value, limit}); }
  // A line "bar NAME VALUE LIMIT" for each.
  void Print() const;

 private:
  struct Bar {
    std::string name;
    double value;
    double limit;
  };
  std::vector<Bar> bars_;
};

}  // namespace qmrules::bench
