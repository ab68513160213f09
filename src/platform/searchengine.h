#pragma once

#include "platform/xml.h"

namespace qmrules::platform {

// The store of the list tool's lists.
class SearchEngine {
 public:
  virtual ~SearchEngine() = default;
  // "//MODELS/MODEL[@Name=category]/MATCHES[@ListName=list]"; each child of MATCHES has in its attribute ObjID the key
  // of a source that the list has entries in. The entries themselves come from SourceModel::Matches.
  virtual XmlDocument& Options() = 0;
};

}  // namespace qmrules::platform
