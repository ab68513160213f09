#include "workbench/options/optionsfile.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/diskfile.h"
#include "platform/error.h"

namespace qmrules::workbench {

using platform::Error;

platform::XmlElement RequireOption(const platform::XmlDocument& document, std::string_view path,
                                   std::string_view fileName) {
  platform::XmlElement node = document.selectSingleNode(path);
  if (!node) {
    throw Error(
        fmt::format("{} lacks the option {}; put back a copy of the file, or take the node from the options file of a "
                    "new workspace.",
                    fileName, path));
  }
  return node;
}

OptionsFile::OptionsFile(const std::string& path, Dialog dialog)
    : path_(platform::DiskPath(path)), dialog_(std::move(dialog)) {}

platform::XmlDocument& OptionsFile::Document() {
  if (document_) return *document_;
  std::error_code failed;
  if (!std::filesystem::exists(path_, failed)) {
    throw Error(
        fmt::format("{} is missing; put back a copy of the file, or take the options file of a new workspace.", path_));
  }
  platform::XmlDocument document;
  document.load(path_);
  RequireOption(document, "/OPTIONS", path_);
  document_ = std::move(document);
  return *document_;
}

bool OptionsFile::DisplayDialog(std::string_view path) {
  RequireOption(Document(), path, path_);
  if (!dialog_) return true;
  platform::XmlDocument copy;
  copy.loadXML(document_->xml(), path_);
  if (!dialog_(copy, path)) return false;
  copy.save(path_);
  document_ = std::move(copy);
  return true;
}

void OptionsFile::Save() {
  Document().save(path_);
}

}  // namespace qmrules::workbench
