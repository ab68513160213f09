#include "platform/filefailure.h"

#include <fmt/format.h>

#include <cerrno>
#include <system_error>

namespace qmrules::platform {

std::string FailureReason(int code) {
  switch (code) {
    case ENOENT:
    case ENOTDIR:
      return std::string(noSuchFile);
    case EACCES:
    case EPERM:
      return std::string(accessDenied);
    case EISDIR:
      return std::string(isFolder);
    default:
      return std::generic_category().message(code);
  }
}

Error ReadFailure(std::string_view path, std::string_view reason) {
  return Error(fmt::format("The file \"{}\" cannot be read: {}.", path, reason));
}

Error WriteFailure(std::string_view path, std::string_view reason) {
  return Error(fmt::format("The file \"{}\" cannot be written: {}.", path, reason));
}

Error ListFailure(std::string_view path, std::string_view reason) {
  return Error(fmt::format("The folder \"{}\" cannot be read: {}.", path, reason));
}

Error CreateFolderFailure(std::string_view path, std::string_view reason) {
  return Error(fmt::format("The folder \"{}\" cannot be made: {}.", path, reason));
}

std::string TooLarge(std::size_t bytes, std::size_t limit) {
  return fmt::format("it has {} bytes, and at most {} are read", bytes, limit);
}

}  // namespace qmrules::platform
