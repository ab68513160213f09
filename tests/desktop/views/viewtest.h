#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <QVBoxLayout>
#include <QWidget>
#include <functional>
#include <string>

#include "desktop/views/focusbridge.h"
#include "desktop/views/viewmaking.h"
#include "platform/widgets/combobox.h"
#include "platform/widgets/container.h"
#include "platform/widgets/treeview.h"

namespace qmrules::desktop {

class QtTree;

// A window with the views of a few models in a container.
class ViewTest : public testing::Test {
 protected:
  // Makes the model's view below those that stand already.
  template <class View>
  View& Make(platform::widgets::Widget& model) {
    QWidget* const view = MakeView(focus, model, &window);
    column.addWidget(view);
    return dynamic_cast<View&>(*view);
  }

  // Shows the window, and gives it the keyboard.
  void Show();

  platform::widgets::Container container;
  QWidget window;
  QVBoxLayout& column = *new QVBoxLayout(&window);
  FocusBridge focus{container, window};
};

// Shows the window and waits until it is the active one.
void Activate(QWidget& window);

// A node that has a text, and a check mark or none.
platform::widgets::NewNode Node(std::string text, bool checked = false);

// An item that has a text.
platform::widgets::ComboItem Item(std::string text);

// Runs the step once the event loop runs again, as the user of what comes up then.
void Later(std::function<void()> step);

// The place of the node's row, its check box and its sign in the tree's viewport.
QPoint RowOf(const QtTree& tree, const platform::widgets::TreeNode& node);
QPoint CheckBoxOf(const QtTree& tree, const platform::widgets::TreeNode& node);
QPoint SignOf(const QtTree& tree, const platform::widgets::TreeNode& node);

}  // namespace qmrules::desktop
