#pragma once

#include <QString>
#include <optional>

class QLabel;
class QStatusBar;

namespace qmrules::desktop {

// The standing part of the status line: what is on view, the caret and the selection in it, and the counts of the
// project.
class StatusLine {
 public:
  // Puts its fields at the right end of the bar, which outlives this.
  explicit StatusLine(QStatusBar& bar);

  struct Source {
    QString program;
    QString file;
    int row = 0;           // from 1
    int selectedRows = 0;  // 0 for none
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
  QLabel* row_;
  QLabel* counts_;
};

}  // namespace qmrules::desktop
