#pragma once

#include <cstdint>
#include <string>

#include "browser/browserservices.h"

namespace qmrules::browser {

// The segment of a rule as the panes read it.
struct SegmentPlace {
  std::string model;  // "" for a rule without a segment
  std::string fileName;
  std::int64_t fromRow = 0;  // from 1, inclusive
  std::int64_t toRow = 0;
  std::string programKey;  // "" when the project has no such program
};

// The current rule's segment in the source viewer of the workspace. `txtFileName` tells its file or, in red, what is
// wrong with it.
class SegmentView {
 public:
  explicit SegmentView(const BrowserServices& services) : services_(services) {}

  // Drops the source viewer's selection and empties the field.
  void Clear() const;
  // Makes the segment's program the workspace's current object, opens its file, and selects its rows. A rule without a
  // segment leaves everything as it is. Where one of these fails the field says so, and its tool tip why: a missing
  // source must not keep anybody from walking through its rules.
  void Show(const SegmentPlace& segment) const;

 private:
  bool Select(const SegmentPlace& segment) const;
  bool OpenFile(const std::string& fileName) const;
  void ShowFailure(int message, const std::string& fileName, const std::string& cause) const;

  BrowserServices services_;
};

}  // namespace qmrules::browser
