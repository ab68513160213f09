#include "desktop/options/folderoptions.h"

namespace qmrules::desktop {

namespace {

constexpr const char* kSources = "/WORKSPACE/SOURCES";
constexpr const char* kEncoding = "ENCODING";

}  // namespace

platform::XmlDocument FolderOptions(const std::string& encoding) {
  platform::XmlDocument options;
  options.loadXML("<WORKSPACE><SOURCES/></WORKSPACE>");
  options.selectSingleNode(kSources).setAttribute(kEncoding, encoding);
  return options;
}

std::string EncodingOf(const platform::XmlDocument& options) {
  return options.selectSingleNode(kSources).AttributeOr(kEncoding, "");
}

}  // namespace qmrules::desktop
