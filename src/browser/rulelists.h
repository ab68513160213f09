#pragma once

#include <string_view>
#include <vector>

#include "browser/browserservices.h"
#include "platform/event.h"
#include "platform/widgets/listview.h"

namespace qmrules::browser {

// Keys of the commands that the menu of a rule's lists runs through CommandSink, for the list whose tab is in front.
inline constexpr std::string_view kCreateDataElement = "CreateRuleIO";
inline constexpr std::string_view kCreateCondition = "CreateRuleCond";
inline constexpr std::string_view kDeleteElements = "DeleteElements";
inline constexpr std::string_view kEditElement = "EditElement";
inline constexpr std::string_view kSyncBusinessNames = "SyncBusinessNames";

// The lists of a rule, `lvIOElems` and `lvConditions`, with their keys and their menu `mnuAuxMain`:
//
//   Insert, Delete, S (data elements only)   the menu's item, when it can be chosen
//   Ctrl+A, Ctrl+U                           select all rows, none
//   Shift+F10, right button                  open the menu; the right button also on the tabs above the lists
//   Enter, double click                      go to the element's place in the source
//
// The menu has the items mnuAuxilary(0) to (4), for create, delete, edit, select all and unselect all, and
// mnuSyncBusinessNames, which is for data elements and in sight only while there is a glossary. All but the first need
// rows. What is selected is the user's own: only what the items run acts on it.
class RuleLists {
 public:
  // Fills the menu anew.
  explicit RuleLists(const BrowserServices& services);
  RuleLists(const RuleLists&) = delete;
  RuleLists& operator=(const RuleLists&) = delete;

 private:
  bool DataElementsInView() const;
  platform::widgets::ListView& ListInView() const;
  void FillMenu();
  void UpdateMenu();
  void OpenMenu();
  void Choose(const char* item, int index);
  void Hook(platform::widgets::ListView& list);
  void GoTo(const platform::widgets::ListRow& row) const;
  void KeyDown(platform::widgets::ListView& list, platform::widgets::KeyPress& press);

  BrowserServices services_;
  std::vector<platform::Subscription> hooks_;
};

}  // namespace qmrules::browser
