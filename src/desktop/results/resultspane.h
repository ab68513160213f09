#pragma once

#include <QWidget>
#include <cstdint>
#include <memory>
#include <optional>

#include "desktop/results/comparisonview.h"
#include "validation/validationrun.h"

class QLabel;
class QLineEdit;
class QTreeView;

namespace qmrules::desktop {

class FindingModel;

// What the last validation found: a list with a box that filters it, how often each verdict was given, and beside it
// the comparison of one rule. A click or Enter compares a rule; a double click or Ctrl+Enter asks for its node in the
// tree; Ctrl+C copies the selected rows as text with tabs; the arrows work from the box as well.
class ResultsPane final : public QWidget {
  Q_OBJECT

 public:
  explicit ResultsPane(QWidget* parent = nullptr);

  // The result of a run, which stays until the next one or Clear. `read` is called while it is there.
  void SetReport(std::shared_ptr<const validation::ValidationReport> report, SourceReader read);
  void Clear();
  bool HasReport() const { return report_ != nullptr; }
  void FocusList();

  FindingModel& Model() { return *model_; }
  ComparisonView& Comparison() { return *comparison_; }

 signals:
  void RuleChosen(qint32 ruleID);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void LayOut();
  void Connect();
  void Retranslate();
  void ShowCounts();
  void Compare(const QModelIndex& index);
  void ChooseCurrent();
  void CopySelected() const;
  void RestoreCurrent();
  const validation::RuleFinding* FindingAt(const QModelIndex& index) const;

  std::shared_ptr<const validation::ValidationReport> report_;
  SourceReader read_;
  FindingModel* model_;
  QLineEdit* filter_;
  QLabel* counts_;
  QLabel* nothing_;
  QTreeView* list_;
  ComparisonView* comparison_;
  std::optional<std::int32_t> current_;  // the rule of the current row, which a reset keeps
};

}  // namespace qmrules::desktop
