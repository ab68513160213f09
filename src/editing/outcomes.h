#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/frontend.h"
#include "platform/tesselglobals.h"
#include "shell/messages.h"

// What the routines that make and change catalogue objects work on and answer. They show nothing: a dialog shows the
// texts and asks the questions, and so does a command line.
namespace qmrules::editing {

// What they work on. Held by the caller for as long as the call lasts.
struct EditingContext {
  platform::FrontEnd& frontEnd;
  const platform::Clock& clock;
  const shell::StringTable& texts;
  const platform::TesselGlobals& globals;  // the names and descriptions of the objects for rules without a home

  [[nodiscard]] platform::Repository& Repository() const { return frontEnd.Repository(); }
};

// Something to show in a message box.
struct Notice {
  std::string text;
  platform::MessageStyle style = platform::MessageStyle::Exclamation;
  friend bool operator==(const Notice&, const Notice&) = default;
};

// The store holds a new object. `name` and `description` are the texts as stored.
struct Created {
  std::int32_t id = 0;
  std::string name;
  std::string description;
};

// Nothing was written; the notice says why.
struct Refused {
  Notice notice;
};

// A notice of one line of the string table, by its number.
[[nodiscard]] Notice OneLine(const shell::StringTable& texts, int number, platform::MessageStyle style);
// A notice of two lines, with carriage return and line feed between them.
[[nodiscard]] Notice TwoLines(std::string_view first, std::string_view second, platform::MessageStyle style);

// The attribute has a new value, as stored.
struct Changed {
  std::string value;
};

// The value was that already: nothing was written or logged.
struct Unchanged {};

}  // namespace qmrules::editing
