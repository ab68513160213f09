#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/objectfinder.h"
#include "cli/output.h"
#include "platform/keyedcollection.h"

namespace qmrules::cli {

struct ShownAttribute {
  std::string name;
  std::string caption;
  platform::Value value;
  bool isEditable = false;
};

// The rows of objects that belong to the one shown, such as its data elements.
struct ShownList {
  std::string name;                                          // in JSON
  std::string title;                                         // for the reader
  std::vector<std::pair<std::string, std::string>> columns;  // name in JSON, title for the reader
  std::vector<std::vector<std::string>> rows;
};

// All that is shown of one object.
struct ObjectDetails {
  std::string key;
  std::string name;
  std::vector<ShownAttribute> attributes;  // in schema order; without a rule's internal name and source text
  bool hasSegment = false;
  std::int64_t fromRow = 0;
  std::string sourceText;
  std::vector<ShownList> lists;
};

// Reads an object of any entity. `editable` are the attributes of a rule that may be changed.
ObjectDetails ReadObjectDetails(workbench::EmbeddedHost& host, const shell::StringTable& texts,
                                const FoundObject& object, const platform::KeyedCollection<std::string>& editable);

}  // namespace qmrules::cli
