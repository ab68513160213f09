#pragma once

#include <QCoreApplication>
#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "browser/controlwidgets.h"
#include "platform/event.h"
#include "platform/widgets/splitter.h"

namespace qmrules::desktop {

class FocusBridge;
class QtSplitter;

// The control on screen: its tool bar, and below it the splitter with the four panes. It shows the models as they are
// and hands the user's actions to them; what a model throws comes out of the event that the user caused
// (QApplication::notify).
//
// It may be made before or after the control has a workspace.
class ControlView final : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(qmrules::desktop::ControlView)

 public:
  // Both models outlive this. The pictures come from the image lists of the widgets.
  ControlView(browser::ControlWidgets& widgets, platform::widgets::Splitter& splitter, QWidget* parent = nullptr);
  ~ControlView() override;

  // Brings the keyboard to the widget that has the control's focus, else to the tree.
  void TakeFocus();

  // Brings the keyboard to the first line between the panes, to the next one, and back.
  void GoToNextLine();

  // The view of the widget, or nullptr.
  QWidget* ViewOf(const platform::widgets::Widget& model) const;

  // The focus has come to a widget of the control from elsewhere.
  platform::Event<> OnEntered;

 private:
  QWidget* Make(platform::widgets::Widget& model, QWidget* parent);
  QWidget* MakeObjects();
  QWidget* MakeDescriptions();
  QWidget* MakeFirstArea();
  QWidget* MakeSecondArea();
  void NameViews();
  void ShowEmptyPanesLater();
  void ShowEmptyPanes();

  browser::ControlWidgets& widgets_;
  std::unique_ptr<FocusBridge> focus_;
  QtSplitter* panes_ = nullptr;
  bool panesAreStale_ = false;
  std::vector<platform::Subscription> subscriptions_;
};

}  // namespace qmrules::desktop
