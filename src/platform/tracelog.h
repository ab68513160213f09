#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qmrules::platform {

// The host's log of long runs, for its support staff. Nothing depends on it.
class TraceLog {
 public:
  virtual ~TraceLog() = default;
  // Sections nest; each BeginSection has its EndSection.
  virtual void BeginSection(std::string_view name, std::string_view tag) = 0;
  virtual void Entry(std::string_view text) = 0;
  virtual void EndSection() = 0;
};

// A section from here to the end of the scope.
class TraceSection final {
 public:
  TraceSection(TraceLog& log, std::string_view name, std::string_view tag) : log_(log) { log_.BeginSection(name, tag); }
  TraceSection(const TraceSection&) = delete;
  TraceSection& operator=(const TraceSection&) = delete;
  ~TraceSection() { log_.EndSection(); }

 private:
  TraceLog& log_;
};

// Keeps the log in memory: "> name [tag]", the entries, "< name", each with two blanks before it for each section
// around it.
class MemoryTraceLog final : public TraceLog {
 public:
  void BeginSection(std::string_view name, std::string_view tag) override {
    AddLine("> " + std::string(name) + " [" + std::string(tag) + "]");
    open_.emplace_back(name);
  }
  void Entry(std::string_view text) override { AddLine(std::string(text)); }
  void EndSection() override {
    if (open_.empty()) return;
    const std::string name = open_.back();
    open_.pop_back();
    AddLine("< " + name);
  }
  const std::vector<std::string>& Lines() const { return lines_; }

 private:
  void AddLine(const std::string& line) { lines_.push_back(std::string(2 * open_.size(), ' ') + line); }

  std::vector<std::string> open_;
  std::vector<std::string> lines_;
};

}  // namespace qmrules::platform
