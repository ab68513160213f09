#include "workbench/options/defaultoptions.h"

#include <string_view>

namespace qmrules::embedded {
extern const std::string_view projectOptions;
extern const std::string_view globalOptions;
}  // namespace qmrules::embedded

namespace qmrules::workbench {

platform::XmlDocument DefaultProjectOptions() {
  platform::XmlDocument document;
  document.loadXML(embedded::projectOptions, "projectoptions.xml");
  return document;
}

platform::XmlDocument DefaultGlobalOptions() {
  platform::XmlDocument document;
  document.loadXML(embedded::globalOptions, "globaloptions.xml");
  return document;
}

}  // namespace qmrules::workbench
