#include "desktop/views/formlayout.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <type_traits>

#include "desktop/views/pictures.h"
#include "desktop/views/qttoolbar.h"
#include "desktop/views/viewmaking.h"
#include "platform/widgets/button.h"
#include "platform/widgets/frame.h"
#include "platform/widgets/label.h"
#include "platform/widgets/listview.h"
#include "platform/widgets/optiongroup.h"
#include "platform/widgets/richtextbox.h"
#include "platform/widgets/tabstrip.h"
#include "platform/widgets/treeview.h"
#include "platform/widgets/updown.h"

namespace qmrules::desktop {

using platform::widgets::Button;
using platform::widgets::Form;
using platform::widgets::Frame;
using platform::widgets::Label;
using platform::widgets::ListView;
using platform::widgets::RichTextBox;
using platform::widgets::TabStrip;
using platform::widgets::ToolBar;
using platform::widgets::TreeView;
using platform::widgets::UpDown;
using platform::widgets::Widget;

namespace {

constexpr int kLabelColumn = 0;
constexpr int kFieldColumn = 1;
constexpr int kColumns = 2;

bool Is(const Widget& model, auto... kinds) {
  return ((dynamic_cast<const typename decltype(kinds)::type*>(&model) != nullptr) || ...);
}

template <class Model>
constexpr std::type_identity<Model> kKind;

bool Grows(const Widget& model) {
  return Is(model, kKind<ListView>, kKind<TreeView>, kKind<RichTextBox>);
}

bool TakesWholeWidth(const Widget& model) {
  return Is(model, kKind<ListView>, kKind<TreeView>, kKind<TabStrip>, kKind<Frame>, kKind<ToolBar>);
}

// One place of the form, the window itself or a frame, with its rows and its buttons.
class Area {
 public:
  Area(FocusBridge& focus, const Form& form, const Widget* enclosing, QWidget& view)
      : focus_(focus), form_(form), enclosing_(enclosing), view_(view) {
    auto* const whole = new QVBoxLayout(&view);
    whole->addLayout(rows_);
    whole->addLayout(buttons_);
    rows_->setColumnStretch(kFieldColumn, 1);
    buttons_->addStretch(1);
  }

  void Fill() {
    for (const auto& model : form_.Widgets()) {
      if (model->Enclosing() == enclosing_) Place(*model);
    }
    if (label_ != nullptr) NewRow(label_);
    if (!grows_) static_cast<QVBoxLayout*>(view_.layout())->addStretch(enclosing_ == nullptr ? 1 : 0);
  }

 private:
  void Place(Widget& model) {
    if (Is(model, kKind<Label>)) {
      if (label_ != nullptr) NewRow(label_);
      label_ = MakeView(focus_, model, &view_);
      return;
    }
    if (auto* const bar = dynamic_cast<ToolBar*>(&model)) {
      static const platform::widgets::ImageList none;
      NewRow(new QtToolBar(focus_, *bar, none, &view_));
      return;
    }
    QWidget* const view = MakeView(focus_, model, &view_);
    if (Is(model, kKind<Frame>)) {
      Area(focus_, form_, &model, *view).Fill();
    } else if (const auto* const button = dynamic_cast<const Button*>(&model)) {
      PlaceButton(*button, *view);
      return;
    } else if (Is(model, kKind<UpDown>) && line_ != nullptr) {
      line_->addWidget(view);
      return;
    }
    PlaceField(model, *view);
  }

  // A button that opens a choice for the field before it stands beside that field.
  void PlaceButton(const Button& model, QWidget& view) {
    if (model.Caption() == "..." && line_ != nullptr) {
      line_->addWidget(&view);
      return;
    }
    static_cast<QPushButton&>(view).setDefault(form_.DefaultButton() == &model);
    buttons_->addWidget(&view);
  }

  void PlaceField(const Widget& model, QWidget& view) {
    QWidget* const label = label_;
    label_ = nullptr;
    if (label != nullptr) static_cast<QLabel*>(label)->setBuddy(&view);
    line_ = nullptr;
    if (TakesWholeWidth(model)) {
      if (label != nullptr) NewRow(label);
      NewRow(&view);
    } else {
      line_ = new QHBoxLayout;
      line_->addWidget(&view, 1);
      const auto top = Grows(model) ? Qt::AlignTop : Qt::AlignVCenter;
      if (label != nullptr) rows_->addWidget(label, row_, kLabelColumn, top);
      const bool alone = label == nullptr;
      rows_->addLayout(line_, row_, alone ? kLabelColumn : kFieldColumn, 1, alone ? kColumns : 1);
      ++row_;
    }
    if (!Grows(model)) return;
    rows_->setRowStretch(row_ - 1, 1);
    grows_ = true;
  }

  void NewRow(QWidget* view) {
    rows_->addWidget(view, row_++, kLabelColumn, 1, kColumns);
    if (view == label_) label_ = nullptr;
  }

  FocusBridge& focus_;
  const Form& form_;
  const Widget* enclosing_;
  QWidget& view_;
  QGridLayout* rows_ = new QGridLayout;
  QHBoxLayout* buttons_ = new QHBoxLayout;
  QHBoxLayout* line_ = nullptr;  // of the field placed last
  QWidget* label_ = nullptr;     // waits for its field
  int row_ = 0;
  bool grows_ = false;
};

}  // namespace

void LayOutForm(FocusBridge& focus, Form& form, QWidget& window) {
  Area(focus, form, nullptr, window).Fill();
  focus.SetTabOrder();
}

}  // namespace qmrules::desktop
