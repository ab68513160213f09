#include "workbench/workspace/schemadocument.h"

#include <string_view>

namespace qmrules::embedded {
extern const std::string_view userRepstry;
}  // namespace qmrules::embedded

namespace qmrules::workbench {

platform::XmlDocument DefaultSchemaDocument() {
  platform::XmlDocument document;
  document.loadXML(embedded::userRepstry, "userrepstry.xml");
  return document;
}

}  // namespace qmrules::workbench
