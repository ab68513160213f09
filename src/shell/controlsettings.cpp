#include "shell/controlsettings.h"

#include <fmt/format.h>

#include <string_view>

#include "catalogue/gateway.h"
#include "catalogue/ignorederrors.h"
#include "platform/error.h"

namespace qmrules::shell {

using platform::Error;
using platform::FerrowoodName;

namespace {

constexpr const char* kConfigPath =
    "/OPTIONS/CASE[@NAME='Ferrowood']/LIST[@NAME='FW']/CASE[@NAME='CRD']/LIST[@NAME='CRDOptions']"
    "/CASE[@NAME='CRDConfig']";

std::string SchemaDocumentPath(const platform::Registry& registry, const platform::FrontEnd& frontEnd) {
  auto path = registry.Value(platform::registryKey, platform::userExtensionsValue);
  return path ? *path : frontEnd.GetFerrowoodName(FerrowoodName::ProductFolder) + "\\User.Repstry.xml";
}

platform::XmlElement RequireRuleAttributes(const platform::XmlDocument& document, const std::string& path) {
  auto element = document.selectSingleNode(catalogue::kRuleAttributesPath);
  if (!element) {
    throw Error(
        fmt::format("{} has no element {}. Restore the schema document.", path, catalogue::kRuleAttributesPath));
  }
  return element;
}

std::string RequireText(const platform::XmlElement& config, std::string_view name) {
  const auto node = config.selectSingleNode(fmt::format("./TEXT[@NAME=\"{}\"]", name));
  if (!node) {
    throw Error(fmt::format("The project options have no text {}. Restore the project's options file.", name));
  }
  return node.AttributeOr("VALUE", "");
}

}  // namespace

RuleSchema ReadRuleSchema(const platform::Registry& registry, const platform::FrontEnd& frontEnd,
                          const platform::FileSystem& fileSystem) {
  RuleSchema schema;
  schema.path = SchemaDocumentPath(registry, frontEnd);
  schema.document.loadXML(fileSystem.ReadFile(schema.path), schema.path);
  schema.attributes = RequireRuleAttributes(schema.document, schema.path);
  schema.lists = catalogue::BuildAttributeLists(schema.attributes);
  return schema;
}

void LoadNodeImages(platform::FrontEnd& frontEnd, const platform::FileSystem& fileSystem,
                    platform::widgets::ImageList& images) {
  const auto& schema = frontEnd.Repository().Schema();
  for (const std::string_view entity : {catalogue::kBusinessFunction, catalogue::kRuleSet, catalogue::kRule}) {
    catalogue::WithErrorsIgnored([&] {
      const std::string path =
          frontEnd.GetFerrowoodName(FerrowoodName::ProductFolder) + "\\Icons\\" + schema.Entity(entity).Icon();
      images.Set(entity, {path, fileSystem.ReadFile(path)});
    });
  }
}

void ReadUnassignedTexts(platform::Options& options, platform::TesselGlobals& globals) {
  const auto config = options.Document().selectSingleNode(kConfigPath);
  if (!config) {
    throw Error(fmt::format("The project options have no node {}. Restore the project's options file.", kConfigPath));
  }
  globals.UnassignedBFName = RequireText(config, "UnassignedBFName");
  globals.UnassignedBFDescr = RequireText(config, "UnassignedBFDescr");
  globals.UnassignedRSName = RequireText(config, "UnassignedRSName");
  globals.UnassignedRSDescr = RequireText(config, "UnassignedRSDescr");
}

}  // namespace qmrules::shell
