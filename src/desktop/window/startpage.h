#pragma once

#include <QStringList>
#include <QWidget>

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace qmrules::desktop {

// What the window shows while no workspace is open: what to do first, and the workspaces of the last times.
class StartPage final : public QWidget {
  Q_OBJECT

 public:
  explicit StartPage(QWidget* parent = nullptr);

  void SetRecent(const QStringList& folders);

 signals:
  void OpenRequested();
  void NewRequested();
  void RecentChosen(const QString& folder);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Retranslate();
  void RenewColors();
  QPushButton* AddChoice(QVBoxLayout& layout, QLabel*& meaning);

  QStringList recent_;
  QLabel* sign_;
  QLabel* title_;
  QLabel* purpose_;
  QPushButton* new_ = nullptr;
  QLabel* newMeaning_ = nullptr;
  QPushButton* open_ = nullptr;
  QLabel* openMeaning_ = nullptr;
  QLabel* recentTitle_;
  QVBoxLayout* recentList_;
};

}  // namespace qmrules::desktop
