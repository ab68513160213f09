#include "desktop/views/viewmaking.h"

#include <stdexcept>

#include "desktop/views/qtbuttons.h"
#include "desktop/views/qtcombobox.h"
#include "desktop/views/qtframe.h"
#include "desktop/views/qtlabel.h"
#include "desktop/views/qtlist.h"
#include "desktop/views/qtoptiongroup.h"
#include "desktop/views/qtrichtextbox.h"
#include "desktop/views/qtscrollbar.h"
#include "desktop/views/qttabstrip.h"
#include "desktop/views/qttextbox.h"
#include "desktop/views/qttree.h"
#include "desktop/views/qtupdown.h"

namespace qmrules::desktop {

using platform::widgets::Widget;

namespace {

// The view when the model is of this class, else nullptr.
template <class Model, class View>
QWidget* TryMake(FocusBridge& focus, Widget& model, QWidget* parent) {
  auto* const own = dynamic_cast<Model*>(&model);
  return own == nullptr ? nullptr : new View(focus, *own, parent);
}

using Making = QWidget* (*)(FocusBridge&, Widget&, QWidget*);

// A class stands before the one that it derives from.
constexpr Making kMakings[] = {
    TryMake<platform::widgets::Label, QtLabel>,
    TryMake<platform::widgets::RichTextBox, QtRichTextBox>,
    TryMake<platform::widgets::TextBox, QtTextBox>,
    TryMake<platform::widgets::ComboBox, QtComboBox>,
    TryMake<platform::widgets::Button, QtButton>,
    TryMake<platform::widgets::CheckBox, QtCheckBox>,
    TryMake<platform::widgets::OptionGroup, QtOptionGroup>,
    TryMake<platform::widgets::ListView, QtList>,
    TryMake<platform::widgets::TreeView, QtTree>,
    TryMake<platform::widgets::TabStrip, QtTabStrip>,
    TryMake<platform::widgets::Frame, QtFrame>,
    TryMake<platform::widgets::ScrollBar, QtScrollBar>,
    TryMake<platform::widgets::UpDown, QtUpDown>,
};

}  // namespace

QWidget* MakeView(FocusBridge& focus, Widget& model, QWidget* parent) {
  for (const Making make : kMakings) {
    if (QWidget* const view = make(focus, model, parent)) return view;
  }
  throw std::logic_error("no view is known for the widget " + model.Name());
}

}  // namespace qmrules::desktop
