#pragma once

#include <string>
#include <string_view>

namespace qmrules::workbench {

// The folder of the model files, relative to the source folder.
inline constexpr std::string_view kModelFolder = ".qmrules/models";
inline constexpr std::string_view kModelSuffix = ".qmm";

// Names of model files: the source's own name, a number made from its whole path, and the program's name. What file
// systems may refuse stands as "%" and two hexadecimal digits, a very long name is cut. The number keeps apart what
// only differs in folder or in case, so that the names are unique for file systems that do not heed case, too.
//
//   cobol/pbrate01.cbl, PBRATE01      pbrate01.cbl.5f0c3a9be2d71846.PBRATE01.qmm
//   cobol/pbrate01.cbl, no program    pbrate01.cbl.5f0c3a9be2d71846.~none.qmm

// What the names of all model files of a source begin with: all but the program and the suffix.
std::string ModelFileStem(std::string_view source);
// The program's model file.
std::string ModelFileName(std::string_view source, std::string_view program);
// The file that notes for a source that it holds no program.
std::string NoProgramFileName(std::string_view source);

// True for the name of a file of the last kind.
bool NotesNoProgram(std::string_view modelFile);

// The stem that a model file's name begins with; "" for the name of another file.
std::string_view StemOfModelFile(std::string_view name);

}  // namespace qmrules::workbench
