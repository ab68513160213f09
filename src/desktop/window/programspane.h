#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "desktop/window/programmodel.h"

class QLabel;
class QLineEdit;
class QSortFilterProxyModel;
class QTreeView;

namespace qmrules::desktop {

// The project's programs with a box that leaves those whose name or file holds what is typed. A click or Enter chooses
// a program; Down and Enter work from the box as well.
class ProgramsPane final : public QWidget {
  Q_OBJECT

 public:
  explicit ProgramsPane(QWidget* parent = nullptr);

  ProgramModel& Model() { return *model_; }
  // Shows the programs and says how many there are.
  void SetPrograms(std::vector<catalogue::RegisteredSource> programs);
  // Marks the program whose text is on view and brings it in sight.
  void SetCurrent(const std::string& key);
  void FocusFilter();

 signals:
  void Chosen(const QString& key);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void LayOut();
  void Retranslate();
  void Filter(const QString& text);
  void ShowCount();
  void Choose(const QModelIndex& index);

  ProgramModel* model_;
  QSortFilterProxyModel* filtered_;
  QLineEdit* filter_;
  QTreeView* list_;
  QLabel* nothing_;
};

}  // namespace qmrules::desktop
