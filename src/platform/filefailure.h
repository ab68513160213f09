#pragma once

#include <string>
#include <string_view>

#include "platform/error.h"

namespace qmrules::platform {

// What every file system says when a file cannot be used, so that a reader meets one wording.

// The reason for a code of errno.
std::string FailureReason(int code);

inline constexpr std::string_view noSuchFile = "there is no such file";
inline constexpr std::string_view noSuchFolder = "there is no such folder";
inline constexpr std::string_view accessDenied = "access is denied";
inline constexpr std::string_view isFolder = "it is a folder";
inline constexpr std::string_view isNoFolder = "it is not a folder";
inline constexpr std::string_view fileInTheWay = "a file stands in the way";
inline constexpr std::string_view namesNoFile = "the path names no file";

// "The file "PATH" cannot be read: REASON." and the like.
Error ReadFailure(std::string_view path, std::string_view reason);
Error WriteFailure(std::string_view path, std::string_view reason);
Error ListFailure(std::string_view path, std::string_view reason);
Error CreateFolderFailure(std::string_view path, std::string_view reason);

// The reason for a file beyond what may be read.
std::string TooLarge(std::size_t bytes, std::size_t limit);

}  // namespace qmrules::platform
