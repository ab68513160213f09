#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "workbench/codemodel/frontend.h"
#include "workbench/codemodel/textclasses.h"
#include "workbench/options/sourceoptions.h"

// The front ends of the languages, by the options of a project.
namespace qmrules::workbench {

using FrontEndFactory = std::function<std::unique_ptr<codemodel::FrontEnd>(codemodel::SourceProvider&)>;

// Makes front ends for COBOL sources in this encoding. Throws platform::Error for a format that is not known.
FrontEndFactory CobolFrontEnds(const SourceOptions& options, std::string_view encoding);

// What decides, besides the texts, how COBOL models come out: the front end's version and its options.
std::string CobolOptionsText(const SourceOptions& options, std::string_view encoding);

// Tells the classes of COBOL texts for colouring, by the same options. Throws as CobolFrontEnds.
codemodel::TextClassifier CobolTextClassifier(const SourceOptions& options, std::string_view encoding);

}  // namespace qmrules::workbench
