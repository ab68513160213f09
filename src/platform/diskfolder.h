#pragma once

#include <functional>
#include <string_view>
#include <system_error>

namespace qmrules::platform {

enum class DiskEntryKind {
  File,  // all that is neither of the others
  Folder,
  Link,  // wherever it leads
};

// Gives the name and the kind of each entry of a folder, in no order and without "." and "..". The path is taken as it
// stands: a "\" in it is a part of a name. Returns the reason when the folder cannot be read, or not to its end; some
// entries may have been given then.
[[nodiscard]] std::error_code VisitDiskFolder(
    std::string_view path, const std::function<void(std::string_view name, DiskEntryKind kind)>& visit);

}  // namespace qmrules::platform
