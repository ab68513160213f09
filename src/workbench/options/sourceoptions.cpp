#include "workbench/options/sourceoptions.h"

#include "platform/error.h"
#include "workbench/options/defaultoptions.h"
#include "workbench/options/optionsfile.h"

namespace qmrules::workbench {

namespace {

constexpr std::string_view kSources = "/OPTIONS/CASE[@NAME='Sources']";
constexpr std::string_view kFormat = "/OPTIONS/CASE[@NAME='Sources']//CASE[@NAME='COBOL']/LIST[@NAME='SourceFormat']";
constexpr std::string_view kFolders =
    "/OPTIONS/CASE[@NAME='Sources']//CASE[@NAME='COBOL']/STRINGS[@NAME='CopybookFolders']";

}  // namespace

SourceOptions ReadSourceOptions(const platform::XmlDocument& options) {
  SourceOptions values;
  if (const auto format = options.selectSingleNode(kFormat)) values.format = format.AttributeOr("VALUE", values.format);
  if (const auto folders = options.selectSingleNode(kFolders)) {
    for (const auto& folder : folders.selectNodes("STRING[@CHECKED='true']")) {
      values.copybookFolders.push_back(folder.AttributeOr("VALUE", ""));
    }
  }
  return values;
}

void PutSourceOptions(platform::XmlDocument& options, const SourceOptions& values) {
  if (!options.selectSingleNode(kFormat) || !options.selectSingleNode(kFolders)) {
    auto root = RequireOption(options, "/OPTIONS", options.url());
    if (const auto old = options.selectSingleNode(kSources)) root.removeChild(old);
    root.appendChild(options.importNode(DefaultProjectOptions().selectSingleNode(kSources)));
  }
  options.selectSingleNode(kFormat).setAttribute("VALUE", values.format);
  auto folders = options.selectSingleNode(kFolders);
  for (const auto& old : folders.selectNodes("STRING")) folders.removeChild(old);
  for (const auto& folder : values.copybookFolders) {
    auto entry = folders.appendChild(options.createElement("STRING"));
    entry.setAttribute("VALUE", folder);
    entry.setAttribute("CHECKED", "true");
  }
}

}  // namespace qmrules::workbench
