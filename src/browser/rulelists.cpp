#include "browser/rulelists.h"

#include "browser/elementplace.h"
#include "shell/text.h"

namespace qmrules::browser {

using platform::widgets::Key;
using platform::widgets::KeyPress;
using platform::widgets::ListRow;
using platform::widgets::ListView;
using platform::widgets::Menu;
using platform::widgets::MenuItem;
using platform::widgets::MouseButton;
using platform::widgets::MousePress;
using platform::widgets::ShiftState;

namespace {

constexpr int kCreateLabel = 130;
constexpr int kDeleteLabel = 131;
constexpr int kEditLabel = 203;
constexpr int kSelectAllLabel = 201;
constexpr int kUnselectAllLabel = 202;
constexpr int kSyncLabel = 204;

constexpr const char* kAuxilary = "mnuAuxilary";
constexpr const char* kSync = "mnuSyncBusinessNames";

// The members of the control array mnuAuxilary.
enum AuxilaryIndex { kCreate, kDelete, kEdit, kSelectAll, kUnselectAll };

}  // namespace

RuleLists::RuleLists(const BrowserServices& services) : services_(services) {
  FillMenu();
  Hook(services_.widgets.lvIOElems);
  Hook(services_.widgets.lvConditions);
  hooks_.push_back(services_.widgets.tsIOCond.OnMouseDown.Subscribe([this](const MousePress& press) {
    if (press.button == MouseButton::Right) OpenMenu();
  }));
}

bool RuleLists::DataElementsInView() const {
  return services_.widgets.tsIOCond.Selected() == "I/O";
}

ListView& RuleLists::ListInView() const {
  return DataElementsInView() ? services_.widgets.lvIOElems : services_.widgets.lvConditions;
}

void RuleLists::FillMenu() {
  Menu& menu = services_.widgets.mnuAuxMain;
  const auto& texts = services_.texts;
  menu.Clear();
  const auto add = [&](int index, std::string caption) -> MenuItem& {
    return menu.Add(kAuxilary, std::move(caption), index);
  };
  const auto hook = [this](MenuItem& item, std::function<void()> action) {
    hooks_.push_back(item.OnClick.Subscribe(std::move(action)));
  };
  hook(add(kCreate, texts.Text(kCreateLabel) + "..."),
       [this] { services_.commands.Run(DataElementsInView() ? kCreateDataElement : kCreateCondition); });
  hook(add(kDelete, texts.Text(kDeleteLabel)), [this] { services_.commands.Run(kDeleteElements); });
  hook(add(kEdit, texts.Text(kEditLabel) + "..."), [this] { services_.commands.Run(kEditElement); });
  hook(add(kSelectAll, texts.Text(kSelectAllLabel)), [this] { ListInView().SelectAll(true); });
  hook(add(kUnselectAll, texts.Text(kUnselectAllLabel)), [this] { ListInView().SelectAll(false); });
  MenuItem& sync = menu.Add(kSync, texts.Text(kSyncLabel));
  sync.SetVisible(services_.globals.glossaryAvailable);
  hook(sync, [this] { services_.commands.Run(kSyncBusinessNames); });
}

void RuleLists::UpdateMenu() {
  Menu& menu = services_.widgets.mnuAuxMain;
  const bool hasRows = ListInView().Count() > 0;
  for (const int index : {kDelete, kEdit, kSelectAll, kUnselectAll}) menu.Item(kAuxilary, index).SetEnabled(hasRows);
  menu.Item(kSync).SetEnabled(hasRows && DataElementsInView());
}

void RuleLists::OpenMenu() {
  UpdateMenu();
  services_.dialogs.PopupMenu(services_.widgets.mnuAuxMain);
}

void RuleLists::Choose(const char* item, int index) {
  UpdateMenu();
  services_.widgets.mnuAuxMain.Item(item, index).Click();
}

void RuleLists::Hook(ListView& list) {
  hooks_.push_back(list.OnKeyDown.Subscribe([this, &list](KeyPress& press) { KeyDown(list, press); }));
  hooks_.push_back(list.OnMouseDown.Subscribe([this](const MousePress& press) {
    if (press.button == MouseButton::Right) OpenMenu();
  }));
  hooks_.push_back(list.OnDoubleClick.Subscribe([this](const ListRow& row) { GoTo(row); }));
}

void RuleLists::GoTo(const ListRow& row) const {
  const platform::BusyCursor busy(services_.pointer);
  GoToElement(services_, row.Tag());
}

void RuleLists::KeyDown(ListView& list, KeyPress& press) {
  const bool plain = press.shift == ShiftState{};
  const bool ctrl = press.shift == ShiftState{.ctrl = true};
  const bool shift = press.shift == ShiftState{.shift = true};
  press.handled = true;
  if (press.key == Key::Delete && plain) {
    Choose(kAuxilary, kDelete);
  } else if (press.key == Key::Insert && plain) {
    Choose(kAuxilary, kCreate);
  } else if (press.key == Key::A && ctrl) {
    Choose(kAuxilary, kSelectAll);
  } else if (press.key == Key::U && ctrl) {
    Choose(kAuxilary, kUnselectAll);
  } else if (press.key == Key::S && plain && DataElementsInView()) {
    Choose(kSync, 0);
  } else if (press.key == Key::F10 && shift) {
    OpenMenu();
  } else if (press.key == Key::Enter && list.CurrentRow() != nullptr) {
    GoTo(*list.CurrentRow());
  } else {
    press.handled = false;
  }
}

}  // namespace qmrules::browser
