#pragma once

#include <QString>

#include "desktop/options/optionvalue.h"

// What is wrong with the value of an option, in words for the user; empty for a value that can be stored.
namespace qmrules::desktop {

// The name of a business function or rule set: not blank, without blanks around it, and as the catalogue would keep it.
QString CheckObjectName(const OptionValue& value);
// A text as the catalogue would keep it.
QString CheckStoredText(const OptionValue& value);
// Each a pattern of shell::LikePattern, and none twice.
QString CheckTemplates(const OptionValue& value);
// Each a folder within the workspace, named relative to it, and none twice.
QString CheckFolders(const OptionValue& value);

// The name of an encoding that sources can be read by.
QString CheckEncoding(const OptionValue& value);

}  // namespace qmrules::desktop
