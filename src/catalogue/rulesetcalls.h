#pragma once

#include "platform/objectkey.h"
#include "platform/repository.h"

// The calls by which business functions trigger rule sets.
namespace qmrules::catalogue {

// Gives every call of a renamed business function, or on a renamed rule set, a fresh name, so that none is left that
// was made from the old one. Throws Error when the store refuses; calls before that one keep their new names unless the
// caller's transaction takes them back.
void RenameCalls(platform::Repository& repository, const platform::ObjectKey& renamed);

}  // namespace qmrules::catalogue
