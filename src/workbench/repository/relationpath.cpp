#include "workbench/repository/relationpath.h"

#include <cstddef>

#include "workbench/repository/querysyntax.h"

namespace qmrules::workbench::repository {

RelationStep ParseRelation(std::string_view text) {
  std::size_t position = 0;
  const auto take = [&](char mark) {
    if (position == text.size() || text[position] != mark) return false;
    ++position;
    return true;
  };
  RelationStep step;
  step.isNegated = take('~');
  if (take('*')) step.closure = take('<') ? Closure::Backward : Closure::Forward;
  const std::size_t end = NameEnd(text, position);
  if (end == position) throw SyntaxError({"relation", text}, position, "a relation name is expected");
  if (end != text.size()) throw SyntaxError({"relation", text}, end, "the end of the name is expected");
  step.name = text.substr(position);
  return step;
}

}  // namespace qmrules::workbench::repository
