#pragma once

#include <string>
#include <string_view>

#include "browser/browserservices.h"

namespace qmrules::browser {

// Where a data element or a condition was found in the source, as the tag of its row tells it:
//
//   QMID "#" SourceType "#" SourceID    as "VAR#17#COBOL#3"; the tag is split from the right, since QMID holds "#"
//
// QMID is the key, or the ID, of an object in the code model of the program that SourceType and SourceID name. Without
// these two it is the program on view. Elements made by hand have the tag "##", and those that were edited may have
// QMID alone.
struct ElementReference {
  std::string modelObject;  // "" for an element without a place
  std::string program;      // its key; "" for the program on view
};
ElementReference ParseElementReference(std::string_view tag);

// The tag of a row.
std::string ElementTag(std::string_view qmid, std::string_view sourceType, std::string_view sourceID);

// Takes the user to the place: makes its program the workspace's current object and lets the source viewer go to the
// rows. Does nothing for a tag without a place. A program that the workspace does not take, and one without a code
// model, are told to the user. Throws Error for an object that the model does not have, and when the viewer fails.
void GoToElement(const BrowserServices& services, std::string_view tag);

}  // namespace qmrules::browser
