#pragma once

#include <string>

#include "catalogue/attributeschema.h"
#include "platform/filesystem.h"
#include "platform/frontend.h"
#include "platform/settings.h"
#include "platform/tesselglobals.h"
#include "platform/widgets/imagelist.h"
#include "platform/xml.h"

// What the control reads once, when it is given a workspace.
namespace qmrules::shell {

// The extension schema and the attributes that it gives to a rule.
struct RuleSchema {
  std::string path;  // where the document was read from and is saved to
  platform::XmlDocument document;
  platform::XmlElement attributes;  // its element `entityattrs` of the rules
  catalogue::AttributeLists lists;
};

// Throws Error, naming the file, when it cannot be read, is no such document or has no attributes of rules.
[[nodiscard]] RuleSchema ReadRuleSchema(const platform::Registry& registry, const platform::FrontEnd& frontEnd,
                                        const platform::FileSystem& fileSystem);

// Puts the pictures of the catalogue's entities into the list, by entity name. One that cannot be read is left out.
void LoadNodeImages(platform::FrontEnd& frontEnd, const platform::FileSystem& fileSystem,
                    platform::widgets::ImageList& images);

// Reads the names and descriptions of the objects that hold rules without a home. Throws Error, naming the option, for
// one that is missing.
void ReadUnassignedTexts(platform::Options& options, platform::TesselGlobals& globals);

}  // namespace qmrules::shell
