#pragma once

namespace qmrules::platform::widgets {
class ListView;
class Menu;
class RichTextBox;
class TextBox;
class ToolBar;
class TreeView;
}  // namespace qmrules::platform::widgets

namespace qmrules::browser {

// The widgets of the control that the browser works on. The control owns them; they outlive the browser.
struct BrowserWidgets {
  platform::widgets::TreeView& tvObjects;
  platform::widgets::ListView& lvContent;
  platform::widgets::ListView& lvTriggers;
  platform::widgets::ListView& lvIOElems;
  platform::widgets::ListView& lvConditions;
  platform::widgets::TextBox& txtTriggers;
  platform::widgets::RichTextBox& rtbDescription;
  platform::widgets::RichTextBox& rtbBusiness;
  platform::widgets::Menu& mnuPopup;  // holds an item for each command
  platform::widgets::ToolBar& tbToolbar;
};

}  // namespace qmrules::browser
