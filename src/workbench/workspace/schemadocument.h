#pragma once

#include "platform/xml.h"

namespace qmrules::workbench {

// The schema document that a new workspace starts with: the product's own attributes of a rule, none of the site's.
// Each call makes a new document.
platform::XmlDocument DefaultSchemaDocument();

}  // namespace qmrules::workbench
