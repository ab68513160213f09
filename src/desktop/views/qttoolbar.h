#pragma once

#include <QCoreApplication>
#include <QToolBar>
#include <QToolButton>
#include <vector>

#include "desktop/views/pictures.h"
#include "desktop/views/widgetbinding.h"
#include "platform/widgets/toolbar.h"

namespace qmrules::desktop {

// Shows a tool bar. By keyboard it is one stop of Tab: Left and Right lead along its buttons and to the one that opens
// what has no room, Space presses, Down opens a button's menu, Escape goes back to where the focus was.
class QtToolBar final : public QToolBar {
  Q_DECLARE_TR_FUNCTIONS(qmrules::desktop::QtToolBar)

 public:
  // `images` outlives this.
  QtToolBar(FocusBridge& focus, platform::widgets::ToolBar& model, const platform::widgets::ImageList& images,
            QWidget* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void Show();
  void ShowPicturesLater();
  void Fill();
  void FillMenu(QAction& action, const platform::widgets::ToolButton& button);
  void ShowButton(QAction& action, const platform::widgets::ToolButton& button) const;
  std::vector<QToolButton*> Stops() const;
  void ShowTabStop();
  bool MoveAlong(const QToolButton& from, int by);

  FocusBridge& focus_;
  platform::widgets::ToolBar& model_;
  Pictures pictures_;
  WidgetBinding binding_;
  bool picturesAreStale_ = false;
  platform::Subscription changed_;
  platform::Subscription picturesChanged_;
};

}  // namespace qmrules::desktop
