#include "validation/validationoptions.h"

#include <fmt/format.h>

#include "platform/error.h"

namespace qmrules::validation {

namespace {

std::string ValueAt(platform::Options& options, const std::string& path) {
  const auto node = options.Document().selectSingleNode(path);
  if (!node) {
    throw platform::Error(
        fmt::format("The project options have no node {}. Restore the project's options file.", path));
  }
  return node.AttributeOr("VALUE", "");
}

}  // namespace

std::string ReadValidationAction(platform::Options& options) {
  return ValueAt(options, std::string(kRuleValidationPath) + "/LIST[@NAME='SegmentValidation']");
}

bool ReadCollapseSpaces(platform::Options& options) {
  const std::string value = ValueAt(options,
                                    "//LIST[@NAME='FW']/CASE[@NAME='CRD']/LIST[@NAME='CRDOptions']"
                                    "/CASE[@NAME='RuleValidation']/BOOL[@NAME='CollapseSpaces']");
  return value == "true" || value == "1" || value == "-1";
}

}  // namespace qmrules::validation
