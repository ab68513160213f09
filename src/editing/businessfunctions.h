#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "editing/outcomes.h"

namespace qmrules::editing {

struct NewBusinessFunction {
  std::string name;
  std::string description;
};

// The default function, which holds rules without a home, stood already in this project. It has the description that
// was asked for; the notice tells that it is not a new one.
struct ExistingFunction {
  std::int32_t id = 0;
  Notice notice;
};

using BusinessFunctionOutcome = std::variant<Created, ExistingFunction, Refused>;

// What the dialog for a new function opens with: the texts as given, or, without a name and for the default function's,
// the default function's own. Both are empty when the default function stands in another project only.
[[nodiscard]] NewBusinessFunction ProposedFunction(const EditingContext& context, const NewBusinessFunction& given);

// Makes a business function in the current project, or takes the default function that stands there. A name that a
// function has in any project is refused, and so is one of blanks. Texts pass SafeText. A failure leaves no half-made
// function. Throws Error when no project is chosen.
[[nodiscard]] BusinessFunctionOutcome CreateBusinessFunction(const EditingContext& context,
                                                             const NewBusinessFunction& wanted);

}  // namespace qmrules::editing
