#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "workbench/codemodel/modelfile.h"
#include "workbench/flow/rangebodies.h"

// Pictures of the flow of a program, in the language of Graphviz.
namespace qmrules::cli {

struct FlowPicture {
  const workbench::codemodel::ModelImage& model;
  const workbench::flow::RangeBodies& bodies;
  std::function<std::string(std::uint16_t file, std::uint32_t row)> row;  // a line of the source, safe to show
};

// One paragraph, or a section with all its paragraphs: a box for each run of statements, a diamond for each decision, a
// box with a double border for what is performed. What leads out of it ends in the name of where it goes.
std::string DrawLabel(const FlowPicture& picture, workbench::codemodel::NodeId label);

// All paragraphs and sections of the unit: which one performs which, falls into which and goes to which.
std::string DrawOverview(const FlowPicture& picture, workbench::codemodel::NodeId division);

// Whether control goes on from the end of a label to the next one: in a range that does not end there.
bool FallsOn(const workbench::flow::RangeBodies& bodies, workbench::flow::PointId end);

// A text as Graphviz takes it within quotes.
std::string DotText(std::string_view text);
// The same broken into lines of at most so many columns, before AND and OR or at blanks; at most `most` lines. `end`
// stands between them.
std::string DotLines(std::string_view text, std::size_t columns, std::size_t most, std::string_view end);

}  // namespace qmrules::cli
