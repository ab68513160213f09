#pragma once

#include <string>

#include "browser/browserservices.h"
#include "browser/commandfaces.h"

namespace qmrules::segments {

// The command `Emphasize`: marks in the source viewer for the segments of the file on view, whichever rules and
// projects they belong to. The mark of the command on its menu item is the one state.
class Emphasis {
 public:
  explicit Emphasis(const browser::BrowserServices& services) : services_(services), faces_(services) {}

  bool IsOn() const { return faces_.IsChecked("Emphasize"); }

  // Turns the state over and makes the marks follow: all of them go, and those of the file on view come when the state
  // is on now. Without a file in the viewer its marks stay as they are. Throws Error, with the state turned over and
  // the marks incomplete, when the repository or the viewer fails.
  void Toggle();

  // Paints the marks anew in the state that they are in. Throws Error as Toggle does, with the state as it was.
  void Refresh();

 private:
  void SetOn(bool on);
  void MarkSegments(const std::string& fileName);

  browser::BrowserServices services_;
  browser::CommandFaces faces_;
};

}  // namespace qmrules::segments
