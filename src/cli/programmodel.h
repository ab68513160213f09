#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "catalogue/registeredsources.h"
#include "cli/command.h"
#include "workbench/codemodel/modelfile.h"
#include "workbench/host/embeddedhost.h"

// The models of the programs that a command line names.
namespace qmrules::cli {

inline constexpr const char* kProgramHelp = "The program, by its name or its key, as \"PBRATE01\" or \"COBOL#3\"";

// A program of the current project by its name, or by the key of its source, in any case. Throws platform::Error for
// one that the project does not know.
catalogue::RegisteredSource FindProgram(workbench::EmbeddedHost& host, const std::string& text);

// Throws platform::Error for a program that was not scanned yet, and for a model file that cannot be read.
void RequireModel(const catalogue::RegisteredSource& program);
std::shared_ptr<const workbench::codemodel::ModelImage> OpenImage(workbench::EmbeddedHost& host,
                                                                  const catalogue::RegisteredSource& program);

// The innermost unit of the model that the node is in: its index.
std::uint32_t UnitAround(const workbench::codemodel::ModelImage& model, workbench::codemodel::NodeId node);

// Where the program's model has gaps, a line that says so: it stands before every result that comes from the model.
void PrintGaps(Context& context, const catalogue::RegisteredSource& program, std::size_t gaps);

// "1 gap", "2 gaps", "0 gaps".
std::string Counted(std::size_t count, std::string_view what);

}  // namespace qmrules::cli
