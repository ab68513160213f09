#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qmrules::platform {

// Whole files on the disk: the one place of the system that reads and writes their bytes. Paths take "/" and "\" alike.

// The path with "/" only.
std::string DiskPath(std::string_view path);

// The bytes of an ordinary file. Throws Error, naming the path as given, when it cannot be read, is no ordinary file or
// has more than `limit` bytes.
std::string ReadDiskFile(std::string_view path, std::size_t limit);

// Writes the file whole or not at all: the bytes go to a new file in the same folder, which takes the old one's place
// (and its permissions) once it is safe on the disk. A link is followed to the file that it leads to. Throws Error,
// naming the path as given; the old file then stands and no other is left. (Only where the disk fails at the very last,
// on recording the new file's name, does the new file stand, and the error says so.)
void WriteDiskFile(std::string_view path, std::string_view bytes);

// Makes a folder and those above it; one that is there is no error. Throws Error, naming the path as given.
void CreateDiskFolder(std::string_view path);

}  // namespace qmrules::platform
