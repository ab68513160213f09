#pragma once

#include <QTreeView>

#include "platform/widgets/widget.h"

namespace qmrules::desktop {

// What the views of trees and lists have in common: Qt itself selects nothing in them. Each key goes to the model as
// its user's action, and so does a selection that is made by other means than keys and presses, as a screen reader
// does; what the model then is, is shown.
class RowView : public QTreeView {
 public:
  // `model` outlives this.
  RowView(platform::widgets::Widget& model, QWidget* parent);

 protected:
  // The user goes to a row by the keyboard. Does nothing where there is none.
  virtual void GoTo(const QModelIndex& index, platform::widgets::ShiftState shift) = 0;
  // Hands to the model what is selected in the view and not in the model.
  virtual void TakeSelection() = 0;
  // Selects in the view what the model has selected.
  virtual void ShowSelection() = 0;

  // To be called once the view has its items.
  void WatchSelection();
  // While one lives, the view's selection is the model's doing.
  class ShowingSelection {
   public:
    explicit ShowingSelection(RowView& view) : view_(view), before_(view.showing_) { view.showing_ = true; }
    ShowingSelection(const ShowingSelection&) = delete;
    ShowingSelection& operator=(const ShowingSelection&) = delete;
    ~ShowingSelection() { view_.showing_ = before_; }

   private:
    RowView& view_;
    bool before_;
  };

  bool IsOnCheckBox(const QPoint& point, const QModelIndex& index) const;

  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyboardSearch(const QString& search) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;

 private:
  void FitPictures();

  platform::widgets::Widget& model_;
  bool showing_ = false;
  bool takes_ = false;  // the view's selection is about to be handed to the model
};

}  // namespace qmrules::desktop
