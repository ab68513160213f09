#include "support/memorysources.h"

#include <fmt/format.h>

#include <functional>
#include <memory>
#include <utility>

#include "platform/error.h"
#include "shell/casefold.h"

namespace qmrules::test {

using workbench::codemodel::SourceFile;

workbench::codemodel::SourceProvider::Source MemorySources::Read(std::string_view file) {
  ++reads_;
  const auto found = files_.find(file);
  if (found == files_.end()) throw platform::Error(fmt::format("{}: there is no such file", file));
  const auto& [name, text] = *found;
  return {std::make_shared<const SourceFile>(name, text), {std::hash<std::string>()(text), text.size()}};
}

std::optional<std::string> MemorySources::FindCopybook(std::string_view name, std::string_view library,
                                                       std::string_view /*programFile*/) {
  const std::string wanted = library.empty() ? std::string(name) : fmt::format("{}/{}", library, name);
  for (const auto& [file, text] : files_) {
    if (shell::EqualIgnoringCase(file, wanted) || shell::EqualIgnoringCase(file, wanted + ".cpy")) return file;
  }
  return std::nullopt;
}

}  // namespace qmrules::test
