#pragma once

#include <memory>

#include "platform/database.h"
#include "platform/frontend.h"

// The glossary of business names, a component that the host may have.
namespace qmrules::shell {

// True when the global options list the component.
[[nodiscard]] bool HasGlossary(platform::FrontEnd& frontEnd);

// The glossary's database. Throws Error, naming the file, when there is none or it is no database.
[[nodiscard]] std::unique_ptr<platform::Database> OpenGlossary(const platform::FrontEnd& frontEnd,
                                                               platform::DatabaseEngine& databases);

}  // namespace qmrules::shell
