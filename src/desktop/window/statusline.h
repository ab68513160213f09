#pragma once

#include <QString>
#include <optional>

class QLabel;
class QStatusBar;

namespace qmrules::desktop {

// The standing part of the status line: what is on view, and the counts of the project. Caret and selection stand below
// the source, which they are of.
class StatusLine {
 public:
  // Puts its fields at the right end of the bar, which outlives this.
  explicit StatusLine(QStatusBar& bar);

  struct Source {
    QString program;
    QString file;
  };
  void ShowSource(const std::optional<Source>& source);
  struct Counts {
    qint64 programs = 0;
    qint64 rules = 0;
    bool areWhole = true;  // false while the rules are still being counted
  };
  void ShowCounts(const std::optional<Counts>& counts);

 private:
  QLabel* source_;
  QLabel* counts_;
};

}  // namespace qmrules::desktop
