#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qmrules::workbench {

// The name of a project's folder: the project's name, with what file systems do not take, and "%", as "%" and two
// hexadecimal digits for each byte. So different projects have different folders and the name can be read off the
// folder. Throws platform::Error, naming the project, for a name that is empty, begins or ends with a blank, holds a
// control character, is no well-formed text, or is too long for a folder.
std::string ProjectFolderName(std::string_view projectName);

// True for a name that ProjectFolderName takes.
bool IsProjectName(std::string_view projectName);

// The name of the project that has this folder; nothing for a folder that ProjectFolderName does not give.
std::optional<std::string> ProjectNameOfFolder(std::string_view folderName);

}  // namespace qmrules::workbench
