#include "platform/filesystem.h"

#include <fmt/format.h>

#include <filesystem>

#include "platform/diskfile.h"
#include "platform/encoding.h"
#include "platform/error.h"

namespace qmrules::platform {

namespace {

bool BeginsWithDrive(std::string_view name) {
  return name.size() >= 2 && name[1] == ':' &&
         ((name[0] >= 'A' && name[0] <= 'Z') || (name[0] >= 'a' && name[0] <= 'z'));
}

}  // namespace

std::string_view TextStream::ReadLine() {
  const auto line = lines_.Next();
  if (!line) throw Error(fmt::format("The file \"{}\" ends after line {}; there is no further line.", path_, Row()));
  return *line;
}

std::string FileSystem::ResolveInside(std::string_view root, std::string_view name) const {
  if (const auto at = name.find('\0'); at != std::string_view::npos) {
    throw Error(fmt::format("The file name \"{}\" holds a NUL character behind these; name the file anew.",
                            name.substr(0, at)));
  }
  const std::string relative = DiskPath(name);
  if (relative.starts_with('/') || BeginsWithDrive(relative)) {
    throw Error(
        fmt::format("The file name \"{}\" is absolute; it has to be relative to the folder \"{}\".", name, root));
  }
  const std::filesystem::path inner = std::filesystem::path(relative).lexically_normal();
  if (!inner.empty() && *inner.begin() == "..") {
    throw Error(fmt::format("The file name \"{}\" leads out of the folder \"{}\".", name, root));
  }
  std::string path = DiskPath(root);
  std::string rest = inner.generic_string();
  while (rest.ends_with('/')) rest.pop_back();
  if (rest.empty() || rest == ".") return path;
  if (!path.empty() && !path.ends_with('/')) path += '/';
  return path + rest;
}

bool FileSystem::IsSameFile(std::string_view left, std::string_view right) const {
  const auto spelled = [](std::string_view path) { return std::filesystem::path(DiskPath(path)).lexically_normal(); };
  return Exists(left) && Exists(right) && spelled(left) == spelled(right);
}

std::string FileSystem::ReadTextFile(std::string_view path) const {
  return DecodeText(ReadFile(path), SourceEncoding(), path);
}

std::unique_ptr<TextStream> FileSystem::OpenTextFile(std::string_view path) const {
  return std::make_unique<TextStream>(std::string(path), ReadTextFile(path));
}

}  // namespace qmrules::platform
