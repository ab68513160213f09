#include "cli/sourcelines.h"

#include <algorithm>

#include "cli/displaywidth.h"

namespace qmrules::cli {

using workbench::codemodel::SourceFile;

std::string SourceLines::Row(std::uint16_t file, std::uint32_t row) {
  auto& source = files_[file];
  if (!source) {
    const std::string name(model_.FileName(file));
    source = std::make_unique<SourceFile>(name, host_.FileSystem().ReadTextFile(host_.PathOf(name)));
  }
  if (row == 0 || row > source->Rows()) return {};
  std::string text = OneLine(source->Row(row));
  text.erase(text.find_last_not_of(' ') + 1);
  return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

}  // namespace qmrules::cli
